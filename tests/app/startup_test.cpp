// The run from entry to exit status, early start-up, the initialiser table and the appearance
// observer. A whole run happens in a child process of its own, which prints the steps it took on
// one line for the parent to match.
#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/file_types.h"
#include "app/korvane.h"
#include "app/notifications.h"
#include "app/startup.h"
#include "platform/core/failure.h"
#include "platform/core/file_type.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"
#include "stats/stats.h"
#include "windows/about_wnd.h"
#include "windows/menu.h"

namespace {

using korvane::AboutWnd;
namespace Notifications = korvane::_MacOSDistributedNotifications;

const std::string kWholeRun =
    "steps: RuntimeInit RuntimePerformInitializers _Main _RuntimeSetExceptionHelper "
    "RuntimeVersion _EarlyStartup _SetSupportsHiDPI _RuntimeInitExternalClasses "
    "_InitPluginEntrypoints _InitFileTypes _NewAppInstance _ApplicationAddMenuHandlers "
    "_RunFrameworkInitialization _RuntimeRun _MakeDefaultView RuntimePerformFinalizers "
    "RuntimeExit.";

// Runs Main in this (child) process: `failing` throws a NilObjectException as it starts, and
// `atFirstWindow` runs in the loop's first turn, as the first window is made. Ends the process with
// Main's status.
[[noreturn]] void RunMain(const std::string& failing, const std::function<void()>& atFirstWindow) {
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

// A start-up step that fails leaves the loop unentered; the finalisers and the exit still run.
// A failure in the loop, the runtime's or a foreign one, ends the loop.
TEST(Startup, EveryRunTakesItsStepsInOrderAndAFailureIsReportedAndEndsItWithStatusOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto quit = [] { platform::Quit(0); };
    const auto foreign = [] { throw std::logic_error("not a runtime failure"); };
    EXPECT_EXIT(RunMain("", quit), testing::ExitedWithCode(0), kWholeRun);
    EXPECT_EXIT(RunMain("", foreign), testing::ExitedWithCode(1),
                "not a runtime failure.*" + kWholeRun);
    for (const std::string step :
         {"_RuntimeSetExceptionHelper", "_InitFileTypes", "_ApplicationAddMenuHandlers",
          "_RunFrameworkInitialization", "_MakeDefaultView"}) {
        const std::string upTo = kWholeRun.substr(0, kWholeRun.find(step) + step.size());
        EXPECT_EXIT(RunMain(step, quit), testing::ExitedWithCode(1),
                    "NilObjectException: injected into " + step + ".*" +
                        (step == "_MakeDefaultView"
                             ? kWholeRun
                             : upTo + " _UnhandledException RuntimePerformFinalizers RuntimeExit."))
            << step;
    }
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
    EXPECT_EQ(
        (std::vector<std::int64_t>{app->MajorVersion(), app->MinorVersion(), app->BugVersion(),
                                   app->NonReleaseVersion(), app->StageCode(), app->RegionCode()}),
        (std::vector<std::int64_t>{4, 0, 0, 0, 3, 0}));
    EXPECT_EQ(app->LongVersion() + " " + app->ShortVersion() + " " + app->PackageInfo(),
              std::string(AboutWnd::kAttribution) + " 4.0 Korvane");
    EXPECT_EQ(app->MenuBar(), &korvane::Menu::Instance());
    EXPECT_EQ(Notifications::dispatchTo().back().Value(), app);
    EXPECT_EQ(platform::_GetImplicitWindow(AboutWnd::kClassName), nullptr);
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
        return std::string(FileTypes::pAllFileTypes.empty() ? "A" : "") +
               (FileTypes::pText == nullptr ? "T" : "") +
               (FileTypes::pUntitledType == nullptr ? "U" : "") +
               (menu.Value() == nullptr ? "M" : "") + (Globals::btn == 0 ? "b" : "") +
               (Globals::k1 == 0 ? "k" : "") + (Globals::p == 0.0 ? "p" : "") +
               (Globals::t == 0.0 ? "t" : "");
    };

    std::string after;
    for (platform::Initializer entry : korvane::Initializers()) {
        entry();
        after += reset() + " ";
    }

    EXPECT_EQ(after, "A AT ATU ATU ATUM ATUM ATUM ATUM ATUM ATUM ATUMb ATUMbk ATUMbkp ATUMbkpt ");
}

// The appearance observer, from Qt's report of a new palette or theme to the application's
// AppearanceChanged: queued, delivered at the timer's turn to the living clients in order. The
// application's class here implements AppearanceChanged; Korvane's own does not.
struct AppearanceWatcher : korvane::Korvane {
    explicit AppearanceWatcher(std::vector<std::string>& into) : log(into) {}
    bool IsEventImplemented(const std::string& event) const override {
        return event == "AppearanceChanged";
    }
    void _MacOSNotificationReceived(const std::string& name, platform::Object* object,
                                    const Notifications::UserInfo& userInfo) override {
        log.push_back(name);
        Korvane::_MacOSNotificationReceived(name, object, userInfo);
    }
    void Event_AppearanceChanged() override { log.push_back("AppearanceChanged"); }
    std::vector<std::string>& log;
};

TEST(AppearanceObserver, ANewPaletteOrThemeReachesTheLivingApplicationsOnceEachInOrder) {
    platform::RuntimeInit();
    std::vector<std::string> log, goneLog;
    AppearanceWatcher app(log);
    AppearanceWatcher{goneLog};  // an application that is gone before the change
    QWidget one, two;            // the change reaches every window; the clients hear of it once
    one.show();
    two.show();

    Notifications::impl_GotCalled("SomethingElse", nullptr, {});
    QPalette changed = QApplication::palette();
    changed.setColor(QPalette::Window, QColor(0x20, 0x20, 0x28));
    QApplication::setPalette(changed);
    QEvent themeChange(QEvent::ThemeChange);
    QCoreApplication::sendEvent(one.windowHandle(), &themeChange);
    QCoreApplication::sendEvent(two.windowHandle(), &themeChange);
    EXPECT_EQ(log, std::vector<std::string>{});  // nothing is told inside Qt's own call
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.size() >= 5; }, 5000));
    QTest::qWait(50);

    EXPECT_EQ(log, (std::vector<std::string>{"SomethingElse", Notifications::kColorsChanged,
                                             "AppearanceChanged", Notifications::kThemeChanged,
                                             "AppearanceChanged"}));
    EXPECT_EQ(Notifications::dispatchTo().size(), 1u);  // the gone application is dropped
}

}  // namespace
