// Menus: a tree built in code, as the program's bar is, shown in a window's QMenuBar, served by
// the active window's handlers and, for the Edit items, by the focused field; their access keys
// and F10. Titles are compared as Qt shows them, "&" before the access key.
#include <QAction>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "platform/qt/application.h"
#include "platform/qt/menu.h"
#include "sample_windows.h"
#include "tests/common/menu_presses.h"

namespace {

using namespace sample;

// Adds an item named after its caption ("About" is AboutMenuItem) to `menu`.
platform::MenuItem& Add(
    platform::MenuItem& menu, const std::string& caption, const std::string& shortcut = "",
    std::unique_ptr<platform::MenuItem> item = std::make_unique<platform::MenuItem>()) {
    item->Constructor();
    item->Name(caption + "MenuItem");
    item->Value(caption);
    item->Visible(true);
    item->Shortcut(shortcut);
    platform::MenuItem& added = *item;
    menu.AddMenu(std::move(item));
    return added;
}

class MenuTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        platform::MenuItem& file = Add(bar, "File");
        Add(file, "Print");
        Add(file, "Quit", "Cmd+Q", std::make_unique<platform::QuitMenuItem>());
        platform::MenuItem& edit = Add(bar, "Edit");
        for (const char* keys : {"Undo Cmd+Z", "Cut Cmd+X", "Copy Cmd+C", "Paste Cmd+V"}) {
            const std::string text(keys);
            Add(edit, text.substr(0, text.find(' ')), text.substr(text.find(' ') + 1));
        }
        Add(Add(bar, "Window"), "About");
        form = &FormWnd::Instance();
        form->MenuBar(&bar);
        ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
        form->rfld().Text("0.05");
        platform::ApplyRecord(form->rfld(), PLATFORM_RECORD(Bool("ReadOnly", true)).view());
    }

    QMenu& Shown(int menu) {
        return *form->Widget()->findChild<QMenuBar*>()->actions()[menu]->menu();
    }
    // The items of a menu as they stand once it opens: "Caption" when enabled, "(Caption)" not.
    std::vector<std::string> Open(int menu) {
        emit Shown(menu).aboutToShow();
        std::vector<std::string> items;
        for (QAction* action : Shown(menu).actions()) {
            const std::string text = action->text().toStdString();
            items.push_back(action->isEnabled() ? text : "(" + text + ")");
        }
        return items;
    }
    // As a person chooses: the menu opens, which updates its items, then the item is triggered.
    void Choose(int menu, int item) {
        Open(menu);
        Shown(menu).actions()[item]->trigger();
    }
    platform::MenuBar bar;  // outlives the windows that show it
    FormWnd* form = nullptr;
};

using Items = std::vector<std::string>;

TEST_F(MenuTest, AnItemIsEnabledOnlyWhileChoosingItWouldDoSomething) {
    QGuiApplication::clipboard()->setText(QStringLiteral("7"));
    EXPECT_EQ(Open(0), (Items{"(&Print)", "&Quit"}));  // nothing serves Print
    EXPECT_EQ(Open(2), Items{"(&About)"});             // no handler in this window
    form->_AddMenuHandler("AboutMenuItem", [] { return false; });
    EXPECT_EQ(Open(2), Items{"&About"});

    ASSERT_TRUE(Focus(form->m1fld()));
    EXPECT_EQ(Open(1), (Items{"(&Undo)", "(&Cut)", "(C&opy)", "&Paste"}));
    QTest::keyClicks(Focused(), "12");
    ASSERT_TRUE(Focus(form->m1fld()));
    EXPECT_EQ(Open(1), (Items{"&Undo", "&Cut", "C&opy", "&Paste"}));
    // Keys, and the items left enabled by the entry field triggered as a shortcut would trigger
    // them, leave the read-only field as it was: only Copy acts.
    ASSERT_TRUE(Focus(form->rfld()));
    QTest::keyClicks(Focused(), "9\b");
    for (QAction* item : Shown(1).actions()) {
        item->trigger();
    }
    EXPECT_EQ(form->rfld().Text(), "0.05");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("0.05"));
    EXPECT_EQ(Open(1), (Items{"(&Undo)", "(&Cut)", "C&opy", "(&Paste)"}));
    ASSERT_TRUE(Focus(form->HelpBtn()));
    EXPECT_EQ(Open(1), (Items{"(&Undo)", "(&Cut)", "(C&opy)", "(&Paste)"}));
}

