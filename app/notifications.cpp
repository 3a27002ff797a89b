#include "app/notifications.h"

#include "platform/core/failure.h"
#include "platform/qt/appearance.h"
#include "platform/qt/timer.h"

namespace korvane::_MacOSDistributedNotifications {

namespace {

struct Statics {
    std::vector<platform::WeakRef> dispatchTo;          // clients, in order of registration
    std::vector<NotificationObject> NotificationQueue;  // oldest first
    std::unique_ptr<platform::Timer> mCallDelayTimer;
    bool mObserverInstance = false;  // the desktop is being watched
};

Statics& State() {
    static Statics statics;
    return statics;
}

iNotify& AsClient(platform::Object& object) {
    auto* client = dynamic_cast<iNotify*>(&object);
    if (client == nullptr) {
        throw platform::IllegalCastException(std::string(object.Class().name) +
                                             " takes no appearance notifications");
    }
    return *client;
}

// This desktop tells a change by its kind; the clients know it by its notification name.
std::string NotificationName(const std::string& kind) {
    if (kind == platform::kAppearanceTheme) {
        return kThemeChanged;
    }
    if (kind == platform::kAppearanceColors) {
        return kColorsChanged;
    }
    return kind;
}

void DesktopChanged(const std::string& kind) {
    impl_GotCalled(NotificationName(kind), nullptr, {});
}

}  // namespace

void Register(platform::Object& client) {
    AsClient(client);
    if (!State().mObserverInstance && !Setup()) {
        return;
    }
    State().dispatchTo.emplace_back(&client);
}

bool Setup() {
    Statics& state = State();
    state.mCallDelayTimer = std::make_unique<platform::Timer>();
    state.mCallDelayTimer->Mode(0);
    state.mCallDelayTimer->Period(1);
    state.mCallDelayTimer->Action = SendToClients;
    state.mObserverInstance = platform::OnDesktopAppearanceChange(DesktopChanged);
    return state.mObserverInstance;
}

void impl_GotCalled(const std::string& name, platform::Object* object, const UserInfo& userInfo) {
    Statics& state = State();
    state.NotificationQueue.push_back({name, object, userInfo});
    platform::Timer& timer = platform::NotNil(state.mCallDelayTimer.get());
    if (timer.Mode() == 0) {
        timer.Mode(1);
    }
    timer.Reset();
}

void SendToClients(platform::Timer& /*timer*/) {
    Statics& state = State();
    if (state.NotificationQueue.empty()) {
        return;
    }
    while (!state.NotificationQueue.empty()) {
        // A copy, and indexes rather than iterators: a client may queue a notification or
        // register another client while it is being told.
        const NotificationObject notification = state.NotificationQueue.front();
        for (std::size_t i = 0; i < state.dispatchTo.size(); ++i) {
            if (platform::Object* client = state.dispatchTo[i].Value()) {
                AsClient(*client)._MacOSNotificationReceived(notification.name, notification.object,
                                                             notification.userInfo);
            }
        }
        state.NotificationQueue.erase(state.NotificationQueue.begin());
    }
    for (std::size_t i = state.dispatchTo.size(); i-- > 0;) {
        if (state.dispatchTo[i].Value() == nullptr) {
            state.dispatchTo.erase(state.dispatchTo.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
}

const std::vector<platform::WeakRef>& dispatchTo() {
    return State().dispatchTo;
}

const std::vector<NotificationObject>& NotificationQueue() {
    return State().NotificationQueue;
}

platform::Timer* mCallDelayTimer() {
    return State().mCallDelayTimer.get();
}

}  // namespace korvane::_MacOSDistributedNotifications
