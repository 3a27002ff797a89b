// The appearance observer: delivery order, clients that go, the desktop's own changes as Qt
// reports them, and what the application object makes of the notification names.
#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QTest>
#include <QWidget>
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

class Client : public platform::Object, public Notifications::iNotify {
  public:
    Client(std::string name, Log& log) : name_(std::move(name)), log_(log) {}
    void _MacOSNotificationReceived(const std::string& name, platform::Object* /*object*/,
                                    const Notifications::UserInfo& /*userInfo*/) override {
        log_.push_back(name_ + ":" + name);
        if (whenTold) {
            whenTold();
        }
    }
    std::function<void()> whenTold;

  private:
    std::string name_;
    Log& log_;
};

// An application whose class implements AppearanceChanged.
class AppearanceWatcher : public korvane::Korvane {
  public:
    bool IsEventImplemented(const std::string& event) const override {
        return event == "AppearanceChanged";
    }
    void Event_AppearanceChanged() override { ++changes; }
    int changes = 0;
};

std::vector<platform::Object*> Clients() {
    std::vector<platform::Object*> clients;
    for (const platform::WeakRef& ref : Notifications::dispatchTo()) {
        clients.push_back(ref.Value());
    }
    return clients;
}

void Deliver() {
    Notifications::SendToClients(platform::NotNil(Notifications::mCallDelayTimer()));
}

class AppearanceObserverTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { platform::RuntimeInit(); }
    // The clients of earlier tests are gone: one delivery drops them all.
    void SetUp() override {
        if (Notifications::mCallDelayTimer() != nullptr) {
            Notifications::impl_GotCalled("", nullptr, {});
            Deliver();
        }
        log.clear();
    }
    Log log;
};

TEST_F(AppearanceObserverTest, TwoNotificationsReachEveryClientInTheOrderTheyCameAtTheTimersTurn) {
    Client a("A", log), b("B", log);
    Notifications::Register(a);
    Notifications::Register(b);

    Notifications::impl_GotCalled("first", nullptr, {});
    Notifications::impl_GotCalled("second", nullptr, {});

    EXPECT_EQ(log, Log{});  // nothing is told inside the notification's own call
    EXPECT_EQ(Notifications::NotificationQueue().size(), 2u);
    EXPECT_EQ(Notifications::mCallDelayTimer()->Mode(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.size() == 4; }, 5000));
    EXPECT_EQ(log, (Log{"A:first", "B:first", "A:second", "B:second"}));
    EXPECT_TRUE(Notifications::NotificationQueue().empty());
}

TEST_F(AppearanceObserverTest, AClientGoneBeforeOrWhileAnotherIsToldIsSkippedAndDropped) {
    {
        Client a("A", log), c("C", log);
        auto b = std::make_unique<Client>("B", log);
        Notifications::Register(a);
        Notifications::Register(*b);
        Notifications::Register(c);
        b.reset();
        Notifications::impl_GotCalled("n", nullptr, {});
        Deliver();
        EXPECT_EQ(log, (Log{"A:n", "C:n"}));
        EXPECT_EQ(Clients(), (std::vector<platform::Object*>{&a, &c}));
    }
    Notifications::impl_GotCalled("", nullptr, {});  // drops the two gone clients
    Deliver();
    log.clear();

    Client a("A", log), c("C", log);
    auto b = std::make_unique<Client>("B", log);
    Notifications::Register(a);
    Notifications::Register(*b);
    Notifications::Register(c);
    a.whenTold = [&] { b.reset(); };

    Notifications::impl_GotCalled("one", nullptr, {});
    Notifications::impl_GotCalled("two", nullptr, {});
    Deliver();

    EXPECT_EQ(log, (Log{"A:one", "C:one", "A:two", "C:two"}));
    EXPECT_EQ(Clients(), (std::vector<platform::Object*>{&a, &c}));
}

TEST_F(AppearanceObserverTest, GoneClientsStayListedUntilADeliveryHasWorkToDo) {
    auto gone = std::make_unique<Client>("G", log);
    Notifications::Register(*gone);
    gone.reset();

    Deliver();  // nothing queued

    EXPECT_EQ(Clients(), (std::vector<platform::Object*>{nullptr}));
}

TEST_F(AppearanceObserverTest, AnObjectThatTakesNoNotificationsCannotRegister) {
    platform::Object plain;
    EXPECT_THROW(Notifications::Register(plain), platform::IllegalCastException);
    EXPECT_TRUE(Notifications::dispatchTo().empty());
}

TEST_F(AppearanceObserverTest, ANewDesktopPaletteOrThemeArrivesOnceAsItsNotification) {
    Client a("A", log);
    Notifications::Register(a);
    QWidget one, two;  // the change reaches every widget; the clients hear of it once
    one.show();
    two.show();
    const QPalette before = QApplication::palette();
    QPalette changed = before;
    changed.setColor(QPalette::Window, QColor(0x20, 0x20, 0x28));

    QApplication::setPalette(changed);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !log.empty(); }, 5000));
    QApplication::setPalette(before);
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.size() >= 2; }, 5000));
    QTest::qWait(50);
    EXPECT_EQ(log, (Log{"A:AppleColorPreferencesChangedNotification",
                        "A:AppleColorPreferencesChangedNotification"}));

    log.clear();  // as Qt tells a new theme: to every window at once
    QEvent themeChange(QEvent::ThemeChange);
    QCoreApplication::sendEvent(one.windowHandle(), &themeChange);
    QCoreApplication::sendEvent(two.windowHandle(), &themeChange);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !log.empty(); }, 5000));
    QTest::qWait(50);
    EXPECT_EQ(log, (Log{"A:AppleInterfaceThemeChangedNotification"}));
}

TEST_F(AppearanceObserverTest, OnlyTheThemeAndColourNamesRaiseAppearanceChanged) {
    AppearanceWatcher app;

    for (const char* name : {"SomethingElse", "", "AppleInterfaceThemeChanged"}) {
        Notifications::impl_GotCalled(name, nullptr, {});
    }
    Deliver();
    EXPECT_EQ(app.changes, 0);

    Notifications::impl_GotCalled(Notifications::kThemeChanged, nullptr, {});
    Notifications::impl_GotCalled(Notifications::kColorsChanged, nullptr, {});
    Deliver();
    EXPECT_EQ(app.changes, 2);
}

TEST(AppearanceObserverWithoutApplication, RegisterGivesUpQuietlyWhenThereIsNoDesktopToWatch) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a new process, with no QApplication
    EXPECT_EXIT(
        {
            Log log;
            Client a("A", log);
            Notifications::Register(a);
            std::exit(Notifications::dispatchTo().empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
