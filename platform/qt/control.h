// The base of every control: a named part of a window, owned by it.
//
// A control is allocated with Window::__New, added with Window::_AddControl under its name, and
// given its properties by one layout record (platform/core/record.h) through its class's property
// table. Events are std::function slots that the window's code binds with platform::Delegate; the
// platform raises them through ProtectedCall. Every write the system's code makes goes to the
// recorder when it is on.
#pragma once

#include <cstdint>
#include <string>

#include "platform/core/object.h"

namespace platform {

class Window;

class Control : public Classed<Control> {
  public:
    ~Control() override;
    // Record properties: Name, Index, InitialParent, TabPanelIndex, AllowAutoDeactivate, Tooltip,
    // and the stored-only ones every control record may carry.
    static const ClassInfo& StaticClass();

    const std::string& Name() const { return name_; }
    Window* TrueWindow() const { return window_; }

    void SetName(std::string v) { name_ = std::move(v); }
    void SetIndex(std::int64_t v) { index_ = v; }
    std::int64_t Index() const { return index_; }
    // Called by Window::_AddControl.
    virtual void Attach(Window& window, const std::string& name);

  protected:
    // Begins an operation the system's code calls: the UI trap, then "<name>.<what>" to the
    // recorder.
    void Operation(const std::string& what) const;

    Window* window_ = nullptr;
    std::string name_;
    std::int64_t index_ = 0;
};

}  // namespace platform
