// The one menu bar: its tree, built once, and what its items carry.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "windows/menu.h"

namespace korvane::testing {
namespace {

enum class Kind { Plain, Quit, Apple };

struct Node {
    std::string name;
    std::string caption;
    std::string shortcut;
    Kind kind = Kind::Plain;
};

Kind KindOf(const platform::MenuItem& item) {
    if (dynamic_cast<const platform::QuitMenuItem*>(&item) != nullptr)
        return Kind::Quit;
    if (dynamic_cast<const platform::AppleMenuItem*>(&item) != nullptr)
        return Kind::Apple;
    return Kind::Plain;
}

void ExpectItems(const platform::MenuItem& menu, const std::vector<Node>& expected) {
    ASSERT_EQ(menu.Count(), expected.size()) << menu.Name();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const platform::MenuItem& item = *menu.Item(i);
        SCOPED_TRACE(expected[i].name);
        EXPECT_EQ(item.Name(), expected[i].name);
        EXPECT_EQ(item.Value(), expected[i].caption);
        EXPECT_EQ(item.Shortcut(), expected[i].shortcut);
        EXPECT_EQ(KindOf(item), expected[i].kind);
        EXPECT_TRUE(item.Visible());
        EXPECT_EQ(item.AutoEnabled(), expected[i].name == "FileQuit");
    }
}

TEST(MenuTest, TheBarHoldsFiveMenusInOrderWithThreeSevenAndFiveItems) {
    const Menu& bar = Menu::Instance();
    ExpectItems(bar, {{"UntitledMenu3", "", ""},
                      {"UntitledMenu2", "File", ""},
                      {"UntitledMenu0", "Edit", ""},
                      {"WindowMenu", "Window", ""},
                      {"UntitledMenu4", "", ""}});
    EXPECT_EQ(bar.Item(0)->Count(), 0u);
    EXPECT_EQ(bar.Item(4)->Count(), 0u);
    EXPECT_EQ(&Menu::Instance(), &bar);
    EXPECT_EQ(Menu::Instance().Count(), 5u) << "a second call adds nothing";
}

TEST(MenuTest, FileHoldsPrintQuitAndABlankItem) {
    ExpectItems(*Menu::Instance().Child("UntitledMenu2"),
                {{"FilePrint", "Print", ""},
                 {"FileQuit", "Quit", "Cmd+Q", Kind::Quit},
                 {"UntitledMenu8", "", ""}});
}

TEST(MenuTest, EditHoldsTheFourEditingShortcutsAroundASeparator) {
    ExpectItems(*Menu::Instance().Child("UntitledMenu0"), {{"EditUndo", "Undo", "Cmd+Z"},
                                                           {"UntitledMenu1", "-", ""},
                                                           {"EditCut", "Cut", "Cmd+X"},
                                                           {"EditCopy", "Copy", "Cmd+C"},
                                                           {"EditPaste", "Paste", "Cmd+V"},
                                                           {"EditClear", "", ""},
                                                           {"UntitledMenu7", "", ""}});
}

TEST(MenuTest, WindowHoldsControlAndTwoAboutItemsOfDifferentClasses) {
    ExpectItems(*Menu::Instance().Child("WindowMenu"),
                {{"ControlMenuItem", "Control", ""},
                 {"AboutMenuItem", "About Korvane", ""},
                 {"UntitledMenu6", "", ""},
                 {"AboutHalbrine", "About Korvane", "", Kind::Apple},
                 {"UntitledMenu5", "", "", Kind::Apple}});
}

TEST(MenuTest, LookupFindsAnItemAtAnyDepthAndChildOnlyDirectOnes) {
    const Menu& bar = Menu::Instance();
    EXPECT_EQ(bar._Lookup("EditPaste"), bar.Child("UntitledMenu0")->Child("EditPaste"));
    EXPECT_EQ(bar.Child("EditPaste"), nullptr);
    EXPECT_EQ(bar._Lookup("NoSuchItem"), nullptr);
}

}  // namespace
}  // namespace korvane::testing
