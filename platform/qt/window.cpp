#include "platform/qt/window.h"

#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <algorithm>
#include <map>
#include <vector>

#include "platform/core/recorder.h"
#include "platform/qt/active_window.h"
#include "platform/qt/application.h"
#include "platform/qt/control.h"
#include "platform/qt/key_filter.h"
#include "platform/qt/menu.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/tab_chain.h"
#include "platform/qt/window_frame.h"
#include "platform/qt/window_registry.h"

namespace platform {

struct Window::Impl {
    qt::WindowFrame* frame = nullptr;  // owns the content, the menu bar and every control's widget
    qt::WindowContent* content = nullptr;
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
    qt::WatchModifierTaps();
    impl_->content = new qt::WindowContent(this);
    impl_->frame = new qt::WindowFrame(this, impl_->content);
    impl_->ApplyFlags();
    impl_->ApplySize();
}

Window::~Window() {
    qt::ForgetWindow(*this);
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
    qt::EndAfterThisEvent(*this);
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

}  // namespace platform
