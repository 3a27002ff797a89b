// Menus: a tree built in code, as the program's menu bar is, shown in a window's QMenuBar and
// served by the active window's handlers.
#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "platform/qt/application.h"
#include "sample_windows.h"

namespace {

using namespace sample;
using platform::MenuItem;

template <class T = MenuItem>
std::unique_ptr<MenuItem> Item(const std::string& name, const std::string& caption,
                               const std::string& shortcut = "") {
    auto item = std::make_unique<T>();
    item->Constructor();
    item->Name(name);
    item->AutoEnabled(false);
    item->Value(caption);
    item->Visible(true);
    item->Shortcut(shortcut);
    return item;
}

// A bar like the program's: an untitled menu, File with Quit, Edit, Window with the about item.
std::unique_ptr<platform::MenuBar> BuildBar() {
    auto bar = std::make_unique<platform::MenuBar>();
    bar->AddMenu(Item("UntitledMenu3", ""));
    bar->AddMenu(Item("FileMenu", "File"));
    bar->Child("FileMenu")->AddMenu(Item("FilePrint", "Print"));
    bar->Child("FileMenu")->AddMenu(Item<platform::QuitMenuItem>("FileQuit", "Quit", "Cmd+Q"));
    bar->AddMenu(Item("EditMenu", "Edit"));
    bar->Child("EditMenu")->AddMenu(Item("EditUndo", "Undo", "Cmd+Z"));
    bar->Child("EditMenu")->AddMenu(Item("EditLine", "-"));
    bar->Child("EditMenu")->AddMenu(Item("EditCopy", "Copy", "Cmd+C"));
    bar->Child("EditMenu")->AddMenu(Item("EditPaste", "Paste", "Cmd+V"));
    bar->AddMenu(Item("WindowMenu", "Window"));
    bar->Child("WindowMenu")->AddMenu(Item("AboutMenuItem", "About Korvane"));
    bar->Child("WindowMenu")->AddMenu(Item<platform::AppleMenuItem>("AboutHalbrine", ""));
    return bar;
}

class MenuTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        bar = BuildBar();
        form = &FormWnd::Instance();
        form->MenuBar(bar.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    }
    void TearDown() override {
        PlatformTest::TearDown();  // the windows go before the bar they show
        bar.reset();
    }

    QMenuBar& Shown() { return *static_cast<QMainWindow*>(form->Widget())->menuBar(); }
    QMenu* ShownMenu(int index) { return Shown().actions().at(index)->menu(); }
    QAction* ShownItem(const std::string& menu, const std::string& item) {
        for (QAction* top : Shown().actions()) {
            if (top->menu() != nullptr && top->text().toStdString() == menu) {
                for (QAction* action : top->menu()->actions()) {
                    if (action->text().toStdString() == item) {
                        return action;
                    }
                }
            }
        }
        return nullptr;
    }

    std::unique_ptr<platform::MenuBar> bar;
    FormWnd* form = nullptr;
};

TEST_F(MenuTest, TheBarShowsItsMenusInOrderWithCaptionsAndCtrlShortcuts) {
    QStringList titles;
    for (QAction* top : Shown().actions()) {
        titles << top->text();
    }
    EXPECT_EQ(titles, (QStringList{"", "File", "Edit", "Window"}));
    EXPECT_FALSE(Shown().actions().at(0)->isVisible());  // no caption, nothing to choose
    EXPECT_TRUE(Shown().actions().at(1)->isVisible());

    QMenu* edit = ShownMenu(2);
    ASSERT_NE(edit, nullptr);
    ASSERT_EQ(edit->actions().size(), 4);
    EXPECT_EQ(edit->actions().at(0)->text(), QStringLiteral("Undo"));
    EXPECT_TRUE(edit->actions().at(1)->isSeparator());
    EXPECT_EQ(ShownItem("File", "Quit")->shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
    EXPECT_EQ(ShownItem("File", "Quit")->shortcut().toString(QKeySequence::NativeText),
              QStringLiteral("Ctrl+Q"));
    EXPECT_TRUE(ShownItem("File", "Print")->shortcut().isEmpty());
}

TEST_F(MenuTest, ItemsAreFoundByNameAtAnyDepthAndTheirWritesReachTheShownItemsAtOnce) {
    EXPECT_EQ(bar->Count(), 4u);
    EXPECT_EQ(bar->Child("FileQuit"), nullptr);
    ASSERT_NE(bar->_Lookup("FileQuit"), nullptr);
    EXPECT_EQ(bar->_Lookup("FileQuit")->Parent(), bar->Child("FileMenu"));
    EXPECT_NE(dynamic_cast<platform::QuitMenuItem*>(bar->_Lookup("FileQuit")), nullptr);
    EXPECT_EQ(bar->_Lookup("Nothing"), nullptr);

    QAction* about = ShownItem("Window", "About Korvane");
    ASSERT_NE(about, nullptr);
    MenuItem& item = *bar->_Lookup("AboutMenuItem");
    item.Enabled(false);
    EXPECT_FALSE(about->isEnabled());
    item.Enabled(true);
    EXPECT_TRUE(about->isEnabled());
    item.Visible(false);
    EXPECT_FALSE(about->isVisible());
    item.Value("About");
    EXPECT_EQ(about->text(), QStringLiteral("About"));
}

TEST_F(MenuTest, ChoosingAnItemRunsTheActiveWindowsHandlerAndOneWithoutDoesNothing) {
    int runs = 0;
    form->_AddMenuHandler("AboutMenuItem", [&runs] {
        ++runs;
        return false;
    });

    ShownItem("Window", "About Korvane")->trigger();

    ShownItem("File", "Print")->trigger();  // an item without a handler does nothing

    EXPECT_EQ(runs, 1);
    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(form->calcActions, 0);
}

TEST_F(MenuTest, AFailingMenuHandlerIsReported) {
    form->_AddMenuHandler("AboutMenuItem",
                          []() -> bool { throw platform::NilObjectException("no window"); });

    ShownItem("Window", "About Korvane")->trigger();

    EXPECT_EQ(FirstFailureClass(), "NilObjectException");
}

TEST_F(MenuTest, TheQuitItemEndsTheRunWithStatus0) {
    QTimer::singleShot(0, [this] { ShownItem("File", "Quit")->trigger(); });

    platform::_RuntimeRun();

    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(failures.empty());
}

TEST_F(MenuTest, CtrlQOutsideATextFieldChoosesQuit) {
    form->HelpBtn().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->HelpBtn().Widget());
    QTimer::singleShot(
        0, [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Q, Qt::ControlModifier); });

    platform::_RuntimeRun();

    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(form->windowKeys.empty());
}

