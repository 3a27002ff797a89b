// The appearance observer: delivery order, clients that go, the desktop's own changes as Qt
// reports them, and what an application makes of the notification names.
#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/korvane.h"
#include "app/notifications.h"
#include "platform/qt/runtime.h"

namespace {

namespace Notifications = korvane::_MacOSDistributedNotifications;
using Log = std::vector<std::string>;

// A client that logs what it is told, and an application whose class implements
// AppearanceChanged and counts it.
struct Client : platform::Object, Notifications::iNotify {
    Client(const char* name, Log& log) : name(name), log(log) { Notifications::Register(*this); }
    void _MacOSNotificationReceived(const std::string& notification, platform::Object* /*object*/,
                                    const Notifications::UserInfo& /*userInfo*/) override {
        log.push_back(name + ":" + notification);
        if (whenTold) {
            whenTold();
        }
    }
    std::string name;
    Log& log;
    std::function<void()> whenTold;
};

struct AppearanceWatcher : korvane::Korvane {
    bool IsEventImplemented(const std::string& event) const override {
        return event == "AppearanceChanged";
    }
    void Event_AppearanceChanged() override { ++changes; }
    int changes = 0;
};

class AppearanceObserverTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { platform::RuntimeInit(); }
    Log log;
};

TEST_F(AppearanceObserverTest, NotificationsReachTheLivingClientsInOrderAtTheTimersTurn) {
    Client a("A", log), c("C", log);
    auto b = std::make_unique<Client>("B", log);
    auto d = std::make_unique<Client>("D", log);
    a.whenTold = [&] { b.reset(); };  // gone while another is told
    d.reset();                        // gone before

    Notifications::impl_GotCalled("one", nullptr, {});
    Notifications::impl_GotCalled("two", nullptr, {});
    EXPECT_EQ(log, Log{});  // nothing is told inside the notification's own call
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.size() == 4; }, 5000));

    EXPECT_EQ(log, (Log{"A:one", "C:one", "A:two", "C:two"}));
    EXPECT_EQ(Notifications::dispatchTo().size(), 2u);  // the gone are dropped
}

TEST_F(AppearanceObserverTest, ANewDesktopPaletteOrThemeArrivesOnceAsItsNotification) {
    Client a("A", log);
    QWidget one, two;  // the change reaches every widget; the clients hear of it once
    one.show();
    two.show();
    QPalette changed = QApplication::palette();
    changed.setColor(QPalette::Window, QColor(0x20, 0x20, 0x28));
    QApplication::setPalette(changed);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !log.empty(); }, 5000));
    QEvent themeChange(QEvent::ThemeChange);  // as Qt tells a new theme: to every window
    QCoreApplication::sendEvent(one.windowHandle(), &themeChange);
    QCoreApplication::sendEvent(two.windowHandle(), &themeChange);
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.size() >= 2; }, 5000));
    QTest::qWait(50);

    EXPECT_EQ(log, (Log{std::string("A:") + Notifications::kColorsChanged,
                        std::string("A:") + Notifications::kThemeChanged}));
}

TEST_F(AppearanceObserverTest, OnlyTheThemeAndColourNamesRaiseAppearanceChanged) {
    AppearanceWatcher app;
    for (const char* name : {"SomethingElse", "", "AppleInterfaceThemeChanged",
                             Notifications::kThemeChanged, Notifications::kColorsChanged}) {
        Notifications::impl_GotCalled(name, nullptr, {});
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return Notifications::NotificationQueue().empty(); }, 5000));
    EXPECT_EQ(app.changes, 2);
}

}  // namespace
