// What a screen reader is told of the widgets behind windows and controls. The factory
// (`AccessibleFor`, installed by InstallAccessibility) gives each widget of a platform window an
// interface of its own kind; widgets of Qt's own windows (menus, message boxes) keep Qt's.
//
// Places are in the screen's pixels. Qt 6.4's AT-SPI bridge passes on what an interface reports
// unchanged, and Qt's own interfaces report Qt's logical pixels, which at 150% scale put every
// control at two thirds of its place: a magnifier follows the focus to the wrong spot and a
// click at a reported centre misses. Ours convert both ways (WidgetAccessible).
// Not part of the platform's interface.
#pragma once

#include <QAccessibleWidget>
#include <QPoint>
#include <QRect>

class QString;
class QObject;

namespace platform::qt {

// From Qt's logical pixels to the screen's and back, on the screen that shows `widget`.
QRect ScreenPixels(const QRect& logical, const QWidget& widget);
QPoint LogicalPoint(const QPoint& screen, const QWidget& widget);

// A widget's interface that reports its place in screen pixels and finds children at a point
// given in them.
class WidgetAccessible : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;
    QRect rect() const override;
    QAccessibleInterface* childAt(int x, int y) const override;
};

// A text field or text area: the text interface over plain text, read in one attribute run
// (Qt's field reports runs of no length, and a screen reader then drops the last character).
// It offers no editing interface: text goes in by keys alone, through the key filter.
class TextAccessible : public WidgetAccessible, public QAccessibleTextInterface {
  public:
    TextAccessible(QWidget* widget, bool multiLine);
    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }

    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override { return AllText().size(); }
    QString attributes(int offset, int* startOffset, int* endOffset) const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int, int) override {}
    void selection(int selectionIndex, int* startOffset, int* endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;

  protected:
    virtual QString AllText() const = 0;
    virtual bool ReadOnly() const = 0;
    // The selection as [start, end), empty when there is none.
    virtual std::pair<int, int> Selected() const = 0;
    virtual void Select(int start, int end) = 0;
    // In the widget's own logical pixels.
    virtual QRect LocalCharacterRect(int offset) const = 0;
    virtual int OffsetAtLocal(const QPoint& local) const = 0;

  private:
    bool multiLine_;
};

QAccessibleInterface* FieldAccessible(QWidget* field);
QAccessibleInterface* AreaAccessible(QWidget* area);

// The factory: an interface for a widget of a platform window, nullptr for any other object.
QAccessibleInterface* AccessibleFor(const QString& className, QObject* object);

}  // namespace platform::qt
