#include "platform/qt/frames.h"

#include <QMouseEvent>

#include "platform/qt/control_widgets.h"
#include "platform/qt/runtime.h"

namespace platform {

namespace qt {

void BoxWidget::mousePressEvent(QMouseEvent* event) {
    if (owner != nullptr && owner->MouseDown) {
        GroupBox* box = owner;
        const QPoint at = event->position().toPoint();
        bool took = false;
        ProtectedCall([box, at, &took] { took = box->MouseDown(*box, at.x(), at.y()); });
        if (took) {
            event->accept();
            return;
        }
    }
    event->ignore();  // on to the window
}

SeparatorWidget::SeparatorWidget() {
    setFrameShape(QFrame::HLine);
    setFrameShadow(QFrame::Sunken);
}

void SeparatorWidget::resizeEvent(QResizeEvent* event) {
    setFrameShape(width() >= height() ? QFrame::HLine : QFrame::VLine);
    QFrame::resizeEvent(event);
}

void SeparatorWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

}  // namespace qt

GroupBox::GroupBox() : Classed(new qt::BoxWidget(this)) {}

const ClassInfo& GroupBox::StaticClass() {
    static const ClassInfo info{
        "GroupBox",
        &RectControl::StaticClass(),
        {
            qt::Prop("Caption",
                     [](GroupBox& c, const std::string& v) {
                         static_cast<QGroupBox*>(c.Widget())->setTitle(qt::CaptionText(v));
                     }),
        }};
    return info;
}

std::string GroupBox::Caption() const {
    return qt::CaptionOf(static_cast<QGroupBox*>(widget_)->title());
}

Separator::Separator() : Classed(new qt::SeparatorWidget) {}

const ClassInfo& Separator::StaticClass() {
    static const ClassInfo info{"Separator", &RectControl::StaticClass(), {}};
    return info;
}

}  // namespace platform
