// The interfaces of windows, labels, buttons, frames and canvases for screen readers, and the
// factory that hands them out.
#include "platform/qt/accessible_widgets.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QString>
#include <QStringList>

#include "platform/qt/buttons.h"
#include "platform/qt/control_widgets.h"
#include "platform/qt/frames.h"
#include "platform/qt/qt_support.h"

namespace platform::qt {

namespace {

// Screen pixels per logical pixel. Under X11 Qt's scale is the whole difference (the screen's
// own ratio is 1). A Wayland client knows no place of its own on the screen and reports places
// within its window; those are passed on as Qt has them.
double ScaleOf(const QWidget& widget) {
    const QScreen* screen = widget.screen();
    if (screen == nullptr || QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        return 1.0;
    }
    return screen->devicePixelRatio();
}

// Qt keeps a screen's top-left corner in screen pixels and scales what lies beyond it.
QPoint ScreenOrigin(const QWidget& widget) {
    const QScreen* screen = widget.screen();
    return screen != nullptr ? screen->geometry().topLeft() : QPoint();
}

int Scaled(int logical, int origin, double scale) {
    return origin + qRound((logical - origin) * scale);
}

// A caption as it reads: Qt's "&&" is one "&".
QString Readable(const QString& caption) {
    return ToQt(CaptionOf(caption));
}

}  // namespace

QRect ScreenPixels(const QRect& logical, const QWidget& widget) {
    const double scale = ScaleOf(widget);
    if (scale == 1.0) {
        return logical;
    }
    const QPoint origin = ScreenOrigin(widget);
    const int left = Scaled(logical.x(), origin.x(), scale);
    const int top = Scaled(logical.y(), origin.y(), scale);
    const int right = Scaled(logical.x() + logical.width(), origin.x(), scale);
    const int bottom = Scaled(logical.y() + logical.height(), origin.y(), scale);
    return {left, top, right - left, bottom - top};
}

QPoint LogicalPoint(const QPoint& screen, const QWidget& widget) {
    const double scale = ScaleOf(widget);
    const QPoint origin = ScreenOrigin(widget);
    return origin + QPoint(qFloor((screen.x() - origin.x()) / scale),
                           qFloor((screen.y() - origin.y()) / scale));
}

QRect WidgetAccessible::rect() const {
    return ScreenPixels(QAccessibleWidget::rect(), *widget());
}

// The shown child whose widget holds the point, the last (topmost) first.
QAccessibleInterface* WidgetAccessible::childAt(int x, int y) const {
    const QPoint point = LogicalPoint(QPoint(x, y), *widget());
    for (int i = childCount() - 1; i >= 0; --i) {
        QAccessibleInterface* candidate = child(i);
        auto* shown = candidate != nullptr ? qobject_cast<QWidget*>(candidate->object()) : nullptr;
        if (shown != nullptr && shown->isVisible() &&
            QRect(shown->mapToGlobal(QPoint(0, 0)), shown->size()).contains(point)) {
            return candidate;
        }
    }
    return nullptr;
}

namespace {

// A window is named by the name code gave it, else by its title. A window without either goes by
// the application's name; one without a title (the about window's frame has no title bar) is
// described by the words it shows.
class WindowAccessible : public WidgetAccessible {
  public:
    explicit WindowAccessible(QWidget* frame) : WidgetAccessible(frame, QAccessible::Window) {}

    QString text(QAccessible::Text kind) const override {
        const QString told = WidgetAccessible::text(kind);  // the name code gave, or the title
        if (kind == QAccessible::Name && told.isEmpty()) {
            return QGuiApplication::applicationDisplayName();
        }
        if (kind == QAccessible::Description && widget()->windowTitle().isEmpty()) {
            return ShownWords();
        }
        return told;
    }

    // Beyond the widgets, the window's status line, where a screen reader hears what appears
    // without the focus moving (see spoken.h).
    int childCount() const override { return WidgetAccessible::childCount() + HasStatus(); }
    QAccessibleInterface* child(int index) const override {
        if (HasStatus() && index == WidgetAccessible::childCount()) {
            return StatusOf(*widget());
        }
        return WidgetAccessible::child(index);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        if (child != nullptr && child == StatusOf(*widget())) {
            return WidgetAccessible::childCount();
        }
        return WidgetAccessible::indexOfChild(child);
    }

