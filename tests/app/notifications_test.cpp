// The appearance observer, from Qt's report of a new palette or theme to the application's
// AppearanceChanged: queued, delivered at the timer's turn to the living clients in order.
#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <memory>
#include <string>
#include <vector>

#include "app/korvane.h"
#include "app/notifications.h"
#include "platform/qt/runtime.h"

namespace {

namespace Notifications = korvane::_MacOSDistributedNotifications;

// An application whose class implements AppearanceChanged; Korvane's own does not.
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
    auto gone = std::make_unique<AppearanceWatcher>(goneLog);
    gone.reset();
    QWidget one, two;  // the change reaches every window; the clients hear of it once
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
