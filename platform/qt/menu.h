// Menus: a MenuBar is a tree of MenuItems, built by code and shown by every window whose
// MenuBar it is. Items are found by Name (Child for a direct child, _Lookup at any depth).
//
// Choosing an item runs the handler that the active window registered for the item's name
// (Window::_AddMenuHandler); failing that, the item's own Event_Action (QuitMenuItem quits).
// An Edit item without a handler whose shortcut is Undo, Cut, Copy or Paste does the same to
// the focused text field where the field can (a read-only field only copies), as on any desktop.
// A handler that returns false passes the choice on. An item is shown enabled only while choosing
// it would do something; Enabled written by code can disable it further.
// "Cmd+" in a Shortcut is shown and bound as Ctrl+; a window without a bar of its own answers
// the shortcuts of the application's bar but for the editing ones, which its fields serve
// themselves. A node without a caption, and an AppleMenuItem, stays in the tree but is not shown.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/core/object.h"

namespace platform {

class MenuItem : public Classed<MenuItem> {
  public:
    MenuItem();
    ~MenuItem() override;
    static const ClassInfo& StaticClass();

    virtual void Constructor() {}

    void Name(const std::string& v);
    const std::string& Name() const;
    void Value(const std::string& v);  // the caption; "-" is a separator line
    const std::string& Value() const;
    void Shortcut(const std::string& v);  // "Cmd+Q"
    const std::string& Shortcut() const;
    void Visible(bool v);
    bool Visible() const;
    void AutoEnabled(bool v);
    bool AutoEnabled() const;
    void Enabled(bool v);
    bool Enabled() const;

    void AddMenu(std::unique_ptr<MenuItem> item);      // appends; the tree owns its items
    MenuItem* Child(const std::string& name) const;    // direct child, or nullptr
    MenuItem* _Lookup(const std::string& name) const;  // any depth below this node, or nullptr
    std::size_t Count() const;
    MenuItem* Item(std::size_t index) const;
    MenuItem* Parent() const { return parent_; }

    // What choosing the item does when no window handler takes it. Returns whether it acted.
    virtual bool Event_Action() { return false; }
    // Whether Event_Action does something: such an item is offered in any window.
    virtual bool ActsByItself() const { return false; }

    struct Impl;  // the Qt actions that show this item
    Impl& View() const { return *impl_; }

  private:
    MenuItem* parent_ = nullptr;
    std::vector<std::unique_ptr<MenuItem>> children_;
    std::unique_ptr<Impl> impl_;
};

class MenuBar : public Classed<MenuBar, MenuItem> {
  public:
    static const ClassInfo& StaticClass();
};

// An item for the application menu of a desktop that has one. Linux desktops have none: the item
// stays in the tree and is not shown.
class AppleMenuItem : public Classed<AppleMenuItem, MenuItem> {
  public:
    static const ClassInfo& StaticClass();
};

class QuitMenuItem : public Classed<QuitMenuItem, MenuItem> {
  public:
    static const ClassInfo& StaticClass();
    bool Event_Action() override;  // QuitMenuAction
    bool ActsByItself() const override;
};

// Ends the run as the platform's Quit item does (exit status 0).
bool QuitMenuAction(MenuItem& item);

}  // namespace platform
