// The run: protected calls of handlers, what becomes of a failure, the run loop and its exit
// status, the thread gate, messages, beeps and timers.
#include <QTimer>
#include <thread>

#include "platform/qt/application.h"
#include "sample_windows.h"

namespace {

using namespace sample;

class RuntimeTest : public PlatformTest {};

TEST_F(RuntimeTest, AnyFailureInAHandlerIsStoppedReportedAndEndsTheRunWithStatus1) {
    bool after = false;

    platform::ProtectedCall([] { throw platform::NilObjectException("nil"); });
    platform::ProtectedCall([] { throw std::logic_error("broken"); });
    platform::ProtectedCall([&after] { after = true; });

    EXPECT_EQ(FirstFailureClass(), "NilObjectException");
    ASSERT_EQ(failures.size(), 2u);
    EXPECT_THROW(std::rethrow_exception(failures[1]), std::logic_error);
    EXPECT_EQ(platform::RuntimeExit(), 1);
    EXPECT_TRUE(after);  // the platform goes on delivering until the loop ends
}

TEST_F(RuntimeTest, AHandlerThatFailsEndsARunningLoopWithStatus1) {
    QTimer::singleShot(
        0, [] { platform::ProtectedCall([] { throw platform::IllegalCastException("cast"); }); });

    platform::_RuntimeRun();

    EXPECT_EQ(FirstFailureClass(), "IllegalCastException");
    EXPECT_EQ(platform::RuntimeExit(), 1);
}

TEST_F(RuntimeTest, AFailureInAControlsEventIsReportedNotCrashed) {
    FormWnd& form = FormWnd::Instance();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    form.CalcBtn().Action = [](platform::PushButton&) {
        throw platform::NilObjectException("a control went missing");
    };

    ClickAt(form, CentreOf(form.CalcBtn(), form));

    EXPECT_EQ(FirstFailureClass(), "NilObjectException");
    EXPECT_EQ(platform::RuntimeExit(), 1);
}

struct HelperLog {
    static inline int calls = 0;
    static std::exception_ptr Call(void (*function)(void*), void* argument) {
        ++calls;
        try {
            function(argument);
        } catch (const platform::RuntimeException&) {
            return std::current_exception();
        }
        return nullptr;
    }
};

TEST_F(RuntimeTest, HandlersRunThroughTheRegisteredExceptionHelper) {
    platform::_RuntimeSetExceptionHelper(&HelperLog::Call);
    HelperLog::calls = 0;
    int runs = 0;

    platform::ProtectedCall([&runs] { ++runs; });
    platform::ProtectedCall([] { throw platform::StackOverflowException("deep"); });
    platform::_RuntimeSetExceptionHelper(nullptr);

    EXPECT_EQ(HelperLog::calls, 2);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(FirstFailureClass(), "StackOverflowException");
}

TEST_F(RuntimeTest, ADelegateWhoseWindowIsGoneRaisesNilObjectException) {
    std::function<void(platform::RadioButton&)> handler;
    platform::RadioButton radio;
    {
        FormWnd gone;
        handler = platform::Delegate(gone, &FormWnd::IBtn_Action);
    }

    EXPECT_THROW(handler(radio), platform::NilObjectException);
    platform::ProtectedCall([&] { handler(radio); });
    EXPECT_EQ(FirstFailureClass(), "NilObjectException");
}

TEST_F(RuntimeTest, QuitEndsTheLoopWithItsCode) {
    QTimer::singleShot(0, [] { platform::Quit(0); });

    platform::_RuntimeRun();

    EXPECT_EQ(platform::RuntimeExit(), 0);
    EXPECT_TRUE(failures.empty());
}

TEST_F(RuntimeTest, AQuitBeforeTheLoopMeansThereIsNoLoopToRun) {
    platform::Quit(3);

    platform::_RuntimeRun();  // returns at once

    EXPECT_EQ(platform::RuntimeExit(), 3);
}

void (*gLateStartup)() = nullptr;
int gLateStartupRuns = 0;

TEST_F(RuntimeTest, FrameworkInitializationRunsTheLateStartupOnceInTheLoop) {
    gLateStartupRuns = 0;
    gLateStartup = [] {
        ++gLateStartupRuns;
        platform::Quit(0);
    };

    platform::_RunFrameworkInitialization(gLateStartup);
    EXPECT_EQ(gLateStartupRuns, 0);
    platform::_RuntimeRun();

    EXPECT_EQ(gLateStartupRuns, 1);
    EXPECT_EQ(platform::RuntimeExit(), 0);
}

TEST_F(RuntimeTest, TheInitializersRunInTableOrder) {
    static std::string order;
    order.clear();
    const platform::Initializer table[] = {[] { order += "a"; }, [] { order += "b"; }};

    platform::RuntimePerformInitializers(table);

    EXPECT_EQ(order, "ab");
}

TEST_F(RuntimeTest, UserInterfaceOperationsFromAnotherThreadAreRefused) {
    FormWnd& form = FormWnd::Instance();
    std::string trapped, refused;
    bool appSeesAThread = false;
    platform::_RuntimeRegisterAppObject(std::make_unique<platform::Application>());

    std::thread worker([&] {
        try {
            platform::_UITrap();
        } catch (const platform::ThreadAccessingUIException& e) {
            trapped = e.Message();
        }
        try {
            form.m1fld().Visible(false);
        } catch (const platform::ThreadAccessingUIException& e) {
            refused = e.ClassName();
        }
        appSeesAThread = platform::getAppObject()->CurrentThread() != nullptr;
    });
    worker.join();

    EXPECT_EQ(trapped, platform::kThreadAccessingUIMessage);
    EXPECT_EQ(refused, "ThreadAccessingUIException");
    EXPECT_TRUE(form.m1fld().Visible());
    EXPECT_TRUE(appSeesAThread);
    EXPECT_EQ(platform::getAppObject()->CurrentThread(), nullptr);
    EXPECT_NO_THROW(platform::_UITrap());
    platform::DestroyAppObject();
    EXPECT_EQ(platform::getAppObject(), nullptr);
}

TEST_F(RuntimeTest, MsgBoxAndBeepAreRecordedInOrderWithTheWritesAroundThem) {
    platform::recorder::Start();
    FormWnd& form = FormWnd::Instance();
    EXPECT_TRUE(platform::recorder::Lines().empty());  // writes of a layout record are not

    form.m1fld().Visible(true);
    platform::MsgBox("Please enter the mean of sample 1");
    form.m1fld().SetFocus();
    platform::Beep();
    form.m1fld().Text("1.5");
    form.IBtn().Value(false);
    form.CalcBtn().Enabled(false);
    platform::RuntimeCheckCast<platform::Label>(form._ControlByName("note")).Value("t");

    EXPECT_EQ(messages, std::vector<std::string>{"Please enter the mean of sample 1"});
    EXPECT_EQ(platform::recorder::Lines(),
              (std::vector<std::string>{
                  "m1fld.Visible=1", "MsgBox:Please enter the mean of sample 1", "m1fld.SetFocus",
                  "Beep", "m1fld.Text=1.5", "IBtn.Value=0", "CalcBtn.Enabled=0", "note.Value=t"}));
}

constexpr auto kOnceRecord = PLATFORM_RECORD(Int("Period", 20), Int("RunMode", 1));

TEST_F(RuntimeTest, ATimerWithRunMode1FiresOncePeriodAfterItsRecord) {
    platform::Timer timer;
    int fired = 0;
    timer.Action = [&fired](platform::Timer&) { ++fired; };

    platform::ApplyRecord(timer, kOnceRecord.view());
    EXPECT_TRUE(timer.Armed());
    EXPECT_EQ(timer.Period(), 20);
    QTRY_COMPARE(fired, 1);
    QTest::qWait(80);

    EXPECT_EQ(fired, 1);
    EXPECT_FALSE(timer.Armed());
    EXPECT_EQ(timer.Mode(), 0);  // a single firing is spent
}

TEST_F(RuntimeTest, ATimerInAWindowFiresIntoTheWindowsHandler) {
    FormWnd& form = FormWnd::Instance();
    int fired = 0;
    form._AddControl("Timer1", form.__New<platform::Timer>());
    auto& timer = platform::RuntimeCheckCast<platform::Timer>(form._ControlByName("Timer1"));
    platform::ApplyRecord(timer, kOnceRecord.view());
    timer.Action = [&fired](platform::Timer&) { ++fired; };

    QTRY_COMPARE(fired, 1);
    EXPECT_EQ(timer.TrueWindow(), &form);
}

TEST_F(RuntimeTest, ARepeatingTimerFiresUntilItIsSwitchedOff) {
    platform::Timer timer;
    int fired = 0;
    timer.Action = [&fired](platform::Timer& t) {
        if (++fired == 3) {
            t.Mode(0);
        }
    };

    timer.Period(10);
    timer.Mode(2);
    QTRY_COMPARE(fired, 3);
    QTest::qWait(50);

    EXPECT_EQ(fired, 3);
    EXPECT_FALSE(timer.Armed());
}

TEST_F(RuntimeTest, ResetStartsASpentTimerAgainOnlyWhenItHasAMode) {
    platform::Timer timer;
    int fired = 0;
    timer.Action = [&fired](platform::Timer&) { ++fired; };
    timer.Period(10);

    timer.Reset();
    EXPECT_FALSE(timer.Armed());
    timer.Mode(1);
    QTRY_COMPARE(fired, 1);
    timer.Mode(1);  // spent: Mode is 0 again, so this starts it
    timer.Reset();
    QTRY_COMPARE(fired, 2);
}

TEST_F(RuntimeTest, AFailingTimerActionIsReported) {
    platform::Timer timer;
    timer.Action = [](platform::Timer&) { throw platform::OutOfBoundsException("index"); };

    platform::ApplyRecord(timer, kOnceRecord.view());

    QTRY_COMPARE(failures.size(), std::size_t{1});
    EXPECT_EQ(FirstFailureClass(), "OutOfBoundsException");
}

}  // namespace
