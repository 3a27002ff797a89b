// The run from entry to exit status. Each whole run happens in a child process of its own (a
// fresh QApplication and window registry), which prints the steps it took on one line,
//   steps: RuntimeInit RuntimePerformInitializers _Main ... RuntimeExit.
// for the parent to match, and ends with the status Main returned.
#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/file_types.h"
#include "app/startup.h"
#include "control/control_wnd.h"
#include "platform/core/failure.h"
#include "platform/core/file_type.h"
#include "platform/core/object.h"
#include "platform/qt/menu.h"
#include "platform/qt/window.h"
#include "stats/stats.h"
#include "windows/about_wnd.h"
#include "windows/menu.h"

namespace {

using korvane::AboutWnd;
using korvane::ControlWnd;

// Every step of a run that quits as soon as the first window is up, in order.
const std::vector<std::string> kWholeRun = {"RuntimeInit",
                                            "RuntimePerformInitializers",
                                            "_Main",
                                            "_RuntimeSetExceptionHelper",
                                            "RuntimeVersion",
                                            "_EarlyStartup",
                                            "_SetSupportsHiDPI",
                                            "_RuntimeInitExternalClasses",
                                            "_InitPluginEntrypoints",
                                            "_InitFileTypes",
                                            "_NewAppInstance",
                                            "_ApplicationAddMenuHandlers",
                                            "_RunFrameworkInitialization",
                                            "_RuntimeRun",
                                            "_MakeDefaultView",
                                            "RuntimePerformFinalizers",
                                            "RuntimeExit"};

std::string Line(const std::vector<std::string>& steps) {
    std::string line = "steps:";
    for (const std::string& step : steps) {
        line += " " + step;
    }
    return line + ".";
}

// The steps up to and including `last`, then `after`.
std::vector<std::string> StepsTo(std::string_view last, std::vector<std::string> after) {
    std::vector<std::string> steps;
    for (const std::string& step : kWholeRun) {
        steps.push_back(step);
        if (step == last) {
            break;
        }
    }
    steps.insert(steps.end(), after.begin(), after.end());
    return steps;
}

std::vector<std::string> gSteps;

void Note(const std::string& what) {
    gSteps.push_back(what);
}

struct Run {
    std::string failingStep;                   // throws a NilObjectException just before it
    std::function<void()> throwAtDefaultView;  // throws something else there instead
    std::function<void()> onceTheFirstWindowIsUp;

