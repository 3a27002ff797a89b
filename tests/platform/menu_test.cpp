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
    bar->Child("EditMenu")->AddMenu(Item("EditCut", "Cut", "Cmd+X"));
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
    // As a person chooses: the menu opens, which updates its items, and the item is triggered
    // if it is enabled. Returns whether it was.
    bool Choose(const std::string& menu, const std::string& item) {
        for (QAction* top : Shown().actions()) {
            if (top->menu() != nullptr && top->text().toStdString() == menu) {
                emit top->menu()->aboutToShow();
            }
        }
        QAction* action = ShownItem(menu, item);
        if (action == nullptr || !action->isEnabled()) {
            return false;
        }
        action->trigger();
        return true;
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
    ASSERT_EQ(edit->actions().size(), 5);
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

    form->_AddMenuHandler("AboutMenuItem", [] { return false; });
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

    EXPECT_TRUE(Choose("Window", "About Korvane"));
    EXPECT_FALSE(Choose("File", "Print"));  // nothing serves it, so it cannot be chosen

    EXPECT_EQ(runs, 1);
    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(form->calcActions, 0);
}

TEST_F(MenuTest, AFailingMenuHandlerIsReported) {
    form->_AddMenuHandler("AboutMenuItem",
                          []() -> bool { throw platform::NilObjectException("no window"); });

    EXPECT_TRUE(Choose("Window", "About Korvane"));

    EXPECT_EQ(FirstFailureClass(), "NilObjectException");
}

TEST_F(MenuTest, TheQuitItemEndsTheRunWithStatus0) {
    QTimer::singleShot(0, [this] { EXPECT_TRUE(Choose("File", "Quit")); });

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

    EXPECT_TRUE(Choose("Edit", "Copy"));
    form->n1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->n1fld().Widget());
    EXPECT_TRUE(Choose("Edit", "Paste"));

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

// Which items a menu offers when it opens, with the focus where a person has it.
TEST_F(MenuTest, AnItemIsEnabledOnlyWhileChoosingItWouldDoSomething) {
    struct Case {
        const char* focus;  // "entry", "selected entry", "result" (read-only, selected), "button"
        bool undo, cut, copy, paste;
    };
    const Case cases[] = {
        {"entry", false, false, false, true},
        {"selected entry", true, true, true, true},
        {"result", false, false, true, false},
        {"button", false, false, false, false},
    };
    QGuiApplication::clipboard()->setText(QStringLiteral("7"));
    constexpr auto kReadOnly = PLATFORM_RECORD(Bool("ReadOnly", true));
    platform::ApplyRecord(form->rfld(), kReadOnly.view());
    for (const Case& c : cases) {
        const std::string focus = c.focus;
        form->m1fld().Text("");
        form->rfld().Text("0.05");
        platform::RectControl& target =
            focus == "result"
                ? static_cast<platform::RectControl&>(form->rfld())
                : (focus == "button" ? static_cast<platform::RectControl&>(form->HelpBtn())
                                     : form->m1fld());
        target.SetFocus();
        QTRY_COMPARE(QApplication::focusWidget(), target.Widget());
        if (focus == "selected entry") {
            QTest::keyClicks(QApplication::focusWidget(), "12");
            static_cast<QLineEdit*>(target.Widget())->selectAll();
        } else if (focus == "result") {
            static_cast<QLineEdit*>(target.Widget())->selectAll();
        }
        emit ShownMenu(2)->aboutToShow();
        EXPECT_EQ(ShownItem("Edit", "Undo")->isEnabled(), c.undo) << focus;
        EXPECT_EQ(ShownItem("Edit", "Cut")->isEnabled(), c.cut) << focus;
        EXPECT_EQ(ShownItem("Edit", "Copy")->isEnabled(), c.copy) << focus;
        EXPECT_EQ(ShownItem("Edit", "Paste")->isEnabled(), c.paste) << focus;
    }
    emit ShownMenu(1)->aboutToShow();
    EXPECT_FALSE(ShownItem("File", "Print")->isEnabled());  // nothing serves it
    EXPECT_TRUE(ShownItem("File", "Quit")->isEnabled());
    emit ShownMenu(3)->aboutToShow();
    EXPECT_FALSE(ShownItem("Window", "About Korvane")->isEnabled());  // no handler here
    form->_AddMenuHandler("AboutMenuItem", [] { return false; });
    emit ShownMenu(3)->aboutToShow();
    EXPECT_TRUE(ShownItem("Window", "About Korvane")->isEnabled());
}

TEST_F(MenuTest, EditCommandsNeverChangeAReadOnlyFieldButStillCopyIt) {
    constexpr auto kReadOnly = PLATFORM_RECORD(Bool("ReadOnly", true));
    platform::ApplyRecord(form->rfld(), kReadOnly.view());
    form->rfld().Text("0.05");
    QGuiApplication::clipboard()->setText(QStringLiteral("9"));

    // The items are enabled for an entry field that can do them all; then the focus goes to the
    // read-only field, and the items, stale now, are triggered as a shortcut would: the field
    // still refuses them.
    form->m1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->m1fld().Widget());
    QTest::keyClicks(QApplication::focusWidget(), "12");
    static_cast<QLineEdit*>(form->m1fld().Widget())->selectAll();
    emit ShownMenu(2)->aboutToShow();
    form->rfld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form->rfld().Widget());
    static_cast<QLineEdit*>(form->rfld().Widget())->selectAll();
    for (const char* item : {"Undo", "Cut", "Paste"}) {
        ASSERT_TRUE(ShownItem("Edit", item)->isEnabled()) << item;
        ShownItem("Edit", item)->trigger();
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form->rfld().Text(), "0.05");

    EXPECT_TRUE(Choose("Edit", "Copy"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("0.05"));
}

TEST_F(MenuTest, AnAppleMenuItemIsNotShownOnThisDesktop) {
    bar->_Lookup("AboutHalbrine")->Value("About Korvane");
    int shown = 0;
    for (QAction* action : ShownMenu(3)->actions()) {
        shown += action->isVisible() && action->text() == QStringLiteral("About Korvane");
    }
    EXPECT_EQ(shown, 1);
}

}  // namespace
