// Push buttons and radio buttons.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/qt/rect_control.h"

namespace platform {

class PushButton : public Classed<PushButton, RectControl> {
  public:
    PushButton();
    // Caption, Default, Cancel, FontSize, Bold, ...
    static const ClassInfo& StaticClass();
    std::string Caption() const;
    bool Default() const;
    std::function<void(PushButton&)> Action;
    // Raised on the press of the mouse button, before any Action of the release.
    std::function<bool(PushButton&, std::int64_t, std::int64_t)> MouseDown;
};

class RadioButton : public Classed<RadioButton, RectControl> {
  public:
    RadioButton();
    // Caption, Value (boolean), ... The radio buttons of one parent exclude each other.
    static const ClassInfo& StaticClass();
    void Value(bool on);  // false really clears it; no Action is raised by code
    bool Value() const;
    std::string Caption() const;
    std::function<void(RadioButton&)>
        Action;  // raised by the user's click, also on a button already on
    std::function<bool(RadioButton&, std::int64_t, std::int64_t)> MouseDown;
};

}  // namespace platform