// Each row is one menu: its captions, the one code hid (if any), and the titles Qt shows for the
// shown ones. The captions in the tree stay as they were written.
TEST_F(MenuTest, EachShownCaptionTakesTheFirstLetterNoEarlierOneInItsMenuTook) {
    constexpr std::size_t kAllShown = ~std::size_t{0};
    const struct {
        Items captions;
        std::size_t hidden;
        Items titles;
    } menus[] = {
        {{"Undo", "Cut", "Copy", "Paste"}, kAllShown, {"&Undo", "&Cut", "C&opy", "&Paste"}},
        {{"about", "About Korvane"}, kAllShown, {"&about", "A&bout Korvane"}},  // case aside
        {{"Ab", "Ba", "AB"}, kAllShown, {"&Ab", "&Ba", "AB"}},                  // none left for AB
        {{"Save & Quit", "Settings"}, kAllShown, {"&Save && Quit", "S&ettings"}},
        {{"-", "2 pages", "Print", "Page setup"}, 2, {"", "&2 pages", "&Page setup"}},
        {{"", "Edit"}, kAllShown, {"&Edit"}},  // a node without a caption is not shown
    };
    QMenuBar& qbar = *form->Widget()->findChild<QMenuBar*>();
    for (const auto& row : menus) {
        platform::MenuItem& menu = Add(bar, "Row");
        for (std::size_t i = 0; i < row.captions.size(); ++i) {
            Add(menu, row.captions[i]).Visible(i != row.hidden);
        }
        Items titles, captions;
        for (QAction* item : qbar.actions().back()->menu()->actions()) {
            if (item->isVisible()) {
                titles.push_back(item->text().toStdString());
            }
        }
        for (std::size_t i = 0; i < menu.Count(); ++i) {
            captions.push_back(menu.Item(i)->Value());
        }
        EXPECT_EQ(titles, row.titles);
        EXPECT_EQ(captions, row.captions);
    }
}

// A key pressed as a person presses it: to the window, whence Qt takes it to an open menu.
void Press(platform::Window& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window.Widget()->windowHandle(), key, modifiers);
}

// The title of the open menu, "" when none is open. Escape closes it; the bar, which keeps the
// keyboard after a menu opened by key, gives it back on a second one.
std::string CloseOpenMenu(platform::Window& window) {
    auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    for (int i = 0; i < 2 && (QApplication::activePopupWidget() != nullptr ||
                              qobject_cast<QMenuBar*>(QApplication::focusWidget()) != nullptr);
         ++i) {
        Press(window, Qt::Key_Escape);
    }
    return open != nullptr ? open->title().toStdString() : "";
}

TEST_F(MenuTest, F10OpensTheFirstShownMenuAndAltWithAnAccessKeyItsMenu) {
    ASSERT_TRUE(Focus(form->HelpBtn()));
    for (const auto& press : testing_support::kMenuPresses) {
        Press(*form, press.key, press.modifiers);
        EXPECT_EQ(CloseOpenMenu(*form), press.opens) << press.opens;
        EXPECT_EQ(Focused(), form->HelpBtn().Widget());
    }
    bar.Child("FileMenuItem")->Visible(false);
    Press(*form, Qt::Key_F10);
    EXPECT_EQ(CloseOpenMenu(*form), "&Edit");
    EXPECT_TRUE(form->windowKeys.empty());  // each key was the menus', none the window's
}

// A window that shows no bar, having none or a hidden one, gives F10 no meaning of its own: it is
// the window's KeyDown, as any function key is.
TEST_F(MenuTest, WhereNoBarIsShownF10IsTheWindowsKeyDown) {
    ASSERT_TRUE(Focus(form->HelpBtn()));
    platform::ApplyRecord(*form, PLATFORM_RECORD(Bool("MenuBarVisible", false)).view());
    Press(*form, Qt::Key_F10);
    EXPECT_EQ(CloseOpenMenu(*form), "");
    form->MenuBar(nullptr);
    Press(*form, Qt::Key_F10);
    EXPECT_EQ(CloseOpenMenu(*form), "");
    EXPECT_EQ(form->windowKeys, (Items{"", ""}));
}

TEST_F(MenuTest, ChoosingRunsTheActiveWindowsHandlerAndReportsItsFailure) {
    int runs = 0;
    form->_AddMenuHandler("AboutMenuItem", Counter(runs));
    form->_AddMenuHandler("PrintMenuItem",
                          []() -> bool { throw platform::NilObjectException("no printer"); });
    Choose(2, 0);
    Choose(0, 0);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(failures, std::vector<std::string>{"NilObjectException"});
}

TEST_F(MenuTest, CtrlQInAWindowWithoutABarChoosesQuitOnTheApplicationsBar) {
    platform::_RuntimeRegisterAppObject(std::make_unique<platform::Application>());
    platform::getAppObject()->MenuBar(&bar);
    platform::DestroyAllWindows();
    form = &Form();                                       // shown with no bar of its own
    QTimer::singleShot(3000, [] { platform::Quit(9); });  // in case Ctrl+Q does nothing
    QTimer::singleShot(0, [this] {
        ASSERT_TRUE(Focus(form->HelpBtn()));
        QTest::keyClick(Focused(), Qt::Key_Q, Qt::ControlModifier);
    });

    platform::_RuntimeRun();

    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(form->windowKeys.empty());
    platform::DestroyAppObject();
}

}  // namespace
