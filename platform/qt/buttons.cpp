#include "platform/qt/buttons.h"

#include <QMouseEvent>

#include "platform/qt/control_widgets.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

constexpr auto Button = &qt::WidgetOf<QPushButton>;
constexpr auto Radio = &qt::WidgetOf<QRadioButton>;

// A click raises the control's Action, if it has one.
template <class C>
void RaiseActionOnClick(C& control, QAbstractButton& button) {
    QObject::connect(&button, &QAbstractButton::clicked, control.Widget(), [&control] {
        if (control.Action) {
            ProtectedCall([&control] { control.Action(control); });
        }
    });
}

// Qt keeps one radio button of an exclusive group checked; code may clear them all, so the
// exclusion is lifted for the moment of the change. The button turned on becomes the group's tab
// stop, as a click makes it.
void SetChecked(RadioButton& control, bool on) {
    QRadioButton& radio = Radio(control);
    if (!on && radio.autoExclusive()) {
        radio.setAutoExclusive(false);
        radio.setChecked(false);
        radio.setAutoExclusive(true);
        return;
    }
    radio.setChecked(on);
    if (!on || radio.parentWidget() == nullptr || !control.TabStop()) {
        return;
    }
    for (auto* sibling :
         radio.parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly)) {
        const Qt::FocusPolicy policy = sibling->focusPolicy();
        sibling->setFocusPolicy(sibling == &radio ? Qt::FocusPolicy(policy | Qt::TabFocus)
                                                  : Qt::FocusPolicy(policy & ~Qt::TabFocus));
    }
}

// MouseDown comes with the press, before the button's own treatment of it; a true result keeps
// the press from the button (so no Action follows).
template <class Control>
bool RaiseMouseDown(Control* control, QMouseEvent* event) {
    if (control == nullptr || !control->MouseDown || event->button() != Qt::LeftButton) {
        return false;
    }
    const QPoint at = event->position().toPoint();
    bool took = false;
    ProtectedCall([control, at, &took] { took = control->MouseDown(*control, at.x(), at.y()); });
    return took;
}

}  // namespace

namespace qt {

QString CaptionText(const std::string& caption) {
    return ToQt(caption).replace(QLatin1Char('&'), QLatin1String("&&"));
}

std::string CaptionOf(const QString& text) {
    return FromQt(QString(text).replace(QLatin1String("&&"), QLatin1String("&")));
}

template <class QtButton, class Control>
void PressWidget<QtButton, Control>::mousePressEvent(QMouseEvent* event) {
    if (RaiseMouseDown(this->owner, event)) {
        event->accept();
        return;
    }
    QtButton::mousePressEvent(event);
}

template class PressWidget<QPushButton, PushButton>;
template class PressWidget<QRadioButton, RadioButton>;

bool PressDefaultButton(Window& window) {
    for (std::size_t i = 0; i < window.ControlCount(); ++i) {
        auto* button = dynamic_cast<PushButton*>(window.ControlAt(i));
        if (button == nullptr || !button->Default() || button->Widget() == nullptr) {
            continue;
        }
        QWidget& widget = *button->Widget();
        if (!widget.isEnabled() || !widget.isVisibleTo(window.ContentWidget())) {
            return false;  // the default button cannot be pressed now
        }
        if (button->Action) {
            ProtectedCall([button] { button->Action(*button); });
        }
        return true;
    }
    return false;
}

}  // namespace qt

PushButton::PushButton() : Classed(new qt::ButtonWidget(this)) {
    Button(*this).setAutoDefault(false);
    RaiseActionOnClick(*this, Button(*this));
}

const ClassInfo& PushButton::StaticClass() {
    static const ClassInfo info{
        "PushButton",
        &RectControl::StaticClass(),
        {
            qt::Prop(
                "Caption",
                [](PushButton& c, const std::string& v) { Button(c).setText(qt::CaptionText(v)); }),
            qt::Prop("Default",
                     [](PushButton& c, bool v) {
                         static_cast<qt::ButtonWidget*>(c.Widget())->isDefault = v;
                     }),
            // Escape cancels nothing on this platform's windows; Qt's style draws all buttons.
            StoredOnly("Cancel", Form::Boolean),
            StoredOnly("MacButtonStyle", Form::Integer),
        }};
    return info;
}

std::string PushButton::Caption() const {
    return qt::CaptionOf(static_cast<const QPushButton*>(widget_)->text());
}

bool PushButton::Default() const {
    return static_cast<const qt::ButtonWidget*>(widget_)->isDefault;
}

RadioButton::RadioButton() : Classed(new qt::RadioWidget(this)) {
    Radio(*this).setAutoExclusive(true);  // the radio buttons of one parent exclude each other
    // clicked comes from the user alone (also on a button already on), never from setChecked.
    RaiseActionOnClick(*this, Radio(*this));
}

const ClassInfo& RadioButton::StaticClass() {
    static const ClassInfo info{
        "RadioButton",
        &RectControl::StaticClass(),
        {
            qt::Prop("Caption", [](RadioButton& c,
                                   const std::string& v) { Radio(c).setText(qt::CaptionText(v)); }),
            qt::Prop("Value", [](RadioButton& c, bool v) { SetChecked(c, v); }),
        }};
    return info;
}

void RadioButton::Value(bool on) {
    Operation(std::string("Value=") + (on ? "1" : "0"));
    SetChecked(*this, on);
}

bool RadioButton::Value() const {
    _UITrap();
    return static_cast<const QRadioButton*>(widget_)->isChecked();
}

std::string RadioButton::Caption() const {
    return qt::CaptionOf(static_cast<const QRadioButton*>(widget_)->text());
}

}  // namespace platform
