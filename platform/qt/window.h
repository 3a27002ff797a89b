// Windows: a Window is a top-level Qt window holding controls by name.
//
// A window class of the system derives from Window and overrides the construction events
// (Layout, CreateControls, AddMenuHandlers) and the events it implements (Event_Activate,
// Event_Close, ...). Constructor() raises the construction events, so a window is built by
// allocating it and calling Constructor(), never by the C++ constructor alone.
//
// Lifetime: the platform owns every window from creation to the end of the run, in a registry
// keyed by run-time class name ("ControlWnd.ControlWnd"); _GetImplicitWindow reads it and
// ImplicitWindow is the accessor every window class builds on. A window owns its controls.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/core/object.h"

class QWidget;

namespace platform {

class Control;
class MenuBar;

class Window : public Classed<Window> {
  public:
    Window();
    ~Window() override;

    // Record properties: Width, Height, MinimumWidth, MinimumHeight, MaximumWidth, MaximumHeight,
    // Type, Title, HasCloseButton, HasMaximizeButton, HasMinimizeButton, HasFullScreenButton,
    // Resizeable, Composite, FullScreen, DefaultLocation, Visible, HasBackgroundColor,
    // BackgroundColor, MenuBarVisible, LiveResize.
    static const ClassInfo& StaticClass();

    // Raises Layout, CreateControls and AddMenuHandlers, in that order, then shows the window if
    // its record made it Visible. A failure stops construction; what was built stays.
    void Constructor();

    void Show();  // shows, raises and activates
    void Hide();  // the window and its controls stay alive
    bool Visible() const;
    // What the close button does: raises Event_Close. A window that hid itself there stays alive
    // (hidden); any other is closed and leaves the registry.
    void Close();
    std::string Title() const;
    bool HasCloseButton() const;  // as the record gives it; without one, no close from outside

    void MenuBar(platform::MenuBar* bar);  // shows the bar's menus in this window
    platform::MenuBar* MenuBar() const;

    template <class T>
    std::unique_ptr<T> __New() {
        return std::make_unique<T>();
    }
    void _AddControl(const std::string& name, std::unique_ptr<Control> control);
    Control* _ControlByName(const std::string& name) const;  // nullptr if there is none

    // Binds a handler to a menu item for this window; the platform runs it when the item is
    // chosen while this window is the active one.
    void _AddMenuHandler(const std::string& itemName, std::function<bool()> handler);
    bool HasMenuHandler(const std::string& itemName) const;
    bool RunMenuHandler(const std::string& itemName);  // false when there is none

    // Construction events.
    virtual void Layout() {}
    virtual void CreateControls() {}
    virtual void AddMenuHandlers() {}

    // Events. A window class implements one by overriding it. The Boolean results of KeyDown and
    // MouseDown tell whether the window dealt with the press.
    //   Activate: each time the window becomes the active one, but not when it gets the keyboard
    //     back from a dismissed MsgBox. EnableMenuItems follows each Activate, and comes when a
    //     menu of the bar is about to open.
    //   KeyDown: every press that no text field has the focus for and no menu shortcut took,
    //     function keys and combinations included, and a modifier tapped alone (at its release;
    //     held for a combination it is part of that). The key string is empty for a press with
    //     Ctrl, Alt or Meta and for a key without a character.
    //   MouseDown: presses on the content's background and on passive controls (labels,
    //     canvases, separators, frames whose own MouseDown did not take the press); x and y in
    //     content coordinates.
    virtual void Event_Activate() {}
    virtual void Event_Close() {}
    virtual void Event_EnableMenuItems() {}
    virtual bool Event_KeyDown(const std::string& key);
    virtual bool Event_MouseDown(std::int64_t x, std::int64_t y);

    // The name a screen reader speaks for the window instead of its title.
    void AccessibleName(const std::string& name);

    // The run-time class name up to the dot ("ControlWnd"): what the recorder logs.
    std::string ShortName() const;
    // The top-level Qt widget, for the platform and for tests.
    QWidget* Widget() const;
    // The widget the controls live on: its (0,0) is the window's content top-left, below any
    // menu bar, and it is Width x Height.
    QWidget* ContentWidget() const;
    // The controls in the order they were added.
    std::size_t ControlCount() const;
    Control* ControlAt(std::size_t index) const;

    // Record setters (used through the property table).
    void SetType(std::int64_t v);
    void SetTitle(std::string v);
    void SetHasCloseButton(bool v);
    void SetHasMaximizeButton(bool v);
    void SetHasMinimizeButton(bool v);
    void SetHasFullScreenButton(bool v);
    void SetResizeable(bool v);
    void SetVisible(bool v);
    void SetHasBackgroundColor(bool v);
    void SetBackgroundColor(Colour v);
    void SetMenuBarVisible(bool v);
    void SetFullScreen(bool v);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
    // The record setter of Width, Height and their minimum and maximum: one size of the frame.
    template <int Impl::*Size>
    void SetSize(std::int64_t v);
};

// The living window of that run-time class, or nullptr if there is none.
Window* _GetImplicitWindow(std::string_view fullClassName);
// The class table of a window class: how to allocate one. Registering twice keeps the first.
void RegisterWindowClass(std::string_view fullClassName,
                         std::function<std::unique_ptr<Window>()> make);
// The accessor of a window class: the living window, or a new one of the registered class,
// entered in the registry and then given its Constructor(). NilObjectException for a class
// that was never registered.
Window& ImplicitWindow(std::string_view fullClassName);
// Destroys every living window and empties the registry: at the end of the run, and between tests.
void DestroyAllWindows();

// The names of the window events a class overrides ("Close", "Activate", ...).
template <std::size_t N>
using EventNames = std::array<std::string_view, N>;

// What every window class of the system does to register and find itself. Derived declares
// kClassName, its run-time class name, and kImplementedEvents, the EventNames of the window events
// it overrides, since the runtime keeps no table of its own.
template <class Derived>
class WindowClass : public Window {
  public:
    // The accessor: registers the class, then gives the living instance, built on first use.
    static Derived& Instance() {
        RegisterClass();
        return Implicit();
    }
    // The class table (an initialiser of the run); idempotent.
    static void RegisterClass() {
        RegisterWindowClass(Derived::kClassName, [] { return std::make_unique<Derived>(); });
    }

    static const ClassInfo& StaticClass() {
        static const ClassInfo info{Derived::kClassName, &Window::StaticClass(), {}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }

    bool IsEventImplemented(const std::string& name) const {
        return std::ranges::find(Derived::kImplementedEvents, std::string_view(name)) !=
               Derived::kImplementedEvents.end();
    }

  protected:
    // The living instance, or a new one of the class as registered: no registration of its own.
    static Derived& Implicit() {
        return RuntimeCheckCast<Derived>(&ImplicitWindow(Derived::kClassName));
    }
    // Allocates the control, adds it under its name and hands it back as found by that name.
    template <class C>
    C& Create(const std::string& name) {
        _AddControl(name, __New<C>());
        return Named<C>(name);
    }
    // The control of that name, cast to its class: found again at each use.
    template <class C>
    C& Named(const std::string& name) const {
        return RuntimeCheckCast<C>(_ControlByName(name));
    }
};

}  // namespace platform
