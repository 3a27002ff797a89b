#include "platform/qt/window_frame.h"

#include <malloc.h>

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QVBoxLayout>

#include "platform/qt/active_window.h"
#include "platform/qt/key_filter.h"
#include "platform/qt/menu_keys.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/tab_chain.h"
#include "platform/qt/window.h"

namespace platform::qt {

WindowFrame::WindowFrame(Window* window, QWidget* content)
    : owner(window), column_(new QVBoxLayout(this)) {
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(0);
    column_->addWidget(content);
    setAttribute(Qt::WA_QuitOnClose, false);
    setPalette(LightPalette());  // the controls inherit it, whatever the theme says
}

QMenuBar& WindowFrame::MakeBar() {
    if (bar_ == nullptr) {
        bar_ = new QMenuBar(this);
        bar_->setNativeMenuBar(false);
        TakeMenuKeys(*bar_);
        column_->setMenuBar(bar_);
    }
    return *bar_;
}

// Only after the event that hid it: a window is hidden from its own events (the about window on
// a key) and from another's (the control window's Activate hides the about window while Qt is
// still switching the focus away from it), and Qt reaches the native windows of the event it
// dispatches once our handler has returned.
void WindowFrame::ReleaseNativeWindowAfterThisEvent() {
    RunAfterThisEvent([frame = QPointer<WindowFrame>(this)] {
        if (frame != nullptr && frame->isHidden()) {
            frame->destroy();
            // Hiding a window ends a stage of the run (the about window's is start-up): what was
            // built and freed up to now goes back to the system, which glibc would otherwise keep
            // resident.
            malloc_trim(0);
        }
    });
}

bool WindowFrame::event(QEvent* event) {
    const bool result = QWidget::event(event);
    if (owner != nullptr && event->type() == QEvent::WindowActivate) {
        RaiseActivate(*owner);
    }
    return result;
}

// The platform decides what closing means (Window::Close); Qt never closes on its own. A window
// whose record gives it no close button cannot be closed from outside either: the window
// manager's close (Alt+F4 on most desktops) is refused, so the about window never goes with its
// timer and leaves the run without a window.
void WindowFrame::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (owner != nullptr && owner->HasCloseButton()) {
        Window* window = owner;
        ProtectedCall([window] { window->Close(); });
    }
}

void WindowFrame::keyPressEvent(QKeyEvent* event) {
    if (owner != nullptr && RaiseKeyDown(*owner, *event)) {
        event->accept();
        return;
    }
    QWidget::keyPressEvent(event);
}

void WindowFrame::keyReleaseEvent(QKeyEvent* event) {
    if (owner != nullptr && RaiseTapKeyDown(*owner, *event)) {
        event->accept();
        return;
    }
    QWidget::keyReleaseEvent(event);
}

bool WindowFrame::focusNextPrevChild(bool next) {
    return (owner != nullptr && MoveFocusAlongTabChain(*owner, next)) ||
           QWidget::focusNextPrevChild(next);
}

void WindowContent::mousePressEvent(QMouseEvent* event) {
    if (owner == nullptr) {
        return;
    }
    const QPoint at = event->position().toPoint();
    Window* window = owner;
    ProtectedCall([window, at] { window->Event_MouseDown(at.x(), at.y()); });
    event->accept();
}

Window* WindowOf(const QWidget* widget) {
    if (widget == nullptr) {
        return nullptr;
    }
    auto* frame = dynamic_cast<const WindowFrame*>(widget->window());
    return frame != nullptr ? frame->owner : nullptr;
}

}  // namespace platform::qt
