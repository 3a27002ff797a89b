#include "platform/qt/active_window.h"

#include <QApplication>
#include <QWidget>

#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform::qt {

namespace {

struct Activation {
    Window* lastActivated = nullptr;
    Window* returningFromMessage = nullptr;  // its next activation follows a MsgBox
};

Activation& State() {
    static Activation activation;
    return activation;
}

}  // namespace

void RaiseActivate(Window& window) {
    Activation& reg = State();
    reg.lastActivated = &window;
    if (reg.returningFromMessage != nullptr) {
        const bool afterMessage = reg.returningFromMessage == &window;
        reg.returningFromMessage = nullptr;
        if (afterMessage) {
            return;  // dismissing a message box is no activation
        }
    }
    ProtectedCall([&window] { window.Event_Activate(); });
    if (qt::QuitRequested()) {
        return;
    }
    ProtectedCall([&window] { window.Event_EnableMenuItems(); });
}

void ForgetWindow(const Window& window) {
    Activation& reg = State();
    if (reg.lastActivated == &window) {
        reg.lastActivated = nullptr;
    }
    if (reg.returningFromMessage == &window) {
        reg.returningFromMessage = nullptr;
    }
}

Window* ActiveWindow() {
    if (Window* active = WindowOf(QApplication::activeWindow())) {
        return active;
    }
    Window* last = State().lastActivated;
    return (last != nullptr && last->Widget()->isVisible()) ? last : nullptr;
}

void ExpectReturnFromMessage(Window* window) {
    State().returningFromMessage = window;
}

void ReturnedFromMessage(Window* window) {
    Activation& reg = State();
    // Still active: the window never lost the activation, so none is coming back.
    if (window != nullptr && reg.returningFromMessage == window &&
        QApplication::activeWindow() == window->Widget()) {
        reg.returningFromMessage = nullptr;
    }
}

}  // namespace platform::qt
