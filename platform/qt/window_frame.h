// The Qt widgets of a Window: the top-level frame and the content the controls live on. They
// turn Qt's events into the window's events. Private to platform/qt.
#pragma once

#include <QWidget>

class QMenuBar;
class QVBoxLayout;

namespace platform {

class Window;

namespace qt {

// The top-level widget of a Window: the content, with the menu bar above it once the window
// has one. `owner` is cleared before the window is taken apart, so nothing reaches a window being
// destroyed. A plain widget with a column layout, not a QMainWindow: the window needs none of
// the docks and tool bars a main window brings, whose code would be resident in every run.
class WindowFrame : public QWidget {
  public:
    WindowFrame(Window* window, QWidget* content);
    Window* owner;

    QMenuBar* Bar() const { return bar_; }  // nullptr until the window has had a menu bar
    QMenuBar& MakeBar();
    // A hidden window gives back its native window and the image it is drawn into, once this
    // event is over; showing it again makes new ones.
    void ReleaseNativeWindowAfterThisEvent();

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    QVBoxLayout* column_;
    QMenuBar* bar_ = nullptr;
};

// The content of a window: presses on its background (and on passive controls, which let
// presses through) are the window's MouseDown.
class WindowContent : public QWidget {
  public:
    explicit WindowContent(Window* window) : owner(window) {}
    Window* owner;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace qt
}  // namespace platform
