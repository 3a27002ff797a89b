// Menus: a tree built in code, as the program's bar is, shown in a window's QMenuBar, served by
// the active window's handlers and, for the Edit items, by the focused field.
#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "platform/qt/application.h"
#include "platform/qt/menu.h"
#include "sample_windows.h"

namespace {

using namespace sample;

template <class T = platform::MenuItem>
std::unique_ptr<platform::MenuItem> Item(const std::string& name, const std::string& caption,
                                         const std::string& shortcut = "") {
    auto item = std::make_unique<T>();
    item->Constructor();
    item->Name(name);
    item->Value(caption);
    item->Visible(true);
    item->Shortcut(shortcut);
    return item;
}

class MenuTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        bar.AddMenu(Item("FileMenu", "File"));
        bar.Child("FileMenu")->AddMenu(Item("FilePrint", "Print"));
        bar.Child("FileMenu")->AddMenu(Item<platform::QuitMenuItem>("FileQuit", "Quit", "Cmd+Q"));
        bar.AddMenu(Item("EditMenu", "Edit"));
        for (const auto& [caption, keys] : {std::pair{"Undo", "Cmd+Z"},
                                            {"Cut", "Cmd+X"},
                                            {"Copy", "Cmd+C"},
                                            {"Paste", "Cmd+V"}}) {
            bar.Child("EditMenu")->AddMenu(Item(std::string("Edit") + caption, caption, keys));
        }
        bar.AddMenu(Item("WindowMenu", "Window"));
        bar.Child("WindowMenu")->AddMenu(Item("AboutMenuItem", "About"));
        form = &FormWnd::Instance();
        form->MenuBar(&bar);
        ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
        form->rfld().Text("0.05");
        platform::ApplyRecord(form->rfld(), PLATFORM_RECORD(Bool("ReadOnly", true)).view());
    }

    QMenu& Shown(int menu) {
        return *static_cast<QMainWindow*>(form->Widget())->menuBar()->actions()[menu]->menu();
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
    // Focuses `field`, with all its text selected when `select`.
    void Focus(platform::TextField& field, bool select) {
        ASSERT_TRUE(sample::Focus(field));
        if (select) {
            static_cast<QLineEdit*>(field.Widget())->selectAll();
        }
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

    Focus(form->m1fld(), false);
    EXPECT_EQ(Open(1), (Items{"(Undo)", "(Cut)", "(Copy)", "Paste"}));
    QTest::keyClicks(QApplication::focusWidget(), "12");
    Focus(form->m1fld(), true);
    EXPECT_EQ(Open(1), (Items{"Undo", "Cut", "Copy", "Paste"}));
    Focus(form->rfld(), true);  // read-only
    EXPECT_EQ(Open(1), (Items{"(Undo)", "(Cut)", "Copy", "(Paste)"}));
    ASSERT_TRUE(sample::Focus(form->HelpBtn()));
    EXPECT_EQ(Open(1), (Items{"(Undo)", "(Cut)", "(Copy)", "(Paste)"}));
}

TEST_F(MenuTest, EditItemsLeftEnabledByAnEarlierFocusNeverChangeAReadOnlyField) {
    QGuiApplication::clipboard()->setText(QStringLiteral("9"));
    Focus(form->m1fld(), false);
    QTest::keyClicks(QApplication::focusWidget(), "12");
    Focus(form->m1fld(), true);
    ASSERT_EQ(Open(1), (Items{"Undo", "Cut", "Copy", "Paste"}));
    Focus(form->rfld(), true);

    for (QAction* item : Shown(1).actions()) {
        item->trigger();  // as a shortcut would, without opening the menu again
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);

    EXPECT_EQ(form->rfld().Text(), "0.05");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("0.05"));  // Copy worked
}

TEST_F(MenuTest, ChoosingRunsTheActiveWindowsHandlerOrTheFieldsEditAndReportsAFailure) {
    Focus(form->m1fld(), false);
    form->m1fld().Text("42");
    Focus(form->m1fld(), true);
    Choose(1, 2);  // Copy
    Focus(form->Get("n1fld"), false);
    Choose(1, 3);  // Paste
    EXPECT_EQ(form->Get("n1fld").Text(), "42");

    int runs = 0;
    form->_AddMenuHandler("AboutMenuItem", [&runs] {
        ++runs;
        return true;
    });
    form->_AddMenuHandler("EditPaste", []() -> bool { throw platform::NilObjectException("x"); });
    Choose(2, 0);
    Choose(1, 3);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(form->Get("n1fld").Text(), "42");  // the handler ran instead of the field's edit
    EXPECT_EQ(FailureClasses(), std::vector<std::string>{"NilObjectException"});
}

TEST_F(MenuTest, CtrlQInAWindowWithoutABarChoosesQuitOnTheApplicationsBar) {
    platform::_RuntimeRegisterAppObject(std::make_unique<platform::Application>());
    platform::getAppObject()->MenuBar(&bar);
    platform::DestroyAllWindows();
    form = &Form();                                       // shown with no bar of its own
    QTimer::singleShot(3000, [] { platform::Quit(9); });  // in case Ctrl+Q does nothing
    QTimer::singleShot(0, [this] {
        ASSERT_TRUE(sample::Focus(form->HelpBtn()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Q, Qt::ControlModifier);
    });

    platform::_RuntimeRun();

    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(form->windowKeys.empty());
    platform::DestroyAppObject();
}

}  // namespace
