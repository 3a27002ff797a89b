// The application object as start-up makes it, and the first window it brings up.
#include <gtest/gtest.h>

#include "app/korvane.h"
#include "app/notifications.h"
#include "app/startup.h"
#include "control/control_wnd.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"
#include "windows/about_wnd.h"
#include "windows/menu.h"

namespace {

class ApplicationObjectTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        platform::RuntimeInit();
        platform::RuntimePerformInitializers(korvane::Initializers());
    }
    void TearDown() override {
        platform::DestroyAllWindows();
        platform::DestroyAppObject();
    }
};

TEST_F(ApplicationObjectTest, StartUpRegistersAKorvaneWithItsVersionDataItsMenuBarAndNoWindowYet) {
    korvane::_NewAppInstance();

    auto* app = dynamic_cast<korvane::Korvane*>(platform::getAppObject());
    ASSERT_NE(app, nullptr);
    EXPECT_EQ(app->MajorVersion(), 4);
    EXPECT_EQ(app->MinorVersion(), 0);
    EXPECT_EQ(app->BugVersion(), 0);
    EXPECT_EQ(app->NonReleaseVersion(), 0);
    EXPECT_EQ(app->StageCode(), 3);
    EXPECT_EQ(app->RegionCode(), 0);
    EXPECT_EQ(app->LongVersion(), "\xC2\xA9 2026 The Korvane developers");
    EXPECT_EQ(app->ShortVersion(), "4.0");
    EXPECT_EQ(app->PackageInfo(), "Korvane");
    EXPECT_EQ(app->Copyright(), app->LongVersion());
    EXPECT_EQ(app->Version(), "4.0");
    EXPECT_EQ(app->Description(), "Korvane");

    EXPECT_EQ(app->MenuBar(), &korvane::Menu::Instance());
    EXPECT_EQ(platform::_GetImplicitWindow(korvane::AboutWnd::kClassName), nullptr);
    EXPECT_EQ(platform::_GetImplicitWindow(korvane::ControlWnd::kClassName), nullptr);
    // The application object hears of appearance changes.
    const auto& clients = korvane::_MacOSDistributedNotifications::dispatchTo();
    ASSERT_FALSE(clients.empty());
    EXPECT_EQ(clients.back().Value(), platform::getAppObject());
}

TEST_F(ApplicationObjectTest, TheFirstWindowIsTheAboutWindowOnTheScreenWithoutAShowCall) {
    korvane::_NewAppInstance();
    korvane::_MakeDefaultView();

    platform::Window* about = platform::_GetImplicitWindow(korvane::AboutWnd::kClassName);
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(korvane::ControlWnd::kClassName), nullptr);
}

}  // namespace
