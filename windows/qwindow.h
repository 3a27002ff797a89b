// The information window: the formula picture and the citation of the probability algorithm.
// "?" on the control window brings it up; its close button hides it, so one instance serves the
// whole run and what the user typed into its text stays.
#pragma once

#include <cstdint>
#include <string>

#include "platform/qt/controls.h"
#include "platform/qt/window.h"

namespace korvane {

class Qwindow : public platform::Window {
  public:
    static constexpr const char* kClassName = "Qwindow.Qwindow";
    static Qwindow& Instance();   // the accessor: the living instance, built on first use
    static void RegisterClass();  // the class table (an initialiser of the run); idempotent

    static const platform::ClassInfo& StaticClass();
    const platform::ClassInfo& Class() const override { return StaticClass(); }

    void Layout() override;
    void CreateControls() override;
    void Event_Close() override;
    bool Event_MouseDown(std::int64_t x, std::int64_t y) override;
    bool Event_KeyDown(const std::string& key) override;

    platform::TextArea& StaticText1();
    platform::Canvas& Canvas1();

    // Whether this class implements the window event of that name ("Close", "KeyDown", ...).
    bool IsEventImplemented(const std::string& name) const;

    // The text of StaticText1: the citation, two carriage returns, the attribution and a blank.
    static const std::string& InformationText();

  private:
    void _CreateControls0();
};

}  // namespace korvane