TEST_F(MenuTest, EditItemsWithoutHandlerWorkOnTheFocusedField) {
    form->m1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->m1fld().Widget());
    form->m1fld().Text("42");
    static_cast<QLineEdit*>(form->m1fld().Widget())->selectAll();

    ShownItem("Edit", "Copy")->trigger();
    form->n1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->n1fld().Widget());
    ShownItem("Edit", "Paste")->trigger();

    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("42"));
    EXPECT_EQ(form->n1fld().Text(), "42");
}

TEST_F(MenuTest, AMenuAboutToShowAsksTheActiveWindowToUpdateItsItems) {
    const int before = form->menuUpdates;

    emit ShownMenu(1)->aboutToShow();

    EXPECT_EQ(form->menuUpdates, before + 1);
}

TEST_F(MenuTest, AMenuAddedLaterAppearsAndAnItemGivenItemsBecomesASubmenu) {
    bar->AddMenu(Item("HelpMenu", "Help"));
    bar->Child("HelpMenu")->AddMenu(Item("HelpIndex", "Index"));
    bar->_Lookup("FilePrint")->AddMenu(Item("PrintSetup", "Setup"));

    ASSERT_EQ(Shown().actions().size(), 5);
    EXPECT_EQ(Shown().actions().at(4)->text(), QStringLiteral("Help"));
    EXPECT_NE(ShownItem("Help", "Index"), nullptr);
    QAction* print = ShownItem("File", "Print");
    ASSERT_NE(print, nullptr);
    ASSERT_NE(print->menu(), nullptr);
    EXPECT_EQ(print->menu()->actions().at(0)->text(), QStringLiteral("Setup"));
}

TEST_F(MenuTest, CtrlCAndCtrlVInAFieldAreTheFieldsOwnEvenWithEditItemsOnTheBar) {
    int menuCopies = 0;
    form->_AddMenuHandler("EditCopy", [&menuCopies] {
        ++menuCopies;
        return true;
    });
    form->m1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->m1fld().Widget());
    form->m1fld().Text("3.25");

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);

    EXPECT_EQ(menuCopies, 0);
    EXPECT_EQ(form->m1fld().Text(), "3.253.25");
    EXPECT_EQ(form->keys, std::vector<std::string>{"\x04"});  // End alone reached the filter
}

TEST_F(MenuTest, AWindowWithoutABarAnswersTheShortcutsOfTheApplicationsBar) {
    platform::_RuntimeRegisterAppObject(std::make_unique<platform::Application>());
    platform::getAppObject()->MenuBar(bar.get());
    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);
    ASSERT_TRUE(QTest::qWaitForWindowActive(plain.Widget()));
    QTimer::singleShot(
        0, [&plain] { QTest::keyClick(plain.Widget(), Qt::Key_Q, Qt::ControlModifier); });

    platform::_RuntimeRun();

    EXPECT_EQ(platform::RuntimeExit(), 0);
    platform::DestroyAppObject();
}

}  // namespace
