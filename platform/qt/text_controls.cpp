#include "platform/qt/text_controls.h"

#include <QFocusEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTextDocument>
#include <QTextOption>

#include "platform/qt/control_widgets.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

constexpr auto Edit = &qt::WidgetOf<QLineEdit>;
constexpr auto Area = &qt::WidgetOf<QTextEdit>;

// Texts of this program end their lines with a carriage return, Qt's documents with a newline:
// a text area converts both ways, so what code sets is what it reads back.
QString PlainText(const std::string& text) {
    QString plain = qt::ToQt(text);
    plain.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QChar('\r'), QChar('\n'));
    return plain;
}

std::string ProgramText(QString plain) {
    return qt::FromQt(plain.replace(QChar('\n'), QChar('\r')));
}

// Text colour, alignment and background of text-showing widgets, as records give them.
void SetTextColour(QWidget& widget, Colour colour) {
    QPalette palette = widget.palette();
    const QColor qcolour = QColor::fromRgb(colour.rgb);
    // The record's colour holds in every state: a label that is never enabled still draws in it.
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::WindowText, qcolour);
        palette.setColor(group, QPalette::Text, qcolour);
        palette.setColor(group, QPalette::ButtonText, qcolour);
    }
    widget.setPalette(palette);
}

void SetBaseColour(QWidget& widget, Colour colour) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Base, QColor::fromRgb(colour.rgb));
    widget.setPalette(palette);
}

// 0 is the default (left), 1 left, 2 centre, 3 right.
Qt::Alignment HorizontalAlignment(std::int64_t textAlignment) {
    switch (textAlignment) {
        case 2:
            return Qt::AlignHCenter;
        case 3:
            return Qt::AlignRight;
        default:
            return Qt::AlignLeft;
    }
}

}  // namespace

