#include "platform/qt/runtime.h"

#include <QApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QIconEngine>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTimer>
#include <QToolTip>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <thread>
#include <typeinfo>

#include "platform/core/object.h"
#include "platform/core/recorder.h"
#include "platform/qt/application.h"
#include "platform/qt/fault_injection.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

// The program runs its user interface on one thread, so plain statics need no lock; only the
// main thread's id is read from other threads (by _UITrap), and it is written before any other
// thread can exist.
struct RunState {
    std::thread::id mainThread = std::this_thread::get_id();
    QApplication* app = nullptr;
    bool ownsApp = false;  // RuntimeInit made the QApplication, so the finalisers end it
    bool quitRequested = false;
    bool inLoop = false;  // _RuntimeRun's loop is running
    bool failed = false;  // a failure went unhandled: the exit status is 1
    int exitCode = 0;
    bool reporting = false;  // a fault report is on the screen
    double versionStamp = 0;
    bool hiDPI = true;
    ExceptionHelper helper = nullptr;
    FailureHook failureHook;
    MessageHook messageHook;
};

RunState& State() {
    static RunState state;
    return state;
}

void EndRun(int code) {
    State().quitRequested = true;
    State().exitCode = code;
    // Leaves the run loop and every loop nested in it (a message box). Without a running loop
    // there is nothing to leave, and _RuntimeRun will not start one.
    if (State().inLoop) {
        QCoreApplication::exit(code);
    }
}

void CallHandler(void* handler) {
    (*static_cast<const std::function<void()>*>(handler))();
}

struct FailureText {
    std::string className;
    std::string message;
};

FailureText Describe(std::exception_ptr failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const RuntimeException& e) {
        return {e.ClassName(), e.Message()};
    } catch (const std::exception& e) {
        return {typeid(e).name(), e.what()};
    } catch (...) {
        return {"unknown exception", "no message"};
    }
}

// A user sees a fault report only on a real screen; the offscreen platform of the tests has none.
bool GuiIsUp() {
    if (QApplication::instance() == nullptr) {
        return false;
    }
    const QString name = QGuiApplication::platformName();
    return name != QLatin1String("offscreen") && name != QLatin1String("minimal");
}

void ReportFault(const FailureText& text) {
    // stdio rather than iostreams: the streams' set-up would cost every run's start-up memory.
    std::fprintf(stderr, "Korvane: %s: %s\n", text.className.c_str(), text.message.c_str());
    if (!GuiIsUp() || State().messageHook || State().reporting) {
        return;
    }
    State().reporting = true;
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Korvane"),
                    QStringLiteral("Korvane ran into a fault and must close.\n\n") +
                        qt::ToQt(text.className + ": " + text.message),
                    QMessageBox::Ok);
    box.setPalette(qt::LightPalette());
    box.exec();
    State().reporting = false;
}

bool IsPrintable(QChar c) {
    return c.unicode() >= 0x20 && c.unicode() != 0x7f && !c.isNonCharacter();
}

// The windows are drawn as their records give them, on white grounds in the records' colours,
// whatever the desktop's theme: a dark theme would otherwise draw the default texts (captions of
// radio buttons and frames) light on those white grounds. So the run keeps Qt's own style, and
// its light palette goes to the application, to every class the theme gives a palette of its
// own, and to every window, menu and message box (qt::LightPalette), which a later change of
// the desktop's theme does not reach.
void KeepLightLook() {
    QApplication::setStyle(qt::NewPlainStyle());
    QApplication::setPalette(qt::LightPalette());
    for (const char* themed :
         {"QAbstractButton", "QPushButton",       "QToolButton", "QCheckBox",
          "QRadioButton",    "QGroupBox",         "QLabel",      "QMessageBoxLabel",
          "QMenu",           "QMenuBar",          "QTextEdit",   "QTextControl",
          "QLineEdit",       "QAbstractItemView", "QHeaderView", "QTabBar",
          "QComboBox",       "QAbstractSpinBox",  "QStatusBar",  "QToolTip"}) {
        QApplication::setPalette(qt::LightPalette(), themed);
    }
}

}  // namespace

