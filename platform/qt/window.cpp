#include "platform/qt/window.h"

#include <malloc.h>

#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <vector>

#include "platform/core/recorder.h"
#include "platform/qt/application.h"
#include "platform/qt/controls.h"
#include "platform/qt/menu.h"
#include "platform/qt/menu_keys.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"

namespace platform {

namespace {

bool FocusInTextField() {
    QWidget* focus = QApplication::focusWidget();
    return qobject_cast<QLineEdit*>(focus) != nullptr || qobject_cast<QTextEdit*>(focus) != nullptr;
}

// Runs an action once control is back in the event loop that asked for it, never inside the
// event Qt is dispatching now: Qt goes on using the windows of that event after our handlers
// return. (Qt's deferred deletion; a nested loop, as a message box runs, does not run it early.)
class AfterThisEvent : public QObject {
  public:
    static void Run(std::function<void()> action) {
        (new AfterThisEvent(std::move(action)))->deleteLater();
    }
    ~AfterThisEvent() override;

  private:
    explicit AfterThisEvent(std::function<void()> action);
    std::function<void()> action_;
};

// The top-level widget of a Window: the content, with the menu bar above it once the window
// has one. It turns Qt's events into the window's events; `owner` is cleared before the window
// is taken apart, so nothing reaches a window being destroyed. A plain widget with a column
// layout, not a QMainWindow: the window needs none of the docks and tool bars a main window
// brings, whose code would be resident in every run.
class WindowFrame : public QWidget {
  public:
    WindowFrame(Window* window, QWidget* content) : owner(window), column_(new QVBoxLayout(this)) {
        column_->setContentsMargins(0, 0, 0, 0);
        column_->setSpacing(0);
        column_->addWidget(content);
        setAttribute(Qt::WA_QuitOnClose, false);
        setPalette(qt::LightPalette());  // the controls inherit it, whatever the theme says
    }
    Window* owner;

    QMenuBar* Bar() const { return bar_; }  // nullptr until the window has had a menu bar
    QMenuBar& MakeBar() {
        if (bar_ == nullptr) {
            bar_ = new QMenuBar(this);
            bar_->setNativeMenuBar(false);
            qt::TakeMenuKeys(*bar_);
            column_->setMenuBar(bar_);
        }
        return *bar_;
    }

