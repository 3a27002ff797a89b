// The window's own events: its construction, activation, closing, the hover over the title and
// the presses on "?" and on the frame of the test choice.
#include <QTimer>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/qt/fault_injection.h"
#include "stats/messages.h"
#include "tests/windows/ui_test_support.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

// Runs `action` with its first, second, ... platform operation failing until it runs through,
// with `prepare` before each run and `look` after it. What a failed run leaves behind shows how
// far it got, so the looks in turn show the order of the action's steps.
void AtEveryFailingStep(const std::function<void()>& prepare, const std::function<void()>& action,
                        const std::function<void()>& look) {
    for (std::uint64_t n = 1;; ++n) {
        prepare();
        bool failed = false;
        platform::InjectFaultAtCall(n);
        try {
            action();
        } catch (const platform::InjectedFault&) {
            failed = true;
        }
        platform::InjectFaultAtCall(0);
        look();
        if (!failed)
            return;
    }
}

// The events wired to a control, in the order `look` lists them.
std::vector<std::string> WiredEvents(const platform::Control& control) {
    std::vector<std::pair<const char*, bool>> events;
    if (auto* field = dynamic_cast<const platform::TextField*>(&control)) {
        events = {{"KeyDown", bool(field->KeyDown)}};
    } else if (auto* canvas = dynamic_cast<const platform::Canvas*>(&control)) {
        events = {{"MouseEnter", bool(canvas->MouseEnter)}, {"MouseExit", bool(canvas->MouseExit)}};
    } else if (auto* button = dynamic_cast<const platform::PushButton*>(&control)) {
        events = {{"Action", bool(button->Action)}, {"MouseDown", bool(button->MouseDown)}};
    } else if (auto* radio = dynamic_cast<const platform::RadioButton*>(&control)) {
        events = {{"Action", bool(radio->Action)}, {"MouseDown", bool(radio->MouseDown)}};
    } else if (auto* box = dynamic_cast<const platform::GroupBox*>(&control)) {
        events = {{"MouseDown", bool(box->MouseDown)}};
    }
    std::vector<std::string> wired;
    for (const auto& [event, set] : events) {
        if (set)
            wired.push_back(control.Name() + "." + event);
    }
    return wired;
}

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

    ControlWnd* form = nullptr;
};

TEST_F(EventsTest, EachControlIsCreatedAndWiredBeforeTheNext) {
    std::vector<std::string> steps;
    std::set<std::string> seen;
    auto note = [&](const std::string& step) {
        if (seen.insert(step).second)
            steps.push_back(step);
    };
    AtEveryFailingStep(
        [] { platform::DestroyAllWindows(); }, [] { ControlWnd::Instance(); },
        [&] {
            auto& built = platform::NotNil(platform::_GetImplicitWindow(ControlWnd::kClassName));
            for (std::size_t i = 0; i < built.ControlCount(); ++i) {
                note(built.ControlAt(i)->Name());
                for (const std::string& event : WiredEvents(*built.ControlAt(i)))
                    note(event);
            }
        });
    std::string order;
    for (const std::string& step : steps)
        order += (order.empty() ? "" : " ") + step;
    EXPECT_EQ(order,
              "n2text rfld GroupBox2 m2fld m2fld.KeyDown sd2fld sd2fld.KeyDown n2fld StaticText3 "
              "StaticText4 Sep2 rtext GroupBox1 m1fld m1fld.KeyDown sd1fld sd1fld.KeyDown n1fld "
              "StaticText1 StaticText2 StaticText7 Sep1 HalbrineTitle HalbrineTitle.MouseExit "
              "HalbrineTitle.MouseEnter CalcBtn CalcBtn.Action ClearBtn ClearBtn.Action copyright "
              "tfld pfld dtail IBtn IBtn.Action RBtn RBtn.Action typeBox typeBox.MouseDown ttext "
              "dfFld dfText StaticText5 PushButton1 PushButton1.MouseDown");
}

// The about window goes before the chosen test is forgotten: a failure in between leaves both.
TEST_F(EventsTest, ActivationHidesTheAboutWindowAndThenForgetsTheChosenTest) {
    AboutWnd& about = AboutWnd::Instance();
    std::vector<std::string> states;
    AtEveryFailingStep(
        [&] {
            about.Show();
            Globals::btn = 1;
        },
        [&] { form->Event_Activate(); },
        [&] {
            states.push_back(std::string(about.Visible() ? "about shown" : "about hidden") +
                             (Globals::btn == 1 ? ", test kept" : ", test forgotten"));
        });
    EXPECT_EQ(states,
              (std::vector<std::string>{"about shown, test kept", "about hidden, test forgotten"}));
}

