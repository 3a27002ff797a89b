#include "platform/qt/canvas.h"

#include <QMouseEvent>
#include <QPainter>

#include "platform/qt/canvas_hover.h"
#include "platform/qt/control_widgets.h"
#include "platform/qt/picture.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"

namespace platform {

namespace qt {

CanvasWidget::CanvasWidget(Canvas* canvas) : OwnedWidget(canvas) {
    FollowPointer(*this);
}

// The picture at (0,0) at its size in points; what lies outside the canvas is clipped by Qt.
void CanvasWidget::paintEvent(QPaintEvent* /*event*/) {
    if (image.isNull()) {
        return;
    }
    QPainter painter(this);
    painter.drawImage(0, 0, ForScreen());
}

// Where the screen's scale is not the picture's own (the @2x picture at 125% or 150%), the picture
// resampled once, smoothly, to the screen pixels it covers: drawn pixel by pixel, a scaled
// picture has jagged edges. Kept until the picture or the scale changes.
const QImage& CanvasWidget::ForScreen() {
    const qreal scale = devicePixelRatioF();
    if (image.devicePixelRatio() == scale) {
        return image;
    }
    if (resampledFrom != image.cacheKey() || resampled.devicePixelRatio() != scale) {
        resampled = image.scaled((image.deviceIndependentSize() * scale).toSize(),
                                 Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        resampled.setDevicePixelRatio(scale);
        resampledFrom = image.cacheKey();
    }
    return resampled;
}

void CanvasWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

}  // namespace qt

Canvas::Canvas() : Classed(new qt::CanvasWidget(this)) {}

const ClassInfo& Canvas::StaticClass() {
    static const ClassInfo info{
        "Canvas",
        &RectControl::StaticClass(),
        {
            qt::Prop("AllowFocus",
                     [](Canvas& c, bool v) {
                         static_cast<qt::CanvasWidget*>(c.Widget())->allowFocus = v;
                         c.SetTabStop(c.TabStop());  // the focus policy follows
                     }),
            // Qt paints every widget double-buffered.
            StoredOnly("DoubleBuffer", Form::Boolean),
        }};
    return info;
}

void Canvas::Backdrop(Picture* picture) {
    _UITrap();
    auto* canvas = static_cast<qt::CanvasWidget*>(widget_);
    canvas->picture = picture;
    canvas->image = picture != nullptr ? picture->Image() : QImage();
    canvas->setAccessibleName(picture != nullptr ? qt::ToQt(picture->Description()) : QString());
    canvas->update();
}

Picture* Canvas::Backdrop() const {
    return static_cast<qt::CanvasWidget*>(widget_)->picture;
}

}  // namespace platform