    // A hidden window gives back its native window and the image it is drawn into; showing it
    // again makes new ones. Only after the event that hid it: a window is hidden from its own
    // events (the about window on a key) and from another's (the control window's Activate hides
    // the about window while Qt is still switching the focus away from it), and Qt reaches the
    // native windows of the event it dispatches once our handler has returned.
    void ReleaseNativeWindowAfterThisEvent() {
        AfterThisEvent::Run([frame = QPointer<WindowFrame>(this)] {
            if (frame != nullptr && frame->isHidden()) {
                frame->destroy();
                // Hiding a window ends a stage of the run (the about window's is start-up):
                // what was built and freed up to now goes back to the system, which glibc
                // would otherwise keep resident.
                malloc_trim(0);
            }
        });
    }

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override {
        return (owner != nullptr && qt::MoveFocusAlongTabChain(*owner, next)) ||
               QWidget::focusNextPrevChild(next);
    }

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
    void mousePressEvent(QMouseEvent* event) override {
        if (owner == nullptr) {
            return;
        }
        const QPoint at = event->position().toPoint();
        Window* window = owner;
        ProtectedCall([window, at] { window->Event_MouseDown(at.x(), at.y()); });
        event->accept();
    }
};

struct Registry {
    struct Entry {
        std::string key;
        std::unique_ptr<Window> window;
    };
    std::vector<Entry> owned;  // the windows built by ImplicitWindow
    std::map<std::string, std::function<std::unique_ptr<Window>()>, std::less<>> classes;
    std::vector<AfterThisEvent*> pending;  // the end of the run runs what is left
    Window* lastActivated = nullptr;
    Window* returningFromMessage = nullptr;  // its next activation follows a MsgBox
};

Registry& Reg() {
    static Registry registry;
    return registry;
}

AfterThisEvent::AfterThisEvent(std::function<void()> action) : action_(std::move(action)) {
    Reg().pending.push_back(this);
}

AfterThisEvent::~AfterThisEvent() {
    std::erase(Reg().pending, this);
    action_();
}

void RaiseActivate(Window& window) {
    Registry& reg = Reg();
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

bool IsModifierKey(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_Super_L ||
           key == Qt::Key_Super_R;
}

// A modifier is a key press of its own only when it is tapped: pressed and released with no
// other key between. Held for a combination that the program sees (Ctrl+Q, Ctrl+K), it is part
// of that combination. Every key press of the application passes
// here, shortcuts included, so a combination is seen even where no window gets it.
class ModifierTaps : public QObject {
  public:
    // Watches the application that runs now (a run may make a new one).
    static ModifierTaps& Instance() {
        static QPointer<ModifierTaps> taps;
        if (taps.isNull()) {
            taps = new ModifierTaps(QCoreApplication::instance());
        }
        return *taps;
    }
    bool Tapped(const QKeyEvent& release) const {
        return !release.isAutoRepeat() && release.key() == pressed_;
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
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
        return QObject::eventFilter(watched, event);
    }

  private:
    explicit ModifierTaps(QObject* app) : QObject(app) { app->installEventFilter(this); }
    int pressed_ = 0;  // the modifier pressed last, while no other key followed it
};

bool RaiseKeyDown(Window& window, const std::string& key) {
    bool took = false;
    ProtectedCall([&window, &key, &took] { took = window.Event_KeyDown(key); });
    return took;
}

// Every key press that no field and no shortcut took is the window's KeyDown: also a function
// key, a combination with Ctrl or Alt and a tapped modifier, which give the key string they have
// (empty for most). So a window that gives way on any key does so on every key a person presses.
// Where the window manager takes a combination (Alt+F4), the program sees its modifier alone,
// as a tap.
void WindowFrame::keyPressEvent(QKeyEvent* event) {
    if (owner != nullptr && !FocusInTextField() && !IsModifierKey(event->key())) {
        if (RaiseKeyDown(*owner,
                         qt::IsShortcutPress(*event) ? std::string() : qt::KeyString(*event))) {
            event->accept();
            return;
        }
    }
    QWidget::keyPressEvent(event);
}

void WindowFrame::keyReleaseEvent(QKeyEvent* event) {
    if (owner != nullptr && !FocusInTextField() && IsModifierKey(event->key()) &&
        ModifierTaps::Instance().Tapped(*event)) {
        if (RaiseKeyDown(*owner, std::string())) {
            event->accept();
            return;
        }
    }
    QWidget::keyReleaseEvent(event);
}

}  // namespace

struct Window::Impl {
    WindowFrame* frame = nullptr;  // owns the content, the menu bar and every control's widget
    WindowContent* content = nullptr;
    std::vector<std::unique_ptr<Control>> controls;
    std::map<std::string, std::function<bool()>> menuHandlers;
    platform::MenuBar* menuBar = nullptr;

    int width = 300, height = 200;
    int minWidth = 0, minHeight = 0, maxWidth = QWIDGETSIZE_MAX, maxHeight = QWIDGETSIZE_MAX;
    std::int64_t type = 0;
    bool hasClose = true, hasMinimize = true, hasMaximize = true, hasFullScreen = false;
    bool resizeable = true, menuBarVisible = true, fullScreen = false;

    bool constructing = false;
    bool showWhenBuilt = false;  // the record's Visible, applied when Constructor ends
    bool closing = false;
    bool hiddenWhileClosing = false;
    bool closed = false;
    bool placed = false;  // centred on the screen at its first show

    int MenuBarHeight() const {
        QWidget* bar = frame->Bar();
        return (bar != nullptr && !bar->isHidden()) ? bar->sizeHint().height() : 0;
    }

    // Sets one of the six sizes a record gives, kept within what Qt takes.
    void Resize(int& size, std::int64_t v) {
        size = static_cast<int>(std::clamp<std::int64_t>(v, 0, QWIDGETSIZE_MAX));
        ApplySize();
    }

    // The content stays Width x Height; a menu bar adds to the frame, not to the content.
    void ApplySize() {
        const int extra = MenuBarHeight();
        if (!resizeable) {
            frame->setFixedSize(width, height + extra);
            return;
        }
        frame->setMinimumSize(minWidth, minHeight + extra);
        frame->setMaximumSize(maxWidth, std::min(maxHeight + extra, QWIDGETSIZE_MAX));
        frame->resize(width, height + extra);
    }

    // Type 2 is a plain frame without title or buttons; every other type is a titled window with
    // the buttons the record gives. A window that cannot be resized cannot be maximised either.
    void ApplyFlags() {
        Qt::WindowFlags flags = Qt::Window;
        if (type == 2) {
            flags |= Qt::FramelessWindowHint;
        } else {
            flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
            if (hasClose) {
                flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
            }
            if (hasMinimize) {
                flags |= Qt::WindowMinimizeButtonHint;
            }
            if (hasMaximize && resizeable) {
                flags |= Qt::WindowMaximizeButtonHint;
            }
        }
        if (flags == frame->windowFlags()) {
            return;
        }
        const bool shown = frame->isVisible();
        frame->setWindowFlags(flags);
        if (shown) {
            frame->show();
        }
    }