namespace qt {

// Qt's classic light palette, written out: the style's own "standard" palette follows the
// desktop's theme. Every colour of every group is set, so that nothing of it is ever resolved
// against the desktop's palette.
const QPalette& LightPalette() {
    static const QPalette light = [] {
        QPalette full;
        auto set = [&full](QPalette::ColorRole role, QColor active, QColor disabled) {
            full.setColor(QPalette::Active, role, active);
            full.setColor(QPalette::Inactive, role, active);
            full.setColor(QPalette::Disabled, role, disabled);
        };
        const QColor black(0x00, 0x00, 0x00), white(0xff, 0xff, 0xff), grey(0xef, 0xef, 0xef);
        const QColor faint(0xbe, 0xbe, 0xbe);
        set(QPalette::WindowText, black, faint);
        set(QPalette::Window, grey, grey);
        set(QPalette::Base, white, grey);
        set(QPalette::AlternateBase, QColor(0xf7, 0xf7, 0xf7), QColor(0xf7, 0xf7, 0xf7));
        set(QPalette::Text, black, faint);
        set(QPalette::PlaceholderText, QColor(0x00, 0x00, 0x00, 0x80), faint);
        set(QPalette::Button, grey, grey);
        set(QPalette::ButtonText, black, faint);
        set(QPalette::BrightText, white, white);
        set(QPalette::Light, white, white);
        set(QPalette::Midlight, QColor(0xca, 0xca, 0xca), QColor(0xca, 0xca, 0xca));
        set(QPalette::Mid, QColor(0xb8, 0xb8, 0xb8), QColor(0xb8, 0xb8, 0xb8));
        set(QPalette::Dark, QColor(0x9f, 0x9f, 0x9f), QColor(0xbe, 0xbe, 0xbe));
        set(QPalette::Shadow, QColor(0x76, 0x76, 0x76), QColor(0xb1, 0xb1, 0xb1));
        set(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6), QColor(0x91, 0x91, 0x91));
        set(QPalette::HighlightedText, white, white);
        set(QPalette::Link, QColor(0x00, 0x00, 0xff), QColor(0x00, 0x00, 0xff));
        set(QPalette::LinkVisited, QColor(0xff, 0x00, 0xff), QColor(0xff, 0x00, 0xff));
        set(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xdc), QColor(0xff, 0xff, 0xdc));
        set(QPalette::ToolTipText, black, black);
        return full;
    }();
    return light;
}

std::string KeyString(const QKeyEvent& event) {
    // The keys without a character of their own, and the control character each stands for.
    struct NamedKey {
        int key;
        char code;
    };
    static constexpr NamedKey kNamed[] = {
        {Qt::Key_Backspace, 0x08}, {Qt::Key_Tab, 0x09},    {Qt::Key_Backtab, 0x09},
        {Qt::Key_Return, 0x0d},    {Qt::Key_Enter, 0x0d},  {Qt::Key_Escape, 0x1b},
        {Qt::Key_Left, 0x1c},      {Qt::Key_Right, 0x1d},  {Qt::Key_Up, 0x1e},
        {Qt::Key_Down, 0x1f},      {Qt::Key_Delete, 0x7f}, {Qt::Key_Home, 0x01},
        {Qt::Key_End, 0x04},       {Qt::Key_PageUp, 0x0b}, {Qt::Key_PageDown, 0x0c}};
    for (const NamedKey& named : kNamed) {
        if (event.key() == named.key) {
            return std::string(1, named.code);
        }
    }
    const QString text = event.text();
    if (text.isEmpty() || !IsPrintable(text.front())) {
        return {};
    }
    return FromQt(text);
}

bool IsShortcutPress(const QKeyEvent& event) {
    return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

bool OnMainThread() {
    return std::this_thread::get_id() == State().mainThread;
}

bool QuitRequested() {
    return State().quitRequested;
}

}  // namespace qt

void RuntimeInit() {
    RunState& state = State();
    state.mainThread = std::this_thread::get_id();
    if (state.app != nullptr) {
        return;
    }
    if (auto* existing = qobject_cast<QApplication*>(QCoreApplication::instance())) {
        state.app = existing;
    } else {
        static int argc = 1;
        static char name[] = "korvane";
        static char* argv[] = {name, nullptr};
        // Qt 6 scales for dense screens by itself; fractional factors stay fractional.
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
        state.app = new QApplication(argc, argv);
        state.ownsApp = true;
    }
    KeepLightLook();
    qt::InstallAccessibility();
    // The run ends by Quit alone (closing the control window calls it): windows that hide or
    // close must never end it behind the system's back.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("Korvane"));
    // Ties the windows to the installed menu entry (korvane.desktop), which is how a Wayland
    // desktop finds their icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("korvane"));
}

// The program's icon at any size asked for, drawn smoothly from the nearest larger of its two
// pictures: 64 pixels, and 256 for a task switcher at 200%, read only when first asked for. It
// says it has the 64-pixel size alone, since an X11 window is sent a copy of every size its icon
// has, and the 256-pixel copy would cost the start a quarter of a megabyte.
class ProgramIcon : public QIconEngine {
  public:
    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const QPixmap& source = std::max(size.width(), size.height()) > kSmall ? Large() : small_;
        return source.size() == size
                   ? source
                   : source.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        painter->drawPixmap(rect, pixmap(rect.size(), mode, state));
    }
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return {QSize(kSmall, kSmall)};
    }
    QIconEngine* clone() const override { return new ProgramIcon(*this); }

  private:
    static constexpr int kSmall = 64;
    static QPixmap Read(int pixels) {
        return QPixmap::fromImage(
            qt::ReadPng(QStringLiteral(":/korvane/korvane-%1.png").arg(pixels)));
    }
    const QPixmap& Large() {
        if (large_.isNull()) {
            large_ = Read(256);
        }
        return large_;
    }
    QPixmap small_ = Read(kSmall);
    QPixmap large_;
};

