// The control window: the form on which the user chooses the test, types the statistics,
// presses Calculate and reads t, df and p. Its 33 controls come from layout records, are reached
// by name at each use through the accessors below, and are wired to the handlers in table order.
#pragma once

#include "platform/qt/controls.h"
#include "platform/qt/menu.h"
#include "platform/qt/window.h"

namespace korvane {

class ControlWnd : public platform::Window {
public:
    static constexpr const char* kClassName = "ControlWnd.ControlWnd";
    static ControlWnd& Instance();  // the accessor: the living instance, built on first use
    static void RegisterClass();    // the class table (an initialiser of the run)

    static const platform::ClassInfo& StaticClass();
    const platform::ClassInfo& Class() const override { return StaticClass(); }

    // (the helper writing this window fills in the rest)
};

}  // namespace korvane
