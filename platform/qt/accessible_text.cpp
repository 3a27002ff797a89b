// The text interface of text fields and text areas, for screen readers: the text, the caret, the
// selection and where each character sits.
#include <QFontMetrics>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>

#include "platform/qt/accessible_widgets.h"
#include "platform/qt/control_widgets.h"

namespace platform::qt {

TextAccessible::TextAccessible(QWidget* widget, bool multiLine)
    : WidgetAccessible(widget, QAccessible::EditableText), multiLine_(multiLine) {}

void* TextAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) {
        return static_cast<QAccessibleTextInterface*>(this);
    }
    return WidgetAccessible::interface_cast(type);
}

QAccessible::State TextAccessible::state() const {
    QAccessible::State state = WidgetAccessible::state();
    state.focusable = widget()->focusPolicy() != Qt::NoFocus;
    state.editable = !ReadOnly();
    state.readOnly = ReadOnly();
    state.selectableText = true;
    state.multiLine = multiLine_;
    return state;
}

QString TextAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Value) {
        return AllText();
    }
    return WidgetAccessible::text(kind);
}

QString TextAccessible::text(int startOffset, int endOffset) const {
    const QString all = AllText();
    startOffset = std::clamp(startOffset, 0, int(all.size()));
    endOffset = std::clamp(endOffset, startOffset, int(all.size()));
    return all.mid(startOffset, endOffset - startOffset);
}

// Plain text: one run of default attributes from the first character to past the last.
QString TextAccessible::attributes(int, int* startOffset, int* endOffset) const {
    *startOffset = 0;
    *endOffset = characterCount();
    return QString();
}

QRect TextAccessible::characterRect(int offset) const {
    const QRect local = LocalCharacterRect(std::clamp(offset, 0, characterCount()));
    return ScreenPixels(QRect(widget()->mapToGlobal(local.topLeft()), local.size()), *widget());
}

int TextAccessible::offsetAtPoint(const QPoint& point) const {
    return OffsetAtLocal(widget()->mapFromGlobal(LogicalPoint(point, *widget())));
}

void TextAccessible::selection(int selectionIndex, int* startOffset, int* endOffset) const {
    const auto [start, end] = Selected();
    const bool has = selectionIndex == 0 && start < end;
    *startOffset = has ? start : 0;
    *endOffset = has ? end : 0;
}

int TextAccessible::selectionCount() const {
    const auto [start, end] = Selected();
    return start < end ? 1 : 0;
}

void TextAccessible::addSelection(int startOffset, int endOffset) {
    Select(startOffset, endOffset);
}

void TextAccessible::removeSelection(int selectionIndex) {
    if (selectionIndex == 0) {
        Select(cursorPosition(), cursorPosition());
    }
}

void TextAccessible::setSelection(int selectionIndex, int startOffset, int endOffset) {
    if (selectionIndex == 0) {
        Select(startOffset, endOffset);
    }
}

namespace {

class Field : public TextAccessible {
  public:
    explicit Field(FieldWidget* field) : TextAccessible(field, false) {}

    int cursorPosition() const override { return Edit().cursorPosition(); }
    void setCursorPosition(int position) override { Edit().setCursorPosition(position); }

  protected:
    QString AllText() const override { return Edit().text(); }
    bool ReadOnly() const override { return Edit().isReadOnly(); }
    std::pair<int, int> Selected() const override {
        return {Edit().selectionStart(), Edit().selectionEnd()};
    }
    void Select(int start, int end) override { Edit().setSelection(start, end - start); }
    // Measured from the caret, which is where Qt draws it after scrolling and alignment.
    QRect LocalCharacterRect(int offset) const override {
        const FieldWidget& edit = Edit();
        const QFontMetrics metrics = edit.fontMetrics();
        const QString all = edit.text();
        const QRect caret = edit.CaretRect();
        const int x = caret.center().x() -
                      metrics.horizontalAdvance(all.left(edit.cursorPosition())) +
                      metrics.horizontalAdvance(all.left(offset));
        const int width = offset < all.size() ? metrics.horizontalAdvance(all.at(offset)) : 0;
        return {x, caret.top(), width, caret.height()};
    }
    int OffsetAtLocal(const QPoint& local) const override { return Edit().cursorPositionAt(local); }

  private:
    FieldWidget& Edit() const { return *static_cast<FieldWidget*>(widget()); }
};

class Area : public TextAccessible {
  public:
    explicit Area(QTextEdit* area) : TextAccessible(area, true) {}

    int cursorPosition() const override { return Edit().textCursor().position(); }
    void setCursorPosition(int position) override { Select(position, position); }

  protected:
    QString AllText() const override { return Edit().toPlainText(); }
    bool ReadOnly() const override { return Edit().isReadOnly(); }
    std::pair<int, int> Selected() const override {
        const QTextCursor cursor = Edit().textCursor();
        return {cursor.selectionStart(), cursor.selectionEnd()};
    }
    void Select(int start, int end) override {
        QTextCursor cursor = Edit().textCursor();
        cursor.setPosition(std::clamp(start, 0, characterCount()));
        cursor.setPosition(std::clamp(end, 0, characterCount()), QTextCursor::KeepAnchor);
        Edit().setTextCursor(cursor);
    }
    QRect LocalCharacterRect(int offset) const override {
        const QRect at = CaretAt(offset);
        const QRect next = CaretAt(std::min(offset + 1, characterCount()));
        const int width = next.top() == at.top() ? std::max(0, next.left() - at.left()) : 0;
        return {Edit().viewport()->mapTo(&Edit(), at.topLeft()), QSize(width, at.height())};
    }
    int OffsetAtLocal(const QPoint& local) const override {
        return Edit().cursorForPosition(Edit().viewport()->mapFrom(&Edit(), local)).position();
    }

  private:
    QTextEdit& Edit() const { return *static_cast<QTextEdit*>(widget()); }
    QRect CaretAt(int offset) const {
        QTextCursor cursor(Edit().document());
        cursor.setPosition(offset);
        return Edit().cursorRect(cursor);  // in the viewport
    }
};

}  // namespace

QAccessibleInterface* FieldAccessible(QWidget* field) {
    return new Field(static_cast<FieldWidget*>(field));
}

QAccessibleInterface* AreaAccessible(QWidget* area) {
    return new Area(static_cast<QTextEdit*>(area));
}

}  // namespace platform::qt