    // A window comes up in the middle of the screen's free area the first time it is shown, and
    // where the user left it after that. One larger than that area (the form at 200% on a small
    // screen) keeps its top left corner, and so its title bar, on the screen. On Wayland a client
    // cannot place its windows and Qt drops the move: the compositor places them (sway centres
    // fixed-size windows, which all of ours are, on the output) and keeps menus and message boxes
    // beside or over the window they belong to.
    void Centre() {
        QScreen* screen = QGuiApplication::primaryScreen();
        if (screen == nullptr) {
            return;
        }
        const QRect free = screen->availableGeometry();
        QRect area(QPoint(), frame->size());
        area.moveCenter(free.center());
        frame->move(std::max(area.left(), free.left()), std::max(area.top(), free.top()));
    }

    void ShowFrame() {
        // A window without a bar of its own still answers the shortcuts of the application's
        // bar (Ctrl+Q quits from any window).
        if (menuBar == nullptr && getAppObject() != nullptr &&
            getAppObject()->MenuBar() != nullptr) {
            qt::AddShortcuts(*frame, *getAppObject()->MenuBar());
        }
        if (!placed) {
            Centre();
            placed = true;
        }
        if (fullScreen) {
            frame->showFullScreen();
        } else {
            frame->show();
        }
        frame->raise();
        frame->activateWindow();
    }

