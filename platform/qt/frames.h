// The passive controls that group or divide the others: frames and separators.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/qt/rect_control.h"

namespace platform {

class GroupBox : public Classed<GroupBox, RectControl> {
  public:
    GroupBox();
    // Caption, Bold, FontSize, ... A group box lies beneath the controls of its window, so a frame
    // drawn around window-level controls never swallows their clicks.
    static const ClassInfo& StaticClass();
    std::string Caption() const;
    std::function<bool(GroupBox&, std::int64_t, std::int64_t)> MouseDown;
};

class Separator : public Classed<Separator, RectControl> {
  public:
    Separator();
    static const ClassInfo& StaticClass();
};

}  // namespace platform
