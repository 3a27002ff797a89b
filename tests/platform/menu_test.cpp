// Menus: a tree built in code, as the program's bar is, shown in a window's QMenuBar, served by
// the active window's handlers and, for the Edit items, by the focused field.
#include <QAction>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "platform/qt/application.h"
#include "platform/qt/menu.h"
#include "sample_windows.h"

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
    EXPECT_EQ(Open(0), (Items{"(Print)", "Quit"}));  // nothing serves Print
    EXPECT_EQ(Open(2), Items{"(About)"});            // no handler in this window
    form->_AddMenuHandler("AboutMenuItem", [] { return false; });
    EXPECT_EQ(Open(2), Items{"About"});

    ASSERT_TRUE(Focus(form->m1fld()));
    EXPECT_EQ(Open(1), (Items{"(Undo)", "(Cut)", "(Copy)", "Paste"}));
    QTest::keyClicks(Focused(), "12");
    ASSERT_TRUE(Focus(form->m1fld()));
    EXPECT_EQ(Open(1), (Items{"Undo", "Cut", "Copy", "Paste"}));
    // Keys, and the items left enabled by the entry field triggered as a shortcut would trigger
    // them, leave the read-only field as it was: only Copy acts.
    ASSERT_TRUE(Focus(form->rfld()));
    QTest::keyClicks(Focused(), "9\b");
    for (QAction* item : Shown(1).actions()) {
        item->trigger();
    }
    EXPECT_EQ(form->rfld().Text(), "0.05");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("0.05"));
    EXPECT_EQ(Open(1), (Items{"(Undo)", "(Cut)", "Copy", "(Paste)"}));
    ASSERT_TRUE(Focus(form->HelpBtn()));
    EXPECT_EQ(Open(1), (Items{"(Undo)", "(Cut)", "(Copy)", "(Paste)"}));
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
