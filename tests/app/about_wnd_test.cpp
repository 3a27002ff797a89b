// The about window on Qt's offscreen platform: how it comes up, and its ways to give way to the
// control window. A stand-in of the control window is registered under its run-time class name,
// so these tests see exactly what the about window asks of it.
#include <gtest/gtest.h>

#include <QPoint>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/core/recorder.h"
#include "platform/qt/runtime.h"
#include "windows/about_wnd.h"
#include "windows/pictures.h"

namespace {

using korvane::AboutWnd;
using Lines = std::vector<std::string>;

class StandInControlWnd : public platform::Window {
  public:
    static const platform::ClassInfo& StaticClass() {
        static const platform::ClassInfo info{
            "ControlWnd.ControlWnd", &platform::Window::StaticClass(), {}};
        return info;
    }
    const platform::ClassInfo& Class() const override { return StaticClass(); }
};

platform::Window* ControlWindow() {
    return platform::_GetImplicitWindow("ControlWnd.ControlWnd");
}

bool ControlWindowShown() {
    return ControlWindow() != nullptr && ControlWindow()->Visible();
}

class AboutWindowTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        platform::RuntimeInit();
        AboutWnd::RegisterClass();
        platform::RegisterWindowClass("ControlWnd.ControlWnd",
                                      [] { return std::make_unique<StandInControlWnd>(); });
    }
    void TearDown() override {
        platform::recorder::Stop();
        platform::DestroyAllWindows();
    }

    // A point of the about window's content, as the window system hands it to the frame.
    static QPoint InFrame(AboutWnd& about, QPoint content) {
        return about.ContentWidget()->mapTo(about.Widget(), content);
    }
    // Lets Timer1 fire soon: the count starts again with a short period.
    static void FireTimerSoon(AboutWnd& about) {
        about.Timer1().Period(20);
        about.Timer1().Reset();
    }
};

