// The window's own events: its construction, activation, closing, the hover over the title and
// the presses on "?" and on the frame of the test choice.
#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/qt/buttons.h"
#include "platform/qt/canvas.h"
#include "platform/qt/fault_injection.h"
#include "platform/qt/frames.h"
#include "platform/qt/text_controls.h"
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

// The events wired to a control so far, as "m1fld.KeyDown".
std::vector<std::string> WiredEvents(const platform::Control& control) {
    std::vector<std::string> wired;
    const auto note = [&]<class C, class Slot>(const char* event, Slot C::*slot) {
        if (auto* typed = dynamic_cast<const C*>(&control); typed && typed->*slot)
            wired.push_back(control.Name() + "." + event);
    };
    note("KeyDown", &platform::TextField::KeyDown);
    note("MouseEnter", &platform::Canvas::MouseEnter);
    note("MouseExit", &platform::Canvas::MouseExit);
    note("Action", &platform::PushButton::Action);
    note("MouseDown", &platform::PushButton::MouseDown);
    note("Action", &platform::RadioButton::Action);
    note("MouseDown", &platform::GroupBox::MouseDown);
    return wired;
}

using EventsTest = FormFixture;

// Where two lists of steps part: the first step that differs, or nothing when none does.
std::string FirstDifference(const std::vector<std::string>& actual,
                            const std::vector<std::string>& expected) {
    const auto [got, want] = std::ranges::mismatch(actual, expected);
    if (got == actual.end() && want == expected.end())
        return "";
    return "step " + std::to_string(got - actual.begin() + 1) + " is " +
           (got == actual.end() ? "missing" : *got) + ", not " +
           (want == expected.end() ? "expected at all" : *want);
}

TEST_F(EventsTest, EachControlIsCreatedAndWiredBeforeTheNext) {
    std::vector<std::string> order;
    std::set<std::string> seen;
    auto note = [&](const std::string& step) {
        if (seen.insert(step).second)
            order.push_back(step);
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
    // clang-format off
    const std::vector<std::string> expected{
        "n2text", "rfld", "GroupBox2", "m2fld", "m2fld.KeyDown", "sd2fld", "sd2fld.KeyDown",
        "n2fld", "StaticText3", "StaticText4", "Sep2", "rtext", "GroupBox1", "m1fld",
        "m1fld.KeyDown", "sd1fld", "sd1fld.KeyDown", "n1fld", "StaticText1", "StaticText2",
        "StaticText7", "Sep1", "HalbrineTitle", "HalbrineTitle.MouseExit",
        "HalbrineTitle.MouseEnter", "CalcBtn", "CalcBtn.Action", "ClearBtn", "ClearBtn.Action",
        "copyright", "tfld", "pfld", "dtail", "IBtn", "IBtn.Action", "RBtn", "RBtn.Action",
        "typeBox", "typeBox.MouseDown", "ttext", "dfFld", "dfText", "StaticText5", "PushButton1",
        "PushButton1.MouseDown"};
    // clang-format on
    EXPECT_EQ(FirstDifference(order, expected), "");
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

// The about window called up from the menu goes when the user comes back to the form. The form's
// Activate hides it while Qt is still switching the focus away from it, and Qt reaches its
// native window once more after that: the window gives it back only afterwards.
TEST_F(EventsTest, TheAboutWindowFromTheMenuGoesWhenTheFormComesBackAndOutlivesTheSwitch) {
    AboutWnd& about = AboutWnd::Instance();
    ASSERT_FALSE(form->RunMenuHandler("AboutMenuItem"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(about.Widget()));
    const QPointer<QWindow> aboutNative = about.Widget()->windowHandle();
    bool nativeAtSwitch = false;
    QObject watch;
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &watch,
                     [&] { nativeAtSwitch = !aboutNative.isNull(); });
    Click(form->IBtn());

    form->Widget()->activateWindow();  // a click on the form, as the window manager passes it on

    ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    EXPECT_TRUE(nativeAtSwitch);
    EXPECT_FALSE(about.Visible());
    EXPECT_EQ(Globals::btn, 0);
    QTRY_VERIFY(aboutNative.isNull());  // and then given back
}

TEST_F(EventsTest, ComingBackForgetsTheTestButKeepsTheFormAndUpdatesTheMenu) {
    Click(form->IBtn());
    form->ControlMenuItem().Enabled(true);
    form->AboutMenuItem().Enabled(false);
    Qwindow::Instance().Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Qwindow::Instance().Widget()));
    form->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    EXPECT_EQ(Globals::btn, 0);
    EXPECT_TRUE(form->IBtn().Value() && form->m1fld().Widget()->isVisible());
    EXPECT_TRUE(Qwindow::Instance().Visible());
    EXPECT_FALSE(form->ControlMenuItem().Enabled());
    EXPECT_TRUE(form->AboutMenuItem().Enabled() && form->AboutHalbrine().Enabled());
}

