// The Qt widgets behind the controls, and the helper that writes a control's property table.
// Each widget keeps a pointer to its control (`owner`) and turns Qt's events into the control's
// events. A widget never outlives its control: the control deletes it, or Qt deletes it with its
// parent first and the control forgets it. Not part of the platform's interface.
#pragma once

#include <QFrame>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <type_traits>

#include "platform/core/object.h"
#include "platform/qt/rect_control.h"

namespace platform {

class TextField;
class GroupBox;
class PushButton;
class RadioButton;
class Canvas;
class Picture;

namespace qt {

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

// A widget that knows the control it shows, so that its Qt events reach that control's.
template <class QtWidget, class Control>
class OwnedWidget : public QtWidget {
  public:
    explicit OwnedWidget(Control* control) : owner(control) {}
    Control* owner;
};

class LabelWidget : public QLabel {
  public:
    LabelWidget();

  protected:
    // A click passes through to what lies beneath, unless the text is selectable.
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;  // shrinks a line too wide to fit
};

class FieldWidget : public OwnedWidget<QLineEdit, TextField> {
  public:
    using OwnedWidget::OwnedWidget;
    QRect CaretRect() const {
        return cursorRect();
    }  // where the caret is drawn, for screen readers

  protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

// A text area holds plain text: what is pasted, dropped or middle-clicked in goes in as plain
// text, and an offer without text (an empty clipboard, a picture) inserts nothing. Qt 6.4's own
// insertion reads the first of the offered formats without asking whether there is one, which
// an empty clipboard does not have.
class AreaWidget : public QTextEdit {
  public:
    AreaWidget() = default;

  protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
};

class BoxWidget : public OwnedWidget<QGroupBox, GroupBox> {
  public:
    using OwnedWidget::OwnedWidget;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
};

class SeparatorWidget : public QFrame {
  public:
    SeparatorWidget();

  protected:
    void resizeEvent(QResizeEvent* event) override;  // upright when taller than wide
    void mousePressEvent(QMouseEvent* event) override;
};

// A button whose MouseDown handler may take the press before Qt's own handling of it.
template <class QtButton, class Control>
class PressWidget : public OwnedWidget<QtButton, Control> {
  public:
    using OwnedWidget<QtButton, Control>::OwnedWidget;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
};

class ButtonWidget : public PressWidget<QPushButton, PushButton> {
  public:
    using PressWidget::PressWidget;
    bool isDefault = false;  // the record's Default: may answer Return in a text field
};

using RadioWidget = PressWidget<QRadioButton, RadioButton>;

class CanvasWidget : public OwnedWidget<QWidget, Canvas> {
  public:
    explicit CanvasWidget(Canvas* canvas);
    Picture* picture = nullptr;
    QImage image;  // the picture's own, shared
    bool allowFocus = false;
    bool pointerOver = false;  // as last told by MouseEnter or MouseExit (canvas_hover.h)

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    const QImage& ForScreen();
    QImage resampled;          // the picture at the screen's scale, where that is not its own
    qint64 resampledFrom = 0;  // the cache key of the picture it was made from
};

}  // namespace qt
}  // namespace platform
