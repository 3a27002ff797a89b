// What a screen reader hears of the controls. Qt describes most widgets well by itself; the
// platform adds the names code gives (AccessibleName), speaks a canvas as the picture it shows,
// and keeps a label drawn in the colour of its ground (invisible ink) out of what is read.
#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QString>
#include <QWidget>

#include "platform/qt/control_widgets.h"
#include "platform/qt/controls.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"

namespace platform {

namespace {

// The colour beneath a widget: that of the nearest ancestor that fills its background.
QColor GroundOf(const QWidget& widget) {
    for (const QWidget* w = widget.parentWidget(); w != nullptr; w = w->parentWidget()) {
        if (w->autoFillBackground()) {
            return w->palette().color(QPalette::Window);
        }
    }
    return widget.palette().color(QPalette::Window);
}

class LabelAccessible : public QAccessibleWidget {
  public:
    explicit LabelAccessible(QLabel* label) : QAccessibleWidget(label, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override {
        auto* label = static_cast<QLabel*>(widget());
        if (kind == QAccessible::Name) {
            return label->accessibleName().isEmpty() ? label->text() : label->accessibleName();
        }
        return QAccessibleWidget::text(kind);
    }

    // Text in the colour of its ground shows nothing, so it is nothing to read out.
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const QWidget& label = *widget();
        if (label.palette().color(QPalette::WindowText) == GroundOf(label)) {
            state.invisible = true;
        }
        return state;
    }
};

QAccessibleInterface* ControlAccessible(const QString& className, QObject* object) {
    // A window's frame is a plain widget, which Qt would describe as a client area; a screen
    // reader is told it is a window.
    if (auto* frame = qobject_cast<QWidget*>(object);
        frame != nullptr && frame->isWindow() && className == QLatin1String("QWidget")) {
        return new QAccessibleWidget(frame, QAccessible::Window);
    }
    if (auto* label = dynamic_cast<qt::LabelWidget*>(object)) {
        return new LabelAccessible(label);
    }
    if (auto* canvas = dynamic_cast<qt::CanvasWidget*>(object)) {
        return new QAccessibleWidget(canvas, QAccessible::Graphic);
    }
    return nullptr;
}

}  // namespace

namespace qt {

void InstallAccessibility() {
    static bool installed = false;
    if (!installed) {
        QAccessible::installFactory(&ControlAccessible);
        installed = true;
    }
}

}  // namespace qt

void RectControl::AccessibleName(const std::string& name) {
    _UITrap();
    if (widget_ != nullptr) {
        widget_->setAccessibleName(qt::ToQt(name));
    }
}

}  // namespace platform