  private:
    int HasStatus() const { return StatusOf(*widget()) != nullptr ? 1 : 0; }
    QString ShownWords() const {
        QStringList words;
        for (const QLabel* label : widget()->findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty()) {
                words << label->text();
            }
        }
        return words.join(QLatin1String(". "));
    }
};

// The colour beneath a widget: that of the nearest ancestor that fills its background.
QColor GroundOf(const QWidget& widget) {
    for (const QWidget* w = widget.parentWidget(); w != nullptr; w = w->parentWidget()) {
        if (w->autoFillBackground()) {
            return w->palette().color(QPalette::Window);
        }
    }
    return widget.palette().color(QPalette::Window);
}

class LabelAccessible : public WidgetAccessible {
  public:
    explicit LabelAccessible(QLabel* label) : WidgetAccessible(label, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            return static_cast<QLabel*>(widget())->text();
        }
        return WidgetAccessible::text(kind);
    }

    // Text in the colour of its ground shows nothing, so it is nothing to read out.
    QAccessible::State state() const override {
        QAccessible::State state = WidgetAccessible::state();
        const QWidget& label = *widget();
        if (label.palette().color(QPalette::WindowText) == GroundOf(label)) {
            state.invisible = true;
        }
        return state;
    }
};

// Push and radio buttons: named by their caption, pressed (or chosen) through their action.
class ButtonAccessible : public WidgetAccessible {
  public:
    ButtonAccessible(QAbstractButton* button, QAccessible::Role role)
        : WidgetAccessible(button, role) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            return Readable(Button().text());
        }
        return WidgetAccessible::text(kind);
    }

    QAccessible::State state() const override {
        QAccessible::State state = WidgetAccessible::state();
        state.focusable = widget()->focusPolicy() != Qt::NoFocus;
        state.pressed = Button().isDown();
        state.checkable = Button().isCheckable();
        state.checked = Button().isChecked();
        const auto* push = dynamic_cast<const ButtonWidget*>(widget());
        state.defaultButton = push != nullptr && push->isDefault;
        return state;
    }

    QStringList actionNames() const override { return {Press()}; }
    void doAction(const QString& action) override {
        if (action == Press() && Button().isEnabled()) {
            Button().click();
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    QAbstractButton& Button() const { return *static_cast<QAbstractButton*>(widget()); }
    QString Press() const { return Button().isCheckable() ? toggleAction() : pressAction(); }
};

class BoxAccessible : public WidgetAccessible {
  public:
    explicit BoxAccessible(QGroupBox* box) : WidgetAccessible(box, QAccessible::Grouping) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            return Readable(static_cast<QGroupBox*>(widget())->title());
        }
        return WidgetAccessible::text(kind);
    }
};

}  // namespace

QAccessibleInterface* AccessibleFor(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || WindowOf(widget) == nullptr) {
        return nullptr;  // Qt's own windows (menus, message boxes) keep Qt's description
    }
    if (widget->isWindow()) {
        return new WindowAccessible(widget);
    }
    if (auto* label = dynamic_cast<LabelWidget*>(widget)) {
        return new LabelAccessible(label);
    }
    if (dynamic_cast<FieldWidget*>(widget) != nullptr) {
        return FieldAccessible(widget);
    }
    if (dynamic_cast<AreaWidget*>(widget) != nullptr) {
        return AreaAccessible(widget);
    }
    if (auto* button = dynamic_cast<ButtonWidget*>(widget)) {
        return new ButtonAccessible(button, QAccessible::PushButton);
    }
    if (auto* radio = dynamic_cast<RadioWidget*>(widget)) {
        return new ButtonAccessible(radio, QAccessible::RadioButton);
    }
    if (auto* box = dynamic_cast<BoxWidget*>(widget)) {
        return new BoxAccessible(box);
    }
    if (dynamic_cast<SeparatorWidget*>(widget) != nullptr) {
        return new WidgetAccessible(widget, QAccessible::Separator);
    }
    // A canvas speaks as the picture it shows (its accessible name is the picture's words).
    if (dynamic_cast<CanvasWidget*>(widget) != nullptr) {
        return new WidgetAccessible(widget, QAccessible::Graphic);
    }
    // The panes that hold the controls; Qt's own widgets (the menu bar) keep Qt's description.
    if (className == QLatin1String("QWidget")) {
        return new WidgetAccessible(widget, QAccessible::Client);
    }
    return nullptr;
}

}  // namespace platform::qt