    static Run QuittingWith(std::function<void()> once) {
        Run run;
        run.onceTheFirstWindowIsUp = std::move(once);
        return run;
    }
    static Run FailingAt(std::string step) {
        Run run = QuittingWith(QuitAtOnce);
        run.failingStep = std::move(step);
        return run;
    }
    static Run ThrowingAtDefaultView(std::function<void()> thrower) {
        Run run;
        run.throwAtDefaultView = std::move(thrower);
        return run;
    }
    static void QuitAtOnce() { platform::Quit(0); }
};

// Runs Main in this (child) process and ends it with Main's status.
[[noreturn]] void RunMain(const Run& run) {
    korvane::SetStepHook([&run](std::string_view step) {
        Note(std::string(step));
        if (step == run.failingStep) {
            throw platform::NilObjectException("injected into " + std::string(step));
        }
        if (step == "_RuntimeRun" && (platform::_GetImplicitWindow(AboutWnd::kClassName) ||
                                      platform::_GetImplicitWindow(ControlWnd::kClassName))) {
            Note("a-window-before-the-loop");
        }
        if (step == "_MakeDefaultView") {
            if (run.throwAtDefaultView) {
                run.throwAtDefaultView();
            }
            if (run.onceTheFirstWindowIsUp) {
                QTimer::singleShot(0, run.onceTheFirstWindowIsUp);
            }
        }
    });
    const int status = korvane::Main();
    std::fprintf(stderr, "%s\n", Line(gSteps).c_str());
    std::exit(status);
}

class StartupTest : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(StartupTest, ARunThatQuitsTakesEveryStepInOrderAndEndsWithStatusZero) {
    EXPECT_EXIT(RunMain(Run::QuittingWith(Run::QuitAtOnce)), testing::ExitedWithCode(0),
                Line(kWholeRun));
}

class StartupFailureTest : public StartupTest, public testing::WithParamInterface<const char*> {};

TEST_P(StartupFailureTest, AFailingStepLeavesTheLoopUnenteredButRunsFinalisersAndExit) {
    const std::string failing = GetParam();
    EXPECT_EXIT(RunMain(Run::FailingAt(failing)), testing::ExitedWithCode(1),
                "NilObjectException: injected into " + failing + ".*" +
                    Line(StepsTo(failing, {"_UnhandledException", "RuntimePerformFinalizers",
                                           "RuntimeExit"})));
}

INSTANTIATE_TEST_SUITE_P(EachStepOfStartUp, StartupFailureTest,
                         testing::Values("_RuntimeSetExceptionHelper", "_SetSupportsHiDPI",
                                         "_InitFileTypes", "_NewAppInstance",
                                         "_ApplicationAddMenuHandlers",
                                         "_RunFrameworkInitialization"));

TEST_F(StartupTest, AFailureOfTheFirstWindowIsReportedByThePlatformAndEndsTheRunWithStatusOne) {
    EXPECT_EXIT(RunMain(Run::FailingAt("_MakeDefaultView")), testing::ExitedWithCode(1),
                "NilObjectException: injected into _MakeDefaultView.*" + Line(kWholeRun));
}

TEST_F(StartupTest, AForeignExceptionInAHandlerPassesTheHelperAndStillEndsTheRunPlainly) {
    const auto foreign = [] { throw std::logic_error("not a runtime failure"); };
    EXPECT_EXIT(RunMain(Run::ThrowingAtDefaultView(foreign)), testing::ExitedWithCode(1),
                "not a runtime failure.*" + Line(kWholeRun));
}

// The user's way through a whole run: the about window first, the calculator after a key press,
// one calculation, and the calculator closed.
void UseTheCalculator() {
    AboutWnd& about = AboutWnd::Instance();
    if (about.Visible() && platform::_GetImplicitWindow(ControlWnd::kClassName) == nullptr) {
        Note("about-first");
    }
    QTest::keyClick(about.Widget()->windowHandle(), Qt::Key_Space);
    ControlWnd& control = ControlWnd::Instance();
    // Activation resets the chosen test, so the clicks wait for it.
    static_cast<void>(QTest::qWaitForWindowActive(control.Widget()));
    if (control.Visible() && !about.Visible()) {
        Note("calculator-next");
    }
    const auto click = [&control](platform::RectControl& target) {
        QWidget* widget = target.Widget();
        QTest::mouseClick(control.Widget()->windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(control.Widget(), widget->rect().center()));
    };
    const auto type = [&](platform::TextField& field, const char* text) {
        click(field);
        for (const char* key = text; *key != '\0'; ++key) {
            QTest::keyClick(control.Widget()->windowHandle(), *key);
        }
    };
    click(control.IBtn());
    type(control.m1fld(), "5");
    type(control.sd1fld(), "1");
    type(control.n1fld(), "10");
    type(control.m2fld(), "6");
    type(control.sd2fld(), "1");
    type(control.n2fld(), "10");
    click(control.CalcBtn());
    Note("df=" + control.dfFld().Text() + " t=" + control.tfld().Text() +
         " p=" + control.pfld().Text());
    QTest::qWait(50);
    control.Widget()->close();  // the close button: Event_Close quits with status 0
}

TEST_F(StartupTest, AUserRunShowsTheAboutWindowThenTheCalculatorAndEndsWithStatusZero) {
    std::vector<std::string> steps = StepsTo("_MakeDefaultView", {});
    steps.insert(steps.end(), {"about-first", "calculator-next", "df=18 t=-2.236 p=.0382",
                               "RuntimePerformFinalizers", "RuntimeExit"});
    EXPECT_EXIT(RunMain(Run::QuittingWith(UseTheCalculator)), testing::ExitedWithCode(0),
                Line(steps));
}

TEST(ExceptionHelper, AnswersNilOrTheRuntimeFailureAsRaisedAndLetsAnythingElsePass) {
    int calls = 0;
    const auto count = [](void* argument) { ++*static_cast<int*>(argument); };
    EXPECT_EQ(korvane::_CallFunctionWithExceptionHandling(count, &calls), nullptr);
    EXPECT_EQ(calls, 1);

    const auto fail = [](void*) { throw platform::NilObjectException("the receiver was nil"); };
    const std::exception_ptr escaped = korvane::_CallFunctionWithExceptionHandling(fail, nullptr);
    ASSERT_NE(escaped, nullptr);
    try {
        std::rethrow_exception(escaped);
    } catch (const platform::NilObjectException& failure) {
        EXPECT_EQ(failure.Message(), "the receiver was nil");
    } catch (...) {
        ADD_FAILURE() << "the failure came back as another class";
    }

    const auto foreign = [](void*) { throw std::out_of_range("not ours"); };
    EXPECT_THROW(korvane::_CallFunctionWithExceptionHandling(foreign, nullptr), std::out_of_range);
}

// The table run one entry at a time over variables left dirty by an earlier run: each variable
// is set by the entry of its own place and by none before it. Of the class tables between them,
// the menu's shows in the class its bar reports.
TEST(Initializers, EachEntrySetsTheVariableOfItsOwnPlaceInTableOrder) {
    namespace FileTypes = korvane::FileTypes;
    namespace Globals = korvane::Globals;
    platform::RuntimeInit();
    FileTypes::pAllFileTypes = {std::make_shared<platform::FileType>()};
    FileTypes::pText = std::make_shared<platform::FileType>();
    FileTypes::pUntitledType = std::make_shared<platform::FileType>();
    const platform::WeakRef menu(&korvane::Menu::Instance());
    Globals::btn = 2;
    Globals::k1 = 18;
    Globals::p = 0.04;
    Globals::t = -2.2;
    const std::vector<std::pair<std::size_t, std::function<bool()>>> initialised = {
        {0, [] { return FileTypes::pAllFileTypes.empty(); }},
        {1, [] { return FileTypes::pText == nullptr; }},
        {2, [] { return FileTypes::pUntitledType == nullptr; }},
        {4, [&menu] { return menu.Value() == nullptr; }},
        {10, [] { return Globals::btn == 0; }},
        {11, [] { return Globals::k1 == 0; }},
        {12, [] { return Globals::p == 0.0; }},
        {13, [] { return Globals::t == 0.0; }}};

    const auto table = korvane::Initializers();
    EXPECT_EQ(table.size(), 14u);
    for (std::size_t entry = 0; entry < table.size(); ++entry) {
        table[entry]();
        for (const auto& [place, done] : initialised) {
            EXPECT_EQ(done(), place <= entry) << "entry " << place << " after entry " << entry;
        }
    }
    EXPECT_EQ(korvane::Menu::Instance().Class().name, "Menu");
    EXPECT_EQ(korvane::Menu::Instance().Class().base, &platform::MenuBar::StaticClass());
    korvane::Menu::ResetImplicitInstance();
}

}  // namespace
