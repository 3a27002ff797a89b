// Windows and the run: the registry of living windows, closing, size, activation, messages,
// the recorder, failures and their exit status, the thread gate, timers and the run loop.
#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>
#include <thread>

#include "platform/qt/application.h"
#include "sample_windows.h"

namespace {

using namespace sample;
using platform::_GetImplicitWindow;
using Lines = std::vector<std::string>;

// A resizeable window; its close button closes it, or hides it when `hide` is set.
class PlainWnd : public platform::Window {
  public:
    static constexpr const char* kClassName = "PlainWnd.PlainWnd";
    static PlainWnd& Instance() {
        platform::RegisterWindowClass(kClassName, [] { return std::make_unique<PlainWnd>(); });
        return dynamic_cast<PlainWnd&>(platform::ImplicitWindow(kClassName));
    }
    void Layout() override {
        platform::ApplyRecord(
            *this, PLATFORM_RECORD(Int("Width", 300), Int("Height", 200), Bool("Resizeable", true),
                                   Int("MinimumWidth", 100), Int("MinimumHeight", 80),
                                   Int("MaximumWidth", 800), Int("MaximumHeight", 600),
                                   Bool("HasMaximizeButton", true), Bool("HasCloseButton", true),
                                   Bool("Visible", true))
                       .view());
    }
    void Event_Close() override {
        if (hide) {
            Hide();
        }
    }
    bool hide = false;
};

using WindowTest = PlatformTest;

TEST_F(WindowTest, TheAccessorBuildsTheWindowOnceAndItsRecordShowsIt) {
    EXPECT_EQ(_GetImplicitWindow(FormWnd::kClassName), nullptr);
    EXPECT_THROW(platform::ImplicitWindow("Nothing.Nothing"), platform::NilObjectException);
    platform::recorder::Start();

    FormWnd& first = FormWnd::Instance();

    EXPECT_EQ(&FormWnd::Instance(), &first);
    EXPECT_EQ(_GetImplicitWindow(FormWnd::kClassName), &first);
    EXPECT_TRUE(first.Widget()->isVisible());
    EXPECT_EQ(first.ControlCount(), 10u);
    EXPECT_EQ(platform::recorder::Lines(), Lines{});  // writes of layout records are not logged
}

TEST_F(WindowTest, TheCloseButtonClosesHidesOrIsRefusedAsTheWindowSays) {
    PlainWnd& plain = PlainWnd::Instance();
    const platform::WeakRef watch(&plain);
    plain.Widget()->close();
    EXPECT_EQ(_GetImplicitWindow(PlainWnd::kClassName), nullptr);
    QTRY_COMPARE(watch.Value(), nullptr);  // deleted later, never inside its own event

    PlainWnd& hiding = PlainWnd::Instance();
    hiding.hide = true;
    hiding.Widget()->close();
    EXPECT_FALSE(hiding.Visible());
    EXPECT_EQ(&PlainWnd::Instance(), &hiding);

    PlainWnd& closeless = PlainWnd::Instance();
    platform::ApplyRecord(closeless, PLATFORM_RECORD(Bool("HasCloseButton", false)).view());
    closeless.Show();
    closeless.Widget()->close();  // the window manager's close, Alt+F4
    EXPECT_TRUE(closeless.Visible());
    EXPECT_FALSE(closeless.Widget()->windowFlags() & Qt::WindowCloseButtonHint);
    closeless.hide = false;
    closeless.Close();  // code may still close it
    EXPECT_EQ(_GetImplicitWindow(PlainWnd::kClassName), nullptr);
}

TEST_F(WindowTest, AFixedSizeWindowCannotBeResizedOrMaximisedAndAResizeableOneKeepsItsLimits) {
    QWidget* fixed = FormWnd::Instance().Widget();
    EXPECT_FALSE(fixed->windowFlags() & Qt::WindowMaximizeButtonHint);
    fixed->resize(600, 600);
    EXPECT_EQ(FormWnd::Instance().ContentWidget()->size(), QSize(400, 300));

    QWidget* resizeable = PlainWnd::Instance().Widget();
    EXPECT_TRUE(resizeable->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(resizeable->minimumSize(), QSize(100, 80));
    EXPECT_EQ(resizeable->maximumSize(), QSize(800, 600));
}

TEST_F(WindowTest, AnActivationRaisesActivateThenEnableMenuItemsButDismissingAMessageDoesNot) {
    platform::SetMessageBoxHook({});  // a real, modal message box
    FormWnd& form = Form();
    EXPECT_EQ(form.events, (Lines{"Activate", "EnableMenuItems"}));
    QString shown;
    QTimer::singleShot(50, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->text();
        box->accept();
    });

    platform::MsgBox("Please enter the mean of sample 1");
    EXPECT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    QTest::qWait(20);
    EXPECT_EQ(shown, QStringLiteral("Please enter the mean of sample 1"));
    EXPECT_EQ(form.events.size(), 2u);

    ASSERT_TRUE(QTest::qWaitForWindowActive(PlainWnd::Instance().Widget()));
    form.Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    EXPECT_EQ(form.events.size(), 4u);  // a real activation still counts
}

TEST_F(WindowTest, WritesMessagesAndBeepsAreRecordedInOrder) {
    FormWnd& form = FormWnd::Instance();
    platform::recorder::Start();

    form.m1fld().Visible(true);
    platform::MsgBox("Please enter the mean of sample 1");
    form.m1fld().SetFocus();
    platform::Beep();
    form.m1fld().Text("1.5");
    form.IBtn().Value(false);
    form.HelpBtn().Enabled(false);
    form.Get<platform::Label>("note").Value("t");
    form.Hide();

    EXPECT_EQ(messages, Lines{"Please enter the mean of sample 1"});
    EXPECT_EQ(platform::recorder::Lines(),
              (Lines{"m1fld.Visible=1", "MsgBox:Please enter the mean of sample 1",
                     "m1fld.SetFocus", "Beep", "m1fld.Text=1.5", "IBtn.Value=0",
                     "HelpBtn.Enabled=0", "note.Value=t", "FormWnd.Hide"}));
}

TEST_F(WindowTest, AFailureInAnyHandlerIsReportedAndEndsTheRunWithStatus1) {
    FormWnd& form = Form();
    form.Get<platform::PushButton>("CalcBtn").Action = [](auto&) {
        throw platform::NilObjectException("a control went missing");
    };
    std::function<bool(platform::TextField&, const std::string&)> orphan;
    {
        FormWnd gone;
        orphan = platform::Delegate(gone, &FormWnd::KeyDown);
    }
    QTimer::singleShot(0, [&] {
        Mouse(form, form.Get<platform::PushButton>("CalcBtn"));
        platform::ProtectedCall([&] { orphan(form.m1fld(), "1"); });
        platform::ProtectedCall([] { throw std::logic_error("not a runtime failure"); });
    });

    platform::_RuntimeRun();  // returns only because the run ended

    EXPECT_EQ(FailureClasses(), (Lines{"NilObjectException", "NilObjectException", "other"}));
    EXPECT_EQ(platform::RuntimeExit(), 1);
}

TEST_F(WindowTest, UserInterfaceOperationsFromAnotherThreadAreRefused) {
    FormWnd& form = FormWnd::Instance();
    std::string refused;
    std::thread worker([&] {
        try {
            form.m1fld().Visible(false);
        } catch (const platform::ThreadAccessingUIException& e) {
            refused = e.Message();
        }
    });
    worker.join();

    EXPECT_EQ(refused, platform::kThreadAccessingUIMessage);
    EXPECT_TRUE(form.m1fld().Visible());
    EXPECT_NO_THROW(platform::_UITrap());
}

TEST_F(WindowTest, ATimerFiresOnceOrUntilItIsSwitchedOff) {
    platform::Timer once, repeating;
    int onceFired = 0, repeatFired = 0;
    once.Action = [&](platform::Timer&) { ++onceFired; };
    repeating.Action = [&](platform::Timer& t) {
        if (++repeatFired == 3) {
            t.Mode(0);
        }
    };

    platform::ApplyRecord(once, PLATFORM_RECORD(Int("Period", 20), Int("RunMode", 1)).view());
    platform::ApplyRecord(repeating, PLATFORM_RECORD(Int("Period", 10), Int("Mode", 2)).view());
    QTRY_COMPARE(repeatFired, 3);
    QTest::qWait(80);

    EXPECT_EQ(onceFired, 1);
    EXPECT_EQ(repeatFired, 3);
    EXPECT_FALSE(once.Armed());
    EXPECT_FALSE(repeating.Armed());
}

int gLateStartups = 0;

TEST_F(WindowTest, TheLateStartupRunsOnceInTheLoopAndQuitEndsItWithItsCode) {
    platform::_RunFrameworkInitialization([] {
        ++gLateStartups;
        platform::Quit(7);
    });
    EXPECT_EQ(gLateStartups, 0);

    platform::_RuntimeRun();

    EXPECT_EQ(gLateStartups, 1);
    EXPECT_EQ(platform::RuntimeExit(), 7);
    EXPECT_TRUE(failures.empty());
}

}  // namespace