TEST_F(AboutWindowTest, StartUpBuildsAnUntitledFixedWindowThatShowsItselfWithNoShowCall) {
    platform::recorder::Start();
    AboutWnd& about = AboutWnd::Instance();

    EXPECT_TRUE(about.Visible());
    EXPECT_EQ(platform::recorder::Lines(), Lines{});
    EXPECT_EQ(about.Title(), "");
    EXPECT_TRUE(about.Widget()->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(about.ContentWidget()->size(), QSize(500, 200));
    EXPECT_EQ(about.Widget()->minimumSize(), about.Widget()->maximumSize());
    EXPECT_EQ(ControlWindow(), nullptr);
}

TEST_F(AboutWindowTest, TheAttributionBannerAndFourSecondTimerAreBuiltFromTheirRecords) {
    AboutWnd& about = AboutWnd::Instance();

    ASSERT_EQ(about.ControlCount(), 3u);
    EXPECT_EQ(about.ControlAt(0)->Name(), "StaticText5");
    EXPECT_EQ(about.ControlAt(1)->Name(), "Canvas1");
    EXPECT_EQ(about.ControlAt(2)->Name(), "Timer1");

    EXPECT_EQ(about.StaticText5().Value(), "\xC2\xA9 2026 The Korvane developers");
    EXPECT_EQ(about.StaticText5().Widget()->geometry(), QRect(5, 113, 490, 21));
    EXPECT_EQ(about.Canvas1().Widget()->geometry(), QRect(5, 40, 490, 76));
    EXPECT_EQ(about.Canvas1().Backdrop(), korvane::tlarge());
    EXPECT_NE(about.Canvas1().Backdrop(), nullptr);

    // The timer is armed for four seconds while the window is built.
    auto& timer = dynamic_cast<AboutWnd::_wrapper_Timer1&>(about.Timer1());
    EXPECT_EQ(timer.Period(), 4000);
    EXPECT_EQ(timer.Mode(), 1);
    EXPECT_TRUE(timer.Armed());
    EXPECT_EQ(timer.Window(), &about);
}

TEST_F(AboutWindowTest, ItClaimsExactlyTheFiveWindowEventsItImplements) {
    const AboutWnd& about = AboutWnd::Instance();
    const std::pair<const char*, bool> events[] = {
        {"Layout", true},    {"CreateControls", true},   {"AddMenuHandlers", true},
        {"KeyDown", true},   {"MouseDown", true},        {"Close", false},
        {"Activate", false}, {"EnableMenuItems", false}, {"Paint", false}};
    for (const auto& [event, implemented] : events) {
        EXPECT_EQ(about.IsEventImplemented(event), implemented) << event;
    }
}

TEST_F(AboutWindowTest, TheTimerKnowsItsWindowOnlyWhileTheWindowLives) {
    AboutWnd::_wrapper_Timer1 timer;
    {
        StandInControlWnd window;
        timer._SetWindow(&window);
        EXPECT_EQ(timer.Window(), &window);
    }
    EXPECT_EQ(timer.Window(), nullptr);
}

TEST_F(AboutWindowTest, WhenTheTimerFiresTheAboutWindowGivesWayToTheCalculator) {
    AboutWnd& about = AboutWnd::Instance();
    platform::recorder::Start();

    FireTimerSoon(about);

    ASSERT_TRUE(QTest::qWaitFor([&] { return ControlWindowShown(); }, 5000));
    EXPECT_FALSE(about.Visible());
    EXPECT_FALSE(about.Timer1().Armed());
    EXPECT_EQ(platform::recorder::Lines(), (Lines{"AboutWnd.Hide", "ControlWnd.Show"}));
}

TEST_F(AboutWindowTest, AnyKeyPressOnTheAboutWindowBringsUpTheCalculatorAtOnce) {
    const std::pair<Qt::Key, Qt::KeyboardModifiers> presses[] = {
        {Qt::Key_A, {}},
        {Qt::Key_Space, {}},
        {Qt::Key_Escape, {}},
        {Qt::Key_Return, {}},
        {Qt::Key_Left, {}},
        {Qt::Key_F1, {}},
        {Qt::Key_Shift, {}},
        {Qt::Key_Alt, {}},                 // a modifier tapped alone
        {Qt::Key_A, Qt::ControlModifier},  // a combination no menu takes
    };
    for (const auto& [key, modifiers] : presses) {
        SCOPED_TRACE(QKeySequence(key | modifiers).toString().toStdString());
        AboutWnd& about = AboutWnd::Instance();
        platform::recorder::Start();

        QTest::keyClick(about.Widget()->windowHandle(), key, modifiers);

        EXPECT_FALSE(about.Visible());
        EXPECT_TRUE(ControlWindowShown());
        EXPECT_EQ(platform::recorder::Lines(), (Lines{"AboutWnd.Hide", "ControlWnd.Show"}));
        EXPECT_TRUE(about.Timer1().Armed());
        platform::DestroyAllWindows();
    }
}

// It has no close button, so the window manager's close (Alt+F4) is refused: closed, it would
// take its timer along and leave the run without a window.
TEST_F(AboutWindowTest, TheWindowManagersCloseLeavesTheAboutWindowUpAndItsTimerArmed) {
    AboutWnd& about = AboutWnd::Instance();

    about.Widget()->close();
    QCoreApplication::processEvents();

    EXPECT_TRUE(about.Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(AboutWnd::kClassName), &about);
    EXPECT_TRUE(about.Timer1().Armed());
}

TEST_F(AboutWindowTest, AMousePressAnywhereOnTheAboutWindowBringsUpTheCalculatorAtOnce) {
    // The empty ground, the banner and the attribution line.
    for (QPoint at : {QPoint(250, 10), QPoint(250, 78), QPoint(250, 123)}) {
        SCOPED_TRACE(testing::Message() << at.x() << "," << at.y());
        AboutWnd& about = AboutWnd::Instance();
        platform::recorder::Start();

        QTest::mouseClick(about.Widget()->windowHandle(), Qt::LeftButton, {}, InFrame(about, at));

        EXPECT_FALSE(about.Visible());
        EXPECT_TRUE(ControlWindowShown());
        EXPECT_EQ(platform::recorder::Lines(), (Lines{"AboutWnd.Hide", "ControlWnd.Show"}));
        platform::DestroyAllWindows();
    }
}

TEST_F(AboutWindowTest, TheTimerStillFiresAfterAKeyPressAndShowsTheCalculatorAgain) {
    AboutWnd& about = AboutWnd::Instance();
    QTest::keyClick(about.Widget()->windowHandle(), Qt::Key_A);
    ASSERT_TRUE(ControlWindowShown());
    platform::recorder::Start();

    FireTimerSoon(about);

    ASSERT_TRUE(QTest::qWaitFor([&] { return !about.Timer1().Armed(); }, 5000));
    EXPECT_EQ(platform::recorder::Lines(), (Lines{"AboutWnd.Hide", "ControlWnd.Show"}));
    EXPECT_TRUE(ControlWindowShown());
}

TEST_F(AboutWindowTest, CalledUpFromTheMenuBeforeTheLateFiringTheAboutWindowIsHiddenAgainByIt) {
    AboutWnd& about = AboutWnd::Instance();
    QTest::keyClick(about.Widget()->windowHandle(), Qt::Key_A);
    ASSERT_TRUE(about.HasMenuHandler("AboutMenuItem"));
    EXPECT_FALSE(about.RunMenuHandler("AboutMenuItem"));
    ASSERT_TRUE(about.Visible());

    FireTimerSoon(about);

    ASSERT_TRUE(QTest::qWaitFor([&] { return !about.Visible(); }, 5000));
    EXPECT_TRUE(ControlWindowShown());
}

TEST_F(AboutWindowTest, CalledUpAfterTheTimerIsSpentTheAboutWindowStaysUntilAPress) {
    AboutWnd& about = AboutWnd::Instance();
    FireTimerSoon(about);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !about.Visible(); }, 5000));

    EXPECT_TRUE(about.HasMenuHandler("AboutMenuItem"));
    about.RunMenuHandler("AboutMenuItem");
    QTest::qWait(200);  // ten times the period the timer had

    EXPECT_TRUE(about.Visible());
    EXPECT_FALSE(about.Timer1().Armed());
    QTest::mouseClick(about.Widget()->windowHandle(), Qt::LeftButton, {}, InFrame(about, {9, 9}));
    EXPECT_FALSE(about.Visible());
}

TEST_F(AboutWindowTest, AMissingBannerLeavesTheCanvasEmptyAndTheWindowStillComesUp) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a new process: no banner loaded yet
    const auto empty = std::filesystem::temp_directory_path() / "korvane-no-pictures";
    EXPECT_EXIT(
        {
            std::filesystem::create_directories(empty);
            platform::SetResourceDirectory(empty);
            AboutWnd& about = AboutWnd::Instance();
            const bool ok = about.Canvas1().Backdrop() == nullptr && about.Visible() &&
                            about.StaticText5().Value() != "";
            std::exit(ok ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