// The icon of every window, set after the first window is up. Not the icon theme's: a desktop's
// launcher and task list find that one through the menu entry, and a lookup in the theme would
// read the installed icons with every image-format plug-in loaded to guess their formats, a
// quarter of a megabyte for the whole run.
static void SetWindowIcon() {
    QApplication::setWindowIcon(QIcon(new ProgramIcon()));
}

void RuntimePerformInitializers(std::span<const Initializer> table) {
    for (Initializer initializer : table) {
        initializer();
    }
}

// Everything of Qt's that the run made goes while Qt is still up: the windows, the application
// object and the Qt menus of the one menu bar, which itself is a static of the process. Then the
// QApplication that RuntimeInit made ends, before main returns, so that no static of the process
// is destroyed after Qt is gone. One that a host made (a test's) stays the host's.
void RuntimePerformFinalizers() {
    DestroyAllWindows();
    DestroyAppObject();
    qt::ReleaseMenuViews();
    RunState& state = State();
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    if (state.ownsApp) {
        delete state.app;
        state.app = nullptr;
        state.ownsApp = false;
    }
}

int RuntimeExit() {
    return State().failed ? 1 : State().exitCode;
}

void RuntimeVersion(double stamp) {
    State().versionStamp = stamp;
}

// Qt 6 scales for high-density screens by itself, with fractional factors passed through; the
// flag is kept and nothing else is asked of Qt.
void _SetSupportsHiDPI(bool supported) {
    State().hiDPI = supported;
}

void _RuntimeInitExternalClasses() {}

void _InitPluginEntrypoints() {}

void _RunFrameworkInitialization(void (*lateStartup)()) {
    if (lateStartup == nullptr) {
        return;
    }
    QTimer::singleShot(0, [lateStartup] {
        ProtectedCall(lateStartup);
        QTimer::singleShot(0, SetWindowIcon);
    });
}

void _RuntimeRun() {
    if (State().quitRequested) {
        return;  // Quit came before the loop: there is nothing to run
    }
    State().inLoop = true;
    const int code = QApplication::exec();
    State().inLoop = false;
    if (!State().quitRequested) {
        State().exitCode = code;  // the loop ended by Qt's own quit
    }
}

void Quit(std::int64_t code) {
    EndRun(static_cast<int>(code));
}

void _RuntimeResetRun() {
    State().quitRequested = false;
    State().failed = false;
    State().exitCode = 0;
}

void _RuntimeSetExceptionHelper(ExceptionHelper helper) {
    State().helper = helper;
}

void ProtectedCall(const std::function<void()>& handler) {
    try {
        std::exception_ptr escaped;
        if (State().helper != nullptr) {
            escaped = State().helper(&CallHandler, const_cast<std::function<void()>*>(&handler));
        } else {
            try {
                handler();
            } catch (const RuntimeException&) {
                escaped = std::current_exception();
            }
        }
        if (escaped) {
            _UnhandledException(escaped);
        }
    } catch (...) {
        _UnhandledException(std::current_exception());
    }
}

void _UnhandledException(std::exception_ptr failure) {
    State().failed = true;
    try {
        if (State().failureHook) {
            State().failureHook(failure);
        } else {
            ReportFault(Describe(failure));
        }
    } catch (...) {
        std::fputs("Korvane: a fault report failed in its turn\n", stderr);
    }
    EndRun(1);
}

void SetUnhandledExceptionHook(FailureHook hook) {
    State().failureHook = std::move(hook);
}

void _UITrap() {
    if (!qt::OnMainThread()) {
        throw ThreadAccessingUIException(kThreadAccessingUIMessage);
    }
    _CountUIOperation();  // a test's injected fault, if one is armed for this operation
}

void MsgBox(const std::string& text) {
    _UITrap();
    recorder::Note("MsgBox:" + text);
    Window* active = qt::ActiveWindow();
    const WeakRef wasActive(active);
    qt::ExpectReturnFromMessage(active);
    if (State().messageHook) {
        State().messageHook(text);
    } else {
        QString shown = qt::ToQt(text);
        shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
            .replace(QChar('\r'), QChar('\n'));
        QMessageBox box(QMessageBox::Information, QStringLiteral("Korvane"), shown, QMessageBox::Ok,
                        active != nullptr ? active->Widget() : nullptr);
        box.setPalette(qt::LightPalette());
        box.exec();
    }
    // The window the user worked in gets the keyboard back, also where no window manager hands
    // it back; that activation is no Activate.
    if (wasActive.Value() == nullptr) {
        return;
    }
    if (active->Widget()->isVisible()) {
        active->Widget()->activateWindow();
    }
    qt::ReturnedFromMessage(active);
}

void Beep() {
    _UITrap();
    recorder::Note("Beep");
    QApplication::beep();
}

void SetMessageBoxHook(MessageHook hook) {
    State().messageHook = std::move(hook);
}

}  // namespace platform
