// The Qt widgets behind the controls, and the helper that writes a control's property table.
// Each widget keeps a pointer to its control (`owner`) and turns Qt's events into the control's
// events. A widget never outlives its control: the control deletes it, or Qt deletes it with its
// parent first and the control forgets it. Not part of the platform's interface.
#pragma once

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <type_traits>

#include "platform/core/object.h"
#include "platform/qt/controls.h"

namespace platform::qt {

// A property-table entry from a captureless lambda `(ControlClass&, Value)`; the record form
// follows from the Value type, as with platform::Property.
template <class>
struct LambdaSetter;
template <class L, class C, class V>
struct LambdaSetter<void (L::*)(C&, V) const> {
    using Class = C;
    using Value = std::remove_cvref_t<V>;
};

template <class F>
PropertyDef Prop(std::string_view name, F) {
    static_assert(std::is_empty_v<F>, "a property setter captures nothing");
    using Setter = LambdaSetter<decltype(&F::operator())>;
    return PropertyDef{name, detail::FormOf<typename Setter::Value>(),
                       [](Object& target, const PropertyValue& value) {
                           F{}(static_cast<typename Setter::Class&>(target),
                               std::get<typename Setter::Value>(value));
                       }};
}

// The control's widget as the Qt class it was made with.
template <class W>
W& WidgetOf(const RectControl& control) {
    return *static_cast<W*>(control.Widget());
}

// Captions of buttons and frames: '&' is shown as itself, never as a mnemonic.
QString CaptionText(const std::string& caption);
std::string CaptionOf(const QString& text);

// Text colour, alignment and background of text-showing widgets, as records give them.
void SetTextColour(QWidget& widget, Colour colour);
void SetBaseColour(QWidget& widget, Colour colour);
Qt::Alignment HorizontalAlignment(std::int64_t textAlignment);

class LabelWidget : public QLabel {
  public:
    LabelWidget();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

class FieldWidget : public QLineEdit {
  public:
    explicit FieldWidget(TextField* control) : owner(control) {}
    TextField* owner;

  protected:
    bool event(QEvent* event) override;
};

class AreaWidget : public QTextEdit {
  public:
    AreaWidget() = default;
};

class BoxWidget : public QGroupBox {
  public:
    explicit BoxWidget(GroupBox* control) : owner(control) {}
    GroupBox* owner;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
};

class SeparatorWidget : public QFrame {
  public:
    SeparatorWidget();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

class ButtonWidget : public QPushButton {
  public:
    explicit ButtonWidget(PushButton* control) : owner(control) {}
    PushButton* owner;
    bool isDefault = false;  // the record's Default: may answer Return in a text field

  protected:
    void mousePressEvent(QMouseEvent* event) override;
};

class RadioWidget : public QRadioButton {
  public:
    explicit RadioWidget(RadioButton* control) : owner(control) {}
    RadioButton* owner;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
};

class CanvasWidget : public QWidget {
  public:
    explicit CanvasWidget(Canvas* control) : owner(control) {}
    Canvas* owner;
    Picture* picture = nullptr;
    QPixmap pixmap;
    bool allowFocus = false;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace platform::qt
