// The about window on Qt's offscreen platform, beside a stand-in control window registered under
// the real one's class name, so these tests see exactly what the about window asks of it.
#include <gtest/gtest.h>

#include <QKeySequence>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <string>
#include <vector>

#include "platform/core/recorder.h"
#include "platform/qt/canvas.h"
#include "platform/qt/runtime.h"
#include "platform/qt/text_controls.h"
#include "platform/qt/window.h"
#include "windows/about_wnd.h"
#include "windows/pictures.h"

namespace {

using korvane::AboutWnd;
using Lines = std::vector<std::string>;
const Lines kGaveWay{"AboutWnd.Hide", "ControlWnd.Show"};

struct StandInControlWnd : platform::WindowClass<StandInControlWnd> {
    static constexpr const char* kClassName = "ControlWnd.ControlWnd";
    static constexpr platform::EventNames<0> kImplementedEvents{};
};

bool ControlWindowShown() {
    platform::Window* control = platform::_GetImplicitWindow(StandInControlWnd::kClassName);
    return control != nullptr && control->Visible();
}

class AboutWindowTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        platform::RuntimeInit();
        AboutWnd::RegisterClass();
        StandInControlWnd::RegisterClass();
    }
    void TearDown() override {
        platform::recorder::Stop();
        platform::DestroyAllWindows();
    }
    static void ClickAt(AboutWnd& about, QPoint content) {
        QTest::mouseClick(about.Widget()->windowHandle(), Qt::LeftButton, {},
                          about.ContentWidget()->mapTo(about.Widget(), content));
    }
};

// It has no close button: the window manager's close would take its timer along and leave no
// window.
TEST_F(AboutWindowTest, ItComesUpByItsRecordAloneWithAFourSecondTimerAndStaysUpWhenClosed) {
    platform::recorder::Start();
    AboutWnd& about = AboutWnd::Instance();

    EXPECT_TRUE(about.Visible());
    EXPECT_EQ(platform::recorder::Lines(), Lines{});  // no Show call
    EXPECT_EQ(about.ContentWidget()->size(), QSize(500, 200));
    EXPECT_EQ(about.StaticText5().Value(), "\xC2\xA9 2026 The Korvane developers");
    EXPECT_EQ(about.Canvas1().Backdrop(), korvane::tlarge());
    EXPECT_EQ(about.Timer1().Period(), 4000);
    EXPECT_EQ(about.Timer1().Mode(), 1);
    EXPECT_FALSE(ControlWindowShown());

    about.Widget()->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(platform::_GetImplicitWindow(AboutWnd::kClassName), &about);
    EXPECT_TRUE(about.Visible());
    EXPECT_TRUE(about.Timer1().Armed());
}

TEST_F(AboutWindowTest, TheTimerGivesWayOnceAndTheMenuBringsTheWindowBackUntilAPress) {
    AboutWnd& about = AboutWnd::Instance();
    platform::recorder::Start();

    about.Timer1().Period(20);  // the count starts again, with a short period
    about.Timer1().Reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ControlWindowShown(); }, 5000));
    EXPECT_EQ(platform::recorder::Lines(), kGaveWay);
    EXPECT_FALSE(about.Visible());

    about.RunMenuHandler("AboutMenuItem");
    QTest::qWait(200);  // ten times the period the spent timer had
    EXPECT_TRUE(about.Visible());
    ClickAt(about, {9, 9});
    EXPECT_FALSE(about.Visible());
}

// Each press is checked on a window of its own; the timer stays armed for a later firing.
TEST_F(AboutWindowTest, AnyKeyOrClickOnTheAboutWindowGivesWayAtOnce) {
    const QKeyCombination keys[] = {Qt::Key_A, Qt::Key_Escape, Qt::Key_Shift, Qt::CTRL | Qt::Key_A};
    const QPoint clicks[] = {{250, 10}, {250, 78}};  // on the ground and on the banner
    for (std::size_t i = 0; i < std::size(keys) + std::size(clicks); ++i) {
        SCOPED_TRACE(i < std::size(keys) ? QKeySequence(keys[i]).toString().toStdString()
                                         : "click " + std::to_string(i - std::size(keys)));
        AboutWnd& about = AboutWnd::Instance();
        platform::recorder::Start();

        if (i < std::size(keys)) {
            QTest::keyClick(about.Widget()->windowHandle(), keys[i].key(),
                            keys[i].keyboardModifiers());
        } else {
            ClickAt(about, clicks[i - std::size(keys)]);
        }

        EXPECT_EQ(platform::recorder::Lines(), kGaveWay);
        EXPECT_FALSE(about.Visible());
        EXPECT_TRUE(about.Timer1().Armed());
        platform::DestroyAllWindows();
    }
}

}  // namespace
