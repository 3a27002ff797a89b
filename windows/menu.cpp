#include "windows/menu.h"

#include <memory>
#include <optional>
#include <string>

namespace korvane {

namespace {

std::unique_ptr<Menu> pImplicitInstance;

// One node of the bar, its properties set in the order Name, AutoEnabled, Value, Visible,
// Shortcut. A node built with kNoShortcut never has Shortcut set at all.
template <class Item = platform::MenuItem>
std::unique_ptr<platform::MenuItem> Node(const std::string& name, const std::string& value,
                                         std::optional<std::string> shortcut = std::string(),
                                         bool autoEnabled = false) {
    auto item = std::make_unique<Item>();
    item->Constructor();
    item->Name(name);
    item->AutoEnabled(autoEnabled);
    item->Value(value);
    item->Visible(true);
    if (shortcut) {
        item->Shortcut(*shortcut);
    }
    return item;
}

constexpr std::nullopt_t kNoShortcut = std::nullopt;

}  // namespace

// The store comes after the builders have all succeeded: a failed build leaves no instance.
Menu& Menu::Instance() {
    if (!pImplicitInstance) {
        auto menu = std::make_unique<Menu>();
        menu->Constructor();
        pImplicitInstance = std::move(menu);
    }
    return *pImplicitInstance;
}

void Menu::ResetImplicitInstance() {
    pImplicitInstance.reset();
}

const platform::ClassInfo& Menu::StaticClass() {
    static const platform::ClassInfo info{"Menu", &platform::MenuBar::StaticClass(), {}};
    return info;
}

void Menu::Constructor() {
    Untitled0();
    Untitled1();
    Untitled2();
    Untitled3();
    Untitled4();
}

// Each item goes to its menu through the bar's Child, looked up afresh for every item.
void Menu::AddTo(const std::string& menu, std::unique_ptr<platform::MenuItem> item) {
    platform::NotNil(Child(menu)).AddMenu(std::move(item));
}

void Menu::Untitled0() {
    AddMenu(Node("UntitledMenu3", ""));
}

void Menu::Untitled1() {
    AddMenu(Node("UntitledMenu2", "File"));
    AddTo("UntitledMenu2", Node("FilePrint", "Print"));
    AddTo("UntitledMenu2", Node<platform::QuitMenuItem>("FileQuit", "Quit", "Cmd+Q", true));
    AddTo("UntitledMenu2", Node("UntitledMenu8", ""));
}

void Menu::Untitled2() {
    AddMenu(Node("UntitledMenu0", "Edit"));
    AddTo("UntitledMenu0", Node("EditUndo", "Undo", "Cmd+Z"));
    AddTo("UntitledMenu0", Node("UntitledMenu1", "-", kNoShortcut));
    AddTo("UntitledMenu0", Node("EditCut", "Cut", "Cmd+X"));
    AddTo("UntitledMenu0", Node("EditCopy", "Copy", "Cmd+C"));
    AddTo("UntitledMenu0", Node("EditPaste", "Paste", "Cmd+V"));
    AddTo("UntitledMenu0", Node("EditClear", ""));
    AddTo("UntitledMenu0", Node("UntitledMenu7", ""));
}

void Menu::Untitled3() {
    AddMenu(Node("WindowMenu", "Window"));
    AddTo("WindowMenu", Node("ControlMenuItem", "Control"));
    AddTo("WindowMenu", Node("AboutMenuItem", "About Korvane"));
    AddTo("WindowMenu", Node("UntitledMenu6", ""));
    AddTo("WindowMenu", Node<platform::AppleMenuItem>("AboutHalbrine", "About Korvane"));
    AddTo("WindowMenu", Node<platform::AppleMenuItem>("UntitledMenu5", ""));
}

void Menu::Untitled4() {
    AddMenu(Node("UntitledMenu4", ""));
}

}  // namespace korvane