namespace qt {

// A label is passive: the pointer and its presses go through it to what lies beneath (a canvas
// it overlaps keeps the pointer, a frame or the window gets the press), unless it is selectable.
LabelWidget::LabelWidget() {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void LabelWidget::mousePressEvent(QMouseEvent* event) {
    if (textInteractionFlags() & Qt::TextSelectableByMouse) {
        QLabel::mousePressEvent(event);
        return;
    }
    event->ignore();
}

// The layouts were drawn for narrower fonts than this desktop's: a line of text that does not fit
// its label is drawn smaller until it does, rather than cut off.
void LabelWidget::paintEvent(QPaintEvent* event) {
    const QRectF area = contentsRect();
    QFont fitted = font();
    if (wordWrap() || text().isEmpty() ||
        QFontMetricsF(fitted).horizontalAdvance(text()) <= area.width()) {
        QLabel::paintEvent(event);
        return;
    }
    const double smallest = fitted.pointSizeF() * 0.6;
    while (fitted.pointSizeF() > smallest &&
           QFontMetricsF(fitted).horizontalAdvance(text()) > area.width()) {
        fitted.setPointSizeF(fitted.pointSizeF() * 0.95);
    }
    QPainter painter(this);
    painter.setFont(fitted);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(area, int(alignment()), text());
}

// KeyDown sees every key press that gives a key string and is no shortcut; a true result stops
// it there. Return that nothing stopped presses the window's default button.
bool FieldWidget::event(QEvent* event) {
    if (event->type() != QEvent::KeyPress || owner == nullptr) {
        return QLineEdit::event(event);
    }
    auto& press = *static_cast<QKeyEvent*>(event);
    if (IsShortcutPress(press) && !(press.modifiers() & Qt::ControlModifier) &&
        !KeyString(press).empty() && !press.text().isEmpty()) {
        // Alt or Meta with a letter is a shortcut that found no taker, never typing: it would
        // slip past the key filter.
        event->ignore();
        return false;
    }
    const std::string key = IsShortcutPress(press) ? std::string() : KeyString(press);
    if (key.empty()) {
        return QLineEdit::event(event);
    }
    TextField* field = owner;
    bool stop = false;
    if (field->KeyDown) {
        ProtectedCall([field, &key, &stop] { stop = field->KeyDown(*field, key); });
    }
    if (!stop && key == "\r" && field->TrueWindow() != nullptr) {
        stop = PressDefaultButton(*field->TrueWindow());
    }
    if (stop) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

// While a person walks the menus by key, the menu bar holds the keyboard, and the Edit menu works
// on the field it took it from (EditedWidget): the field keeps its selection, as it does while a
// menu opened by a click is up, and gets the keyboard back when the menus close.
void FieldWidget::focusOutEvent(QFocusEvent* event) {
    if (event->reason() == Qt::MenuBarFocusReason) {
        QFocusEvent likeAMenu(QEvent::FocusOut, Qt::PopupFocusReason);
        QLineEdit::focusOutEvent(&likeAMenu);
        return;
    }
    QLineEdit::focusOutEvent(event);
}

QString PastableText(const QMimeData* source) {
    return source != nullptr && source->hasText() ? source->text() : QString();
}

bool AreaWidget::canInsertFromMimeData(const QMimeData* source) const {
    return !PastableText(source).isEmpty();
}

void AreaWidget::insertFromMimeData(const QMimeData* source) {
    const QString text = PastableText(source);
    if (!text.isEmpty()) {
        insertPlainText(text);
        ensureCursorVisible();
    }
}

}  // namespace qt

Label::Label() : Classed(new qt::LabelWidget) {}

const ClassInfo& Label::StaticClass() {
    static const ClassInfo info{
        "Label",
        &RectControl::StaticClass(),
        {
            qt::Prop("Value",
                     [](Label& c, const std::string& v) {
                         static_cast<QLabel*>(c.Widget())->setText(qt::ToQt(v));
                     }),
            qt::Prop("TextColor", [](Label& c, Colour v) { SetTextColour(*c.Widget(), v); }),
            qt::Prop("TextAlignment",
                     [](Label& c, std::int64_t v) {
                         auto* label = static_cast<QLabel*>(c.Widget());
                         label->setAlignment(HorizontalAlignment(v) |
                                             (label->alignment() & Qt::AlignVertical_Mask));
                     }),
            // One line is centred in the label's height; several lines start at its top.
            qt::Prop("MultiLine",
                     [](Label& c, bool v) {
                         auto* label = static_cast<QLabel*>(c.Widget());
                         label->setWordWrap(v);
                         label->setAlignment((label->alignment() & Qt::AlignHorizontal_Mask) |
                                             (v ? Qt::AlignTop : Qt::AlignVCenter));
                     }),
            qt::Prop("Selectable",
                     [](Label& c, bool v) {
                         static_cast<QLabel*>(c.Widget())
                             ->setTextInteractionFlags(v ? Qt::TextSelectableByMouse
                                                         : Qt::NoTextInteraction);
                         c.Widget()->setAttribute(Qt::WA_TransparentForMouseEvents, !v);
                     }),
        }};
    return info;
}

void Label::Value(const std::string& text) {
    Operation("Value=" + text);
    static_cast<QLabel*>(widget_)->setText(qt::ToQt(text));
}

std::string Label::Value() const {
    _UITrap();
    return qt::FromQt(static_cast<QLabel*>(widget_)->text());
}

TextField::TextField() : Classed(new qt::FieldWidget(this)) {
    Edit(*this).setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

const ClassInfo& TextField::StaticClass() {
    static const ClassInfo info{
        "TextField",
        &RectControl::StaticClass(),
        {
            qt::Prop("Value",
                     [](TextField& c, const std::string& v) { Edit(c).setText(qt::ToQt(v)); }),
            qt::Prop("TextColor", [](TextField& c, Colour v) { SetTextColour(*c.Widget(), v); }),
            qt::Prop("BackgroundColor",
                     [](TextField& c, Colour v) { SetBaseColour(*c.Widget(), v); }),
            qt::Prop("HasBorder", [](TextField& c, bool v) { Edit(c).setFrame(v); }),
            qt::Prop("TextAlignment",
                     [](TextField& c, std::int64_t v) {
                         Edit(c).setAlignment(HorizontalAlignment(v) | Qt::AlignVCenter);
                     }),
            qt::Prop("ReadOnly", [](TextField& c, bool v) { Edit(c).setReadOnly(v); }),
            qt::Prop("Password",
                     [](TextField& c, bool v) {
                         Edit(c).setEchoMode(v ? QLineEdit::Password : QLineEdit::Normal);
                     }),
            // 0 is no limit.
            qt::Prop("MaximumCharactersAllowed",
                     [](TextField& c, std::int64_t v) {
                         Edit(c).setMaxLength(v > 0 && v < 32767 ? static_cast<int>(v) : 32767);
                     }),
            qt::Prop("Hint", [](TextField& c,
                                const std::string& v) { Edit(c).setPlaceholderText(qt::ToQt(v)); }),
            // The key filters of the system do all checking of what is typed.
            StoredOnly("Format", Form::String),
            StoredOnly("ValidationMask", Form::String),
            StoredOnly("AllowSpellChecking", Form::Boolean),
        }};
    return info;
}

void TextField::Text(const std::string& text) {
    Operation("Text=" + text);
    Edit(*this).setText(qt::ToQt(text));
    qt::NoteTextWritten(*widget_);
}

std::string TextField::Text() const {
    _UITrap();
    return qt::FromQt(static_cast<const QLineEdit*>(widget_)->text());
}

bool TextField::ReadOnly() const {
    return static_cast<const QLineEdit*>(widget_)->isReadOnly();
}

TextArea::TextArea() : Classed(new qt::AreaWidget) {
    QTextEdit& area = Area(*this);
    area.setAcceptRichText(false);
    area.setTabChangesFocus(true);
}

const ClassInfo& TextArea::StaticClass() {
    static const ClassInfo info{
        "TextArea",
        &RectControl::StaticClass(),
        {
            qt::Prop("Value",
                     [](TextArea& c, const std::string& v) { Area(c).setPlainText(PlainText(v)); }),
            qt::Prop("TextColor", [](TextArea& c, Colour v) { SetTextColour(*c.Widget(), v); }),
            qt::Prop("BackgroundColor",
                     [](TextArea& c, Colour v) { SetBaseColour(*c.Widget(), v); }),
            qt::Prop("HasBorder",
                     [](TextArea& c, bool v) {
                         Area(c).setFrameShape(v ? QFrame::StyledPanel : QFrame::NoFrame);
                     }),
            qt::Prop("TextAlignment",
                     [](TextArea& c, std::int64_t v) {
                         QTextDocument& document = *Area(c).document();
                         QTextOption option = document.defaultTextOption();
                         option.setAlignment(HorizontalAlignment(v));
                         document.setDefaultTextOption(option);
                     }),
            qt::Prop("ReadOnly", [](TextArea& c, bool v) { Area(c).setReadOnly(v); }),
            qt::Prop("AllowTabs", [](TextArea& c, bool v) { Area(c).setTabChangesFocus(!v); }),
            qt::Prop("HasVerticalScrollbar",
                     [](TextArea& c, bool v) {
                         Area(c).setVerticalScrollBarPolicy(v ? Qt::ScrollBarAsNeeded
                                                              : Qt::ScrollBarAlwaysOff);
                     }),
            // Without a horizontal scroll bar the lines wrap at the area's width.
            qt::Prop("HasHorizontalScrollbar",
                     [](TextArea& c, bool v) {
                         Area(c).setHorizontalScrollBarPolicy(v ? Qt::ScrollBarAsNeeded
                                                                : Qt::ScrollBarAlwaysOff);
                         Area(c).setLineWrapMode(v ? QTextEdit::NoWrap : QTextEdit::WidgetWidth);
                     }),
            // A text area always takes several lines, as plain text in the default spacing.
            StoredOnly("MultiLine", Form::Boolean),
            StoredOnly("LineSpacing", Form::Double),
            StoredOnly("LineHeight", Form::Double),
            StoredOnly("HideSelection", Form::Boolean),
            StoredOnly("AllowStyledText", Form::Boolean),
            StoredOnly("Format", Form::String),
            StoredOnly("ValidationMask", Form::String),
            StoredOnly("AllowSpellChecking", Form::Boolean),
            StoredOnly("MaximumCharactersAllowed", Form::Integer),
        }};
    return info;
}

void TextArea::Text(const std::string& text) {
    Operation("Text=" + text);
    Area(*this).setPlainText(PlainText(text));
}

std::string TextArea::Text() const {
    _UITrap();
    return ProgramText(static_cast<const QTextEdit*>(widget_)->toPlainText());
}

}  // namespace platform
