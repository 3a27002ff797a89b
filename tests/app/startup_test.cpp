// The run from entry to exit status, early start-up and the initialiser table. A whole
// run happens in a child process of its own, which prints the steps it took on one line,
//   steps: RuntimeInit RuntimePerformInitializers _Main ... RuntimeExit.
// for the parent to match, and ends with the status Main returned.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/file_types.h"
#include "app/korvane.h"
#include "app/startup.h"
#include "control/control_wnd.h"
#include "platform/core/failure.h"
#include "platform/core/file_type.h"
#include "platform/qt/window.h"
#include "stats/stats.h"
#include "windows/about_wnd.h"
#include "windows/menu.h"

namespace {

using korvane::AboutWnd;
using korvane::ControlWnd;

const std::string kWholeRun =
    "steps: RuntimeInit RuntimePerformInitializers _Main _RuntimeSetExceptionHelper "
    "RuntimeVersion _EarlyStartup _SetSupportsHiDPI _RuntimeInitExternalClasses "
    "_InitPluginEntrypoints _InitFileTypes _NewAppInstance _ApplicationAddMenuHandlers "
    "_RunFrameworkInitialization _RuntimeRun _MakeDefaultView RuntimePerformFinalizers "
    "RuntimeExit.";

// Runs Main in this (child) process: `failing` throws a NilObjectException as it starts, and
// `atFirstWindow` runs in the loop's first turn, as the first window is made. Ends the process with
// Main's status.
[[noreturn]] void RunMain(const std::string& failing, std::function<void()> atFirstWindow) {
    std::string steps = "steps:";
    korvane::SetStepHook([&](std::string_view step) {
        steps += " " + std::string(step);
        if (step == failing) {
            throw platform::NilObjectException("injected into " + failing);
        }
        if (step == "_MakeDefaultView") {
            atFirstWindow();
        }
    });
    const int status = korvane::Main();
    std::fprintf(stderr, "%s.\n", steps.c_str());
    std::exit(status);
}

void QuitAtOnce() {
    platform::Quit(0);
}

class StartupTest : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(StartupTest, ARunThatQuitsTakesEveryStepInOrderAndEndsWithStatusZero) {
    EXPECT_EXIT(RunMain("", QuitAtOnce), testing::ExitedWithCode(0), kWholeRun);
}

// A start-up step that fails leaves the loop unentered; the finalisers and the exit still run.
TEST_F(StartupTest, AFailingStepIsReportedAndEndsTheRunWithStatusOne) {
    for (const char* step : {"_RuntimeSetExceptionHelper", "_InitFileTypes",
                             "_ApplicationAddMenuHandlers", "_RunFrameworkInitialization"}) {
        const std::string upTo = kWholeRun.substr(0, kWholeRun.find(step) + std::strlen(step));
        EXPECT_EXIT(RunMain(step, QuitAtOnce), testing::ExitedWithCode(1),
                    "NilObjectException: injected into " + std::string(step) + ".*" + upTo +
                        " _UnhandledException RuntimePerformFinalizers RuntimeExit.")
            << step;
    }
    EXPECT_EXIT(RunMain("_MakeDefaultView", QuitAtOnce), testing::ExitedWithCode(1),
                "NilObjectException: injected into _MakeDefaultView.*" + kWholeRun);
}

TEST_F(StartupTest, AForeignExceptionInAHandlerIsReportedPlainlyAndEndsTheRunWithStatusOne) {
    const auto foreign = [] { throw std::logic_error("not a runtime failure"); };
    EXPECT_EXIT(RunMain("", foreign), testing::ExitedWithCode(1),
                "not a runtime failure.*" + kWholeRun);
}

// The file types, then the application object with its version data and menu bar; no window
// until the platform's first call back.
TEST(EarlyStartup, RegistersTheFileTypesAndMakesTheApplicationObjectButNoWindow) {
    platform::RuntimeInit();
    platform::RuntimePerformInitializers(korvane::Initializers());
    platform::ClearFileTypeRegistry();
    korvane::_InitFileTypes();
    korvane::_NewAppInstance();

    EXPECT_EQ(platform::RegisteredFileTypes(),
              (std::vector<platform::FileTypeRegistration>{{"text", "R*ch", "TEXT", "", ""}, {}}));

    auto* app = dynamic_cast<korvane::Korvane*>(platform::getAppObject());
    ASSERT_NE(app, nullptr);
    const std::vector<std::int64_t> numbers{app->MajorVersion(), app->MinorVersion(),
                                            app->BugVersion(),   app->NonReleaseVersion(),
                                            app->StageCode(),    app->RegionCode()};
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{4, 0, 0, 0, 3, 0}));
    EXPECT_EQ(app->LongVersion(), AboutWnd::kAttribution);
    EXPECT_EQ(app->ShortVersion(), "4.0");
    EXPECT_EQ(app->PackageInfo(), "Korvane");
    EXPECT_EQ(app->MenuBar(), &korvane::Menu::Instance());
    EXPECT_EQ(korvane::_MacOSDistributedNotifications::dispatchTo().back().Value(), app);
    EXPECT_EQ(platform::_GetImplicitWindow(AboutWnd::kClassName), nullptr);

    korvane::_MakeDefaultView();
    EXPECT_TRUE(platform::NotNil(platform::_GetImplicitWindow(AboutWnd::kClassName)).Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(ControlWnd::kClassName), nullptr);
    platform::DestroyAllWindows();
    platform::DestroyAppObject();
}

// Run entry by entry over statics left dirty by an earlier run, the table resets them in this
// order: the file types (A, T, U), the menu bar (M), then btn, k1, p and t.
TEST(Initializers, TheTableResetsTheStaticsOfAnEarlierRunInItsOrder) {
    namespace FileTypes = korvane::FileTypes;
    namespace Globals = korvane::Globals;
    platform::RuntimeInit();
    FileTypes::pAllFileTypes = {std::make_shared<platform::FileType>()};
    FileTypes::pText = FileTypes::pUntitledType = std::make_shared<platform::FileType>();
    const platform::WeakRef menu(&korvane::Menu::Instance());
    Globals::btn = 2;
    Globals::k1 = 18;
    Globals::p = 0.04;
    Globals::t = -2.2;
    const auto reset = [&] {
        const bool done[] = {FileTypes::pAllFileTypes.empty(),
                             FileTypes::pText == nullptr,
                             FileTypes::pUntitledType == nullptr,
                             menu.Value() == nullptr,
                             Globals::btn == 0,
                             Globals::k1 == 0,
                             Globals::p == 0.0,
                             Globals::t == 0.0};
        std::string letters;
        for (std::size_t i = 0; i < std::size(done); ++i) {
            letters += done[i] ? std::string(1, "ATUMbkpt"[i]) : "";
        }
        return letters;
    };

    std::vector<std::string> after;
    for (platform::Initializer entry : korvane::Initializers()) {
        entry();
        after.push_back(reset());
    }

    EXPECT_EQ(after,
              (std::vector<std::string>{"A", "AT", "ATU", "ATU", "ATUM", "ATUM", "ATUM", "ATUM",
                                        "ATUM", "ATUM", "ATUMb", "ATUMbk", "ATUMbkp", "ATUMbkpt"}));
}

}  // namespace
