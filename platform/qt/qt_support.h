// What the platform's Qt sources share among themselves: string conversion, the key strings of
// KeyDown, the run state, and the bookkeeping of windows (activation, the active window). Not part
// of the platform's interface: nothing outside platform/qt includes it.
#pragma once

#include <QFont>
#include <QImage>
#include <QPalette>
#include <QString>
#include <functional>
#include <string>
#include <vector>

class QAccessibleInterface;
class QKeyEvent;
class QMimeData;
class QMenuBar;
class QStyle;
class QWidget;

namespace platform {

class Window;
class RectControl;
class PushButton;
class MenuBar;
class MenuItem;

namespace qt {

inline QString ToQt(const std::string& text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}
inline std::string FromQt(const QString& text) {
    return text.toUtf8().toStdString();
}

// The key as KeyDown gets it: a printable key gives its character (UTF-8); Backspace "\x08",
// Tab "\x09", Return and Enter "\x0d", Escape "\x1b", Left "\x1c", Right "\x1d", Up "\x1e",
// Down "\x1f", forward Delete "\x7f", and the classic codes Home 1, End 4, Page Up 11,
// Page Down 12. Empty for a press that gives no character (a modifier alone, a function key):
// such a press is no KeyDown.
std::string KeyString(const QKeyEvent& event);
// Ctrl, Alt or Meta held: the press is a shortcut, never a KeyDown.
bool IsShortcutPress(const QKeyEvent& event);

// The PNG of that name among the application's pictures, its "@2x" variant on a dense screen; a
// null image when it is missing or unreadable.
QImage ReadPicture(const std::string& name);
// A PNG file or resource, read by Qt's own PNG reader without guessing the format (a guess loads
// every image-format plug-in); premultiplied, the form the screen draws without converting.
QImage ReadPng(const QString& path);

// The plain text that a paste or a drop of `source` gives a text field: empty when there is
// none (no data, no text among its formats).
QString PastableText(const QMimeData* source);

// Qt's own style, the same whatever the desktop's theme, for every window of the run.
QStyle* NewPlainStyle();

bool OnMainThread();
bool QuitRequested();  // Quit was called or a failure ended the run

// The platform window whose top-level widget is `widget` (or holds it), or nullptr.
Window* WindowOf(const QWidget* widget);
// The window the user works in: Qt's active window, else the one activated last.
Window* ActiveWindow();
// MsgBox: the activation of `window` that follows the dismissal of a message is no Activate.
void ExpectReturnFromMessage(Window* window);
void ReturnedFromMessage(Window* window);

// Record font sizes are the framework's points: one point is one logical pixel, as on the
// screens the layouts were drawn for. Qt points are 1/72 inch at the screen's logical DPI.
double QtPointSize(double recordPoints, const QWidget& widget);

// Qt's light palette, complete: the look of every window whatever the desktop's theme.
const QPalette& LightPalette();
// Describes the platform's windows and controls to screen readers (once per process).
void InstallAccessibility();
// The status line of a window that says fields once written (spoken.h), or nullptr.
QAccessibleInterface* StatusOf(const QWidget& frame);
// A text field's text was written by the system's code.
void NoteTextWritten(const QWidget& field);
// Runs `action` once control is back in the event loop that is dispatching now.
void RunAfterThisEvent(std::function<void()> action);
// Return in a text field: raises Action of the window's first button with Default set, in
// creation order, when that button can be pressed. False when there is none.
bool PressDefaultButton(Window& window);

// The Qt menu bar `qbar` shows the menus of `bar` and follows their later changes.
void ShowMenuBar(QMenuBar& qbar, MenuBar& bar);
// Deletes the Qt objects of every menu tree; the trees stay and show again when a bar is shown.
// The end of the run calls it, so that no menu of a static bar outlives the QApplication.
void ReleaseMenuViews();
// The shortcuts of the menu's items work in `widget`'s window, which shows no bar of its own.
void AddShortcuts(QWidget& widget, MenuItem& menu);

}  // namespace qt
}  // namespace platform
