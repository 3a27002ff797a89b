// A canvas: a picture drawn on the window, with the pointer's coming and going as events.
#pragma once

#include <functional>

#include "platform/qt/rect_control.h"

namespace platform {

class Picture;

class Canvas : public Classed<Canvas, RectControl> {
  public:
    Canvas();
    static const ClassInfo& StaticClass();
    // Nil leaves the canvas empty; the picture is not owned. A screen reader hears the canvas as
    // the picture's description.
    void Backdrop(Picture* picture);
    Picture* Backdrop() const;
    std::function<void(Canvas&)> MouseEnter;
    std::function<void(Canvas&)> MouseExit;
};

}  // namespace platform