    void InstallMenuBar() {
        // A window that has never had a menu bar makes no Qt one only to hide it.
        if (menuBar == nullptr && frame->Bar() == nullptr) {
            ApplySize();
            return;
        }
        QMenuBar& bar = frame->MakeBar();
        if (menuBar != nullptr) {
            qt::ShowMenuBar(bar, *menuBar);
        } else {
            bar.clear();
        }
        bar.setHidden(menuBar == nullptr || !menuBarVisible);
        ApplySize();
    }
};

Window::Window() : impl_(std::make_unique<Impl>()) {
    ModifierTaps::Instance();
    impl_->content = new WindowContent(this);
    impl_->frame = new WindowFrame(this, impl_->content);
    impl_->ApplyFlags();
    impl_->ApplySize();
}

Window::~Window() {
    Registry& reg = Reg();
    if (reg.lastActivated == this) {
        reg.lastActivated = nullptr;
    }
    if (reg.returningFromMessage == this) {
        reg.returningFromMessage = nullptr;
    }
    impl_->frame->owner = nullptr;
    impl_->content->owner = nullptr;
    // The frame takes every control's widget with it; the controls then own nothing of Qt's.
    delete impl_->frame;
    while (!impl_->controls.empty()) {
        impl_->controls.pop_back();
    }
}

const ClassInfo& Window::StaticClass() {
    static const ClassInfo info{
        "Window",
        &Object::StaticClass(),
        {
            Property<&Window::SetSize<&Impl::width>>("Width"),
            Property<&Window::SetSize<&Impl::height>>("Height"),
            Property<&Window::SetSize<&Impl::minWidth>>("MinimumWidth"),
            Property<&Window::SetSize<&Impl::minHeight>>("MinimumHeight"),
            Property<&Window::SetSize<&Impl::maxWidth>>("MaximumWidth"),
            Property<&Window::SetSize<&Impl::maxHeight>>("MaximumHeight"),
            Property<&Window::SetType>("Type"),
            Property<&Window::SetTitle>("Title"),
            Property<&Window::SetHasCloseButton>("HasCloseButton"),
            Property<&Window::SetHasMaximizeButton>("HasMaximizeButton"),
            Property<&Window::SetHasMinimizeButton>("HasMinimizeButton"),
            Property<&Window::SetHasFullScreenButton>("HasFullScreenButton"),
            Property<&Window::SetResizeable>("Resizeable"),
            Property<&Window::SetVisible>("Visible"),
            Property<&Window::SetHasBackgroundColor>("HasBackgroundColor"),
            Property<&Window::SetBackgroundColor>("BackgroundColor"),
            Property<&Window::SetMenuBarVisible>("MenuBarVisible"),
            Property<&Window::SetFullScreen>("FullScreen"),
            // Every new window is centred on the screen; windows draw in one pass and are
            // never composited; a fixed window has no live resizing; no resource ids on Qt.
            StoredOnly("DefaultLocation", Form::Integer),
            StoredOnly("Composite", Form::Boolean),
            StoredOnly("LiveResize", Form::Boolean),
            StoredOnly("MacProcID", Form::Integer),
        }};
    return info;
}

void Window::Constructor() {
    _UITrap();
    struct Building {
        Impl& impl;
        explicit Building(Impl& i) : impl(i) { impl.constructing = true; }
        ~Building() { impl.constructing = false; }
    } building(*impl_);
    Layout();
    CreateControls();
    AddMenuHandlers();
    impl_->constructing = false;
    qt::GatherRadioButtonsIntoFrames(*this);
    qt::RebuildTabChain(*this);
    if (impl_->showWhenBuilt) {
        impl_->ShowFrame();
    }
}

void Window::Show() {
    _UITrap();
    recorder::Note(ShortName() + ".Show");
    impl_->ShowFrame();
}

void Window::Hide() {
    _UITrap();
    recorder::Note(ShortName() + ".Hide");
    if (impl_->closing) {
        impl_->hiddenWhileClosing = true;
    }
    impl_->frame->hide();
    impl_->frame->ReleaseNativeWindowAfterThisEvent();
}

bool Window::Visible() const {
    _UITrap();
    return impl_->frame->isVisible();
}

// While Event_Close runs, the window is still on record: an accessor called there finds this
// window, so one that hides itself keeps what its user typed.
void Window::Close() {
    _UITrap();
    if (impl_->closed || impl_->closing) {
        return;  // closed already, or a Close from inside Event_Close
    }
    struct Closing {
        Impl& impl;
        explicit Closing(Impl& i) : impl(i) {
            impl.closing = true;
            impl.hiddenWhileClosing = false;
        }
        ~Closing() { impl.closing = false; }
    } closing(*impl_);
    Event_Close();
    if (impl_->hiddenWhileClosing || qt::QuitRequested()) {
        return;  // it hid itself and stays alive; or the run is ending anyway
    }
    impl_->closed = true;
    impl_->frame->hide();
    Registry& reg = Reg();
    auto entry = std::find_if(reg.owned.begin(), reg.owned.end(),
                              [this](const Registry::Entry& e) { return e.window.get() == this; });
    if (entry != reg.owned.end()) {
        std::shared_ptr<Window> window = std::move(entry->window);
        reg.owned.erase(entry);
        AfterThisEvent::Run([window]() mutable { window.reset(); });  // never inside its own event
    }
}

bool Window::HasCloseButton() const {
    return impl_->hasClose;
}

std::string Window::Title() const {
    return qt::FromQt(impl_->frame->windowTitle());
}

void Window::MenuBar(platform::MenuBar* bar) {
    _UITrap();
    impl_->menuBar = bar;
    impl_->InstallMenuBar();
}

platform::MenuBar* Window::MenuBar() const {
    return impl_->menuBar;
}

void Window::_AddControl(const std::string& name, std::unique_ptr<Control> control) {
    _UITrap();
    Control& added = NotNil(control.get());
    impl_->controls.push_back(std::move(control));
    added.Attach(*this, name);
}

Control* Window::_ControlByName(const std::string& name) const {
    _UITrap();
    for (const auto& control : impl_->controls) {
        if (control->Name() == name) {
            return control.get();
        }
    }
    return nullptr;
}

void Window::_AddMenuHandler(const std::string& itemName, std::function<bool()> handler) {
    _UITrap();
    impl_->menuHandlers[itemName] = std::move(handler);
}

bool Window::HasMenuHandler(const std::string& itemName) const {
    return impl_->menuHandlers.contains(itemName);
}

bool Window::RunMenuHandler(const std::string& itemName) {
    auto found = impl_->menuHandlers.find(itemName);
    if (found == impl_->menuHandlers.end() || !found->second) {
        return false;
    }
    auto handler = found->second;  // a copy: the handler may register handlers anew
    return handler();
}

bool Window::Event_KeyDown(const std::string& /*key*/) {
    return false;
}

bool Window::Event_MouseDown(std::int64_t /*x*/, std::int64_t /*y*/) {
    return false;
}

std::string Window::ShortName() const {
    const std::string_view name = Class().name;
    return std::string(name.substr(0, name.find('.')));
}

QWidget* Window::Widget() const {
    return impl_->frame;
}

QWidget* Window::ContentWidget() const {
    return impl_->content;
}

std::size_t Window::ControlCount() const {
    return impl_->controls.size();
}

Control* Window::ControlAt(std::size_t index) const {
    return index < impl_->controls.size() ? impl_->controls[index].get() : nullptr;
}

template <int Window::Impl::*Size>
void Window::SetSize(std::int64_t v) {
    impl_->Resize((*impl_).*Size, v);
}

void Window::SetType(std::int64_t v) {
    impl_->type = v;
    impl_->ApplyFlags();
}

void Window::SetTitle(std::string v) {
    impl_->frame->setWindowTitle(qt::ToQt(v));
}

void Window::SetHasCloseButton(bool v) {
    impl_->hasClose = v;
    impl_->ApplyFlags();
}

void Window::SetHasMaximizeButton(bool v) {
    impl_->hasMaximize = v;
    impl_->ApplyFlags();
}

void Window::SetHasMinimizeButton(bool v) {
    impl_->hasMinimize = v;
    impl_->ApplyFlags();
}

// Qt on this desktop has no full-screen button in a title bar: the flag is kept.
void Window::SetHasFullScreenButton(bool v) {
    impl_->hasFullScreen = v;
}

void Window::SetResizeable(bool v) {
    impl_->resizeable = v;
    if (v) {
        impl_->frame->setMinimumSize(0, 0);
        impl_->frame->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    impl_->ApplyFlags();
    impl_->ApplySize();
}

void Window::SetVisible(bool v) {
    if (impl_->constructing) {
        impl_->showWhenBuilt = v;
    } else if (v) {
        impl_->ShowFrame();
    } else {
        impl_->frame->hide();
    }
}

void Window::SetHasBackgroundColor(bool v) {
    impl_->content->setAutoFillBackground(v);
}

void Window::SetBackgroundColor(Colour v) {
    QPalette palette = impl_->content->palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(v.rgb));
    impl_->content->setPalette(palette);
}

void Window::SetMenuBarVisible(bool v) {
    impl_->menuBarVisible = v;
    impl_->InstallMenuBar();
}

void Window::SetFullScreen(bool v) {
    impl_->fullScreen = v;
}

Window* _GetImplicitWindow(std::string_view fullClassName) {
    for (const auto& entry : Reg().owned) {
        if (entry.key == fullClassName) {
            return entry.window.get();
        }
    }
    return nullptr;
}

void RegisterWindowClass(std::string_view fullClassName,
                         std::function<std::unique_ptr<Window>()> make) {
    Reg().classes.try_emplace(std::string(fullClassName), std::move(make));
}

Window& ImplicitWindow(std::string_view fullClassName) {
    if (Window* living = _GetImplicitWindow(fullClassName)) {
        return *living;
    }
    Registry& reg = Reg();
    auto found = reg.classes.find(fullClassName);
    if (found == reg.classes.end() || !found->second) {
        throw NilObjectException("No window class is registered as " + std::string(fullClassName) +
                                 ".");
    }
    std::unique_ptr<Window> made = found->second();
    Window& window = NotNil(made.get());
    reg.owned.push_back({std::string(fullClassName), std::move(made)});
    window.Constructor();
    return window;
}

void DestroyAllWindows() {
    Registry& reg = Reg();
    auto owned = std::move(reg.owned);
    reg.owned.clear();
    while (!owned.empty()) {
        owned.pop_back();
    }
    while (!reg.pending.empty()) {
        delete reg.pending.back();  // runs it and takes it off the list
    }
}

namespace qt {

void RunAfterThisEvent(std::function<void()> action) {
    AfterThisEvent::Run(std::move(action));
}

Window* WindowOf(const QWidget* widget) {
    if (widget == nullptr) {
        return nullptr;
    }
    auto* frame = dynamic_cast<const WindowFrame*>(widget->window());
    return frame != nullptr ? frame->owner : nullptr;
}

Window* ActiveWindow() {
    if (Window* active = WindowOf(QApplication::activeWindow())) {
        return active;
    }
    Window* last = Reg().lastActivated;
    return (last != nullptr && last->Widget()->isVisible()) ? last : nullptr;
}

void ExpectReturnFromMessage(Window* window) {
    Reg().returningFromMessage = window;
}

void ReturnedFromMessage(Window* window) {
    Registry& reg = Reg();
    // Still active: the window never lost the activation, so none is coming back.
    if (window != nullptr && reg.returningFromMessage == window &&
        QApplication::activeWindow() == window->Widget()) {
        reg.returningFromMessage = nullptr;
    }
}

}  // namespace qt

}  // namespace platform
