#include "platform/qt/key_filter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextEdit>

#include "platform/qt/app_wide.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform::qt {

namespace {

bool FocusInTextField() {
    QWidget* focus = QApplication::focusWidget();
    return qobject_cast<QLineEdit*>(focus) != nullptr || qobject_cast<QTextEdit*>(focus) != nullptr;
}

bool IsModifierKey(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_Super_L ||
           key == Qt::Key_Super_R;
}

// A modifier is a key press of its own only when it is tapped: pressed and released with no
// other key between. Held for a combination that the program sees (Ctrl+Q, Ctrl+K), it is part
// of that combination. Every key press of the application passes
// here, shortcuts included, so a combination is seen even where no window gets it.
class ModifierTaps : public ApplicationFilter {
  public:
    bool Tapped(const QKeyEvent& release) const {
        return !release.isAutoRepeat() && release.key() == pressed_;
    }

  private:
    friend ModifierTaps& ForThisApplication<ModifierTaps>();
    using ApplicationFilter::ApplicationFilter;

    void See(QObject* /*watched*/, QEvent* event) override {
        switch (event->type()) {
            case QEvent::KeyPress:
            case QEvent::ShortcutOverride: {
                const auto& press = *static_cast<QKeyEvent*>(event);
                if (!press.isAutoRepeat()) {
                    pressed_ = IsModifierKey(press.key()) ? press.key() : 0;
                }
                break;
            }
            // A click, or the keyboard going to another program (Alt+Tab), ends the tap.
            case QEvent::MouseButtonPress:
            case QEvent::WindowDeactivate:
            case QEvent::ApplicationStateChange:
                pressed_ = 0;
                break;
            default:
                break;
        }
    }

    int pressed_ = 0;  // the modifier pressed last, while no other key followed it
};

bool RaiseWindowKeyDown(Window& window, const std::string& key) {
    bool took = false;
    ProtectedCall([&window, &key, &took] { took = window.Event_KeyDown(key); });
    return took;
}

}  // namespace

void WatchModifierTaps() {
    ForThisApplication<ModifierTaps>();
}

// Every key press that no field and no shortcut took is the window's KeyDown: also a function
// key, a combination with Ctrl or Alt and a tapped modifier, which give the key string they have
// (empty for most). So a window that gives way on any key does so on every key a person presses.
// Where the window manager takes a combination (Alt+F4), the program sees its modifier alone,
// as a tap.
bool RaiseKeyDown(Window& window, const QKeyEvent& press) {
    if (FocusInTextField() || IsModifierKey(press.key())) {
        return false;
    }
    return RaiseWindowKeyDown(window, IsShortcutPress(press) ? std::string() : KeyString(press));
}

bool RaiseTapKeyDown(Window& window, const QKeyEvent& release) {
    if (FocusInTextField() || !IsModifierKey(release.key()) ||
        !ForThisApplication<ModifierTaps>().Tapped(release)) {
        return false;
    }
    return RaiseWindowKeyDown(window, std::string());
}

}  // namespace platform::qt