TEST_F(EventsTest, ClosingTheWindowEndsTheRunWithStatusZero) {
    form->Close();
    QObject guard;  // ends a run that was not asked to quit, with status 7
    QTimer::singleShot(3000, &guard, [] { platform::Quit(7); });
    platform::_RuntimeRun();
    EXPECT_EQ(platform::RuntimeExit(), 0);
}

TEST_F(EventsTest, HoveringOverTheTitleShowsTheAttributionAndLeavingHidesIt) {
    QWindow* window = Handle(form->HalbrineTitle());
    QTest::mouseMove(window, QPoint(window->width() - 3, window->height() - 3));  // an empty corner
    platform::recorder::Start();
    // The attribution overlaps the title's last rows; the pointer there is still over the title.
    QTest::mouseMove(window,
                     form->HalbrineTitle().Widget()->mapTo(form->Widget(), QPoint(240, 72)));
    EXPECT_TRUE(form->copyright().Widget()->isVisible());
    QTest::mouseMove(window, CentreInWindow(form->typeBox()));
    EXPECT_EQ(Log(), (std::vector<std::string>{"copyright.Visible=1", "copyright.Visible=0"}));
}

// When a menu or a message box closes, Qt makes up an Enter for the widget it takes to be under the
// pointer and may send no Leave after it. The window's own pointer events decide instead.
TEST_F(EventsTest, TheAttributionFollowsTheWindowsPointerEventsNotAnEnterQtMakesUp) {
    QWindow* window = Handle(form->HalbrineTitle());
    QWidget* title = form->HalbrineTitle().Widget();
    const auto copyrightShown = [this] { return form->copyright().Widget()->isVisible(); };
    QTest::mouseMove(window, CentreInWindow(form->typeBox()));
    QEnterEvent madeUp(QPointF(20, 20), QPointF(20, 20), title->mapToGlobal(QPointF(20, 20)));
    QApplication::sendEvent(title, &madeUp);
    QTest::mouseMove(window, CentreInWindow(form->CalcBtn()));
    EXPECT_FALSE(copyrightShown()) << "the made-up Enter left the attribution up";

    const QPointF overTitle = title->mapTo(form->Widget(), QPointF(20, 20));
    QEnterEvent windowEnter(overTitle, overTitle, title->mapToGlobal(QPointF(20, 20)));
    QApplication::sendEvent(window, &windowEnter);  // as when a menu closes over the title
    EXPECT_TRUE(copyrightShown());
    // A message box comes up: Qt tells the window that it is blocked and the pointer left.
    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(window, &blocked);
    QEvent windowLeave(QEvent::Leave);
    QApplication::sendEvent(window, &windowLeave);
    EXPECT_FALSE(copyrightShown());
    // The box goes while the pointer rests over the title: no pointer event comes on Wayland.
    const QPoint wasAt = QCursor::pos();  // put back after, for the tests that follow
    QCursor::setPos(title->mapToGlobal(QPoint(20, 20)));
    QEvent unblocked(QEvent::WindowUnblocked);
    QApplication::sendEvent(window, &unblocked);
    EXPECT_TRUE(copyrightShown());
    QCursor::setPos(wasAt);
}

// "?" opens the one information window on the press, also after it was closed, and lets the
// press go on to the button; a press on the frame of the test choice changes nothing.
TEST_F(EventsTest, PressesOnQuestionMarkAndOnTheFrameGoOnToTheirWidgets) {
    Click(form->PushButton1(), QTest::MousePress);
    Qwindow* information = &Qwindow::Instance();
    EXPECT_TRUE(information->Visible()) << "up before the button is released";
    EXPECT_TRUE(form->PushButton1().Widget()->property("down").toBool());
    Click(form->PushButton1(), QTest::MouseRelease);
    information->Close();
    EXPECT_FALSE(form->PushButton1().MouseDown(form->PushButton1(), 5, 5));
    EXPECT_TRUE(information->Visible() && &Qwindow::Instance() == information);

    const QWidget* box = form->typeBox().Widget();
    Click(form->IBtn());
    platform::recorder::Start();
    QTest::mouseClick(Handle(form->typeBox()), Qt::LeftButton, {},
                      box->mapTo(box->window(), QPoint(box->width() - 6, box->height() / 2)));
    EXPECT_EQ(Log(), std::vector<std::string>());
    EXPECT_TRUE(Globals::btn == 1 && form->IBtn().Value());
    EXPECT_FALSE(form->typeBox().MouseDown(form->typeBox(), 5, 5));
}

}  // namespace
}  // namespace korvane::testing