TEST_F(EventsTest, ComingBackForgetsTheTestButKeepsTheFormAndUpdatesTheMenu) {
    Click(form->IBtn());
    Type(form->m1fld(), "10");
    form->ControlMenuItem().Enabled(true);
    form->AboutMenuItem().Enabled(false);
    form->AboutHalbrine().Enabled(false);
    AboutWnd::Instance().Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(AboutWnd::Instance().Widget()));

    LeaveAndComeBack();

    EXPECT_EQ(Globals::btn, 0);
    EXPECT_TRUE(form->IBtn().Value());
    EXPECT_EQ(form->m1fld().Text(), "10");
    EXPECT_FALSE(AboutWnd::Instance().Visible());
    EXPECT_TRUE(Qwindow::Instance().Visible());
    EXPECT_FALSE(form->ControlMenuItem().Enabled());
    EXPECT_TRUE(form->AboutMenuItem().Enabled() && form->AboutHalbrine().Enabled());
    Click(form->CalcBtn());
    EXPECT_EQ(messages, std::vector<std::string>{messages::kChooseTest});
}

TEST_F(EventsTest, ClosingTheWindowEndsTheRunWithStatusZero) {
    form->Close();
    QTimer guard;  // ends a run that was not asked to quit, with 7
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [] { QCoreApplication::exit(7); });
    guard.start(3000);
    platform::_RuntimeRun();
    EXPECT_TRUE(guard.isActive()) << "the run did not end";
    EXPECT_EQ(platform::RuntimeExit(), 0);
}

// The attribution overlaps the title's last rows; the pointer there is still over the title.
TEST_F(EventsTest, HoveringOverTheTitleShowsTheAttributionAndLeavingHidesIt) {
    QWindow* window = Handle(form->HalbrineTitle());
    MoveMouseTo(window, QPoint(window->width() - 3, window->height() - 3));  // an empty corner
    platform::recorder::Start();
    for (int row : {36, 70, 72}) {
        MoveMouseTo(window,
                    form->HalbrineTitle().Widget()->mapTo(form->Widget(), QPoint(240, row)));
        EXPECT_TRUE(form->copyright().Widget()->isVisible()) << "row " << row;
    }
    MoveMouseTo(window, CentreInWindow(form->typeBox()));
    EXPECT_FALSE(form->copyright().Widget()->isVisible());
    EXPECT_EQ(Log(), (std::vector<std::string>{"copyright.Visible=1", "copyright.Visible=0"}));
}

// "?" opens the information window on the press and lets the press go on to the button.
TEST_F(EventsTest, TheQuestionMarkOpensTheOneInformationWindowOnThePress) {
    PressMouse(form->PushButton1());
    EXPECT_TRUE(Qwindow::Instance().Visible()) << "up before the button is released";
    EXPECT_TRUE(form->PushButton1().Widget()->property("down").toBool());
    ReleaseMouse(form->PushButton1());
    Qwindow* first = &Qwindow::Instance();
    first->Close();  // closed, it is only hidden and comes back on the next press
    EXPECT_FALSE(first->Visible());
    EXPECT_FALSE(form->PushButton1().MouseDown(form->PushButton1(), 5, 5));
    EXPECT_EQ(&Qwindow::Instance(), first);
    EXPECT_TRUE(first->Visible());
}

TEST_F(EventsTest, APressOnTheFrameOfTheTestChoiceChangesNothingAndGoesOn) {
    const QWidget* box = form->typeBox().Widget();
    const QPoint inFrame = box->mapTo(box->window(), QPoint(box->width() - 6, box->height() / 2));
    Click(form->IBtn());
    platform::recorder::Start();
    QTest::mouseClick(Handle(form->typeBox()), Qt::LeftButton, {}, inFrame);
    EXPECT_TRUE(Log().empty());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_TRUE(form->IBtn().Value());
    EXPECT_FALSE(form->typeBox().MouseDown(form->typeBox(), 5, 5));
}

}  // namespace
}  // namespace korvane::testing
