// The window's own events: activation, closing, the menu items it updates and serves, the hover
// over the title, the "?" button and the frame of the test choice.
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <string>
#include <vector>

#include "tests/windows/ui_test_support.h"
#include "windows/menu.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

class EventsTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        form = &Form();
    }

    // Brings another window to the front and then the form again, as a user switching does.
    void LeaveAndComeBack() {
        Qwindow::Instance().Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Qwindow::Instance().Widget()));
        form->Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    }

    static int VisibleWindowsTitled(const QString& title) {
        int count = 0;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            count += (top->isVisible() && top->windowTitle() == title) ? 1 : 0;
        }
        return count;
    }

    ControlWnd* form = nullptr;
};

TEST_F(EventsTest, ComingBackToTheWindowForgetsTheTestButKeepsTheForm) {
    Click(form->IBtn());
    Type(form->m1fld(), "10");
    ASSERT_EQ(Globals::btn, 1);

    LeaveAndComeBack();

    EXPECT_EQ(Globals::btn, 0);
    EXPECT_TRUE(form->IBtn().Value());
    EXPECT_TRUE(form->m1fld().Widget()->isVisible());
    EXPECT_EQ(form->m1fld().Text(), "10");
    Click(form->CalcBtn());
    EXPECT_EQ(messages,
              std::vector<std::string>{
                  "Select Independent or Related t-test and then enter appropriate data"});
}

TEST_F(EventsTest, ActivationHidesTheAboutWindowButNotTheInformationWindow) {
    AboutWnd::Instance().Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(AboutWnd::Instance().Widget()));
    LeaveAndComeBack();
    EXPECT_FALSE(AboutWnd::Instance().Visible());
    EXPECT_TRUE(Qwindow::Instance().Visible());
}

TEST_F(EventsTest, ClosingTheWindowEndsTheRunWithStatusZero) {
    form->Close();
    // A run that was asked to quit returns at once; otherwise the guard ends it with 7.
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [] { QCoreApplication::exit(7); });
    guard.start(3000);
    platform::_RuntimeRun();
    EXPECT_TRUE(guard.isActive()) << "the run did not end";
    EXPECT_EQ(platform::RuntimeExit(), 0);
}

TEST_F(EventsTest, EveryActivationDisablesControlAndEnablesTheAboutItems) {
    EXPECT_FALSE(form->ControlMenuItem().Enabled());
    EXPECT_TRUE(form->AboutMenuItem().Enabled());
    EXPECT_TRUE(form->AboutHalbrine().Enabled());

    form->ControlMenuItem().Enabled(true);
    form->AboutMenuItem().Enabled(false);
    form->AboutHalbrine().Enabled(false);
    LeaveAndComeBack();
    EXPECT_FALSE(form->ControlMenuItem().Enabled());
    EXPECT_TRUE(form->AboutMenuItem().Enabled());
    EXPECT_TRUE(form->AboutHalbrine().Enabled());
}

TEST_F(EventsTest, HoveringOverTheTitleShowsTheAttributionAndLeavingHidesIt) {
    QWindow* window = Handle(form->HalbrineTitle());
    // From an empty corner that no other test clicks: Qt drops a move to where the pointer is.
    MoveMouseTo(window, QPoint(window->width() - 3, window->height() - 3));
    platform::recorder::Start();
    MoveMouseTo(window, CentreInWindow(form->HalbrineTitle()));
    EXPECT_TRUE(form->copyright().Widget()->isVisible());
    // The attribution overlaps the title's last three rows; the pointer there is still over the
    // title (a label that took the pointer would hide itself at once).
    for (int row : {70, 71, 72}) {
        MoveMouseTo(window,
                    form->HalbrineTitle().Widget()->mapTo(form->Widget(), QPoint(240, row)));
        EXPECT_TRUE(form->copyright().Widget()->isVisible()) << "row " << row;
    }
    MoveMouseTo(window, CentreInWindow(form->typeBox()));
    EXPECT_FALSE(form->copyright().Widget()->isVisible());
    EXPECT_EQ(Log(), (std::vector<std::string>{"copyright.Visible=1", "copyright.Visible=0"}));
}

TEST_F(EventsTest, TheQuestionMarkOpensTheOneInformationWindowOnThePressAlsoAfterItWasClosed) {
    PressMouse(form->PushButton1());
    EXPECT_TRUE(Qwindow::Instance().Visible()) << "up before the button is released";
    ReleaseMouse(form->PushButton1());
    Qwindow* first = &Qwindow::Instance();

    form->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    Click(form->PushButton1());
    EXPECT_EQ(&Qwindow::Instance(), first);
    EXPECT_EQ(VisibleWindowsTitled("t-test Information"), 1);

    first->Close();  // closed, it is only hidden and comes back on the next press
    EXPECT_FALSE(first->Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(Qwindow::kClassName), first);
    form->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    Click(form->PushButton1());
    EXPECT_EQ(&Qwindow::Instance(), first);
    EXPECT_TRUE(first->Visible());
    EXPECT_EQ(VisibleWindowsTitled("t-test Information"), 1);
    EXPECT_EQ(platform::RuntimeExit(), 0);
}

TEST_F(EventsTest, APressOnTheFrameOfTheTestChoiceChangesNothing) {
    // Inside typeBox, right of both radio buttons.
    const QWidget* box = form->typeBox().Widget();
    const QPoint inFrame = box->mapTo(box->window(), QPoint(box->width() - 6, box->height() / 2));
    Click(form->IBtn());
    platform::recorder::Start();
    QTest::mouseClick(Handle(form->typeBox()), Qt::LeftButton, {}, inFrame);
    EXPECT_TRUE(Log().empty());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_TRUE(form->IBtn().Value());
}

}  // namespace
}  // namespace korvane::testing
