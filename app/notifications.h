// The observer of the desktop's appearance. Every application object registers itself as a
// client when it is made; the first Register sets up the observer. A change of the desktop's
// theme or colours arrives as a notification, waits in NotificationQueue, and the next turn of
// the timer hands it to every living client, oldest notification first; clients that have gone
// are dropped afterwards.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/core/object.h"

namespace platform {
class Timer;
}  // namespace platform

namespace korvane::_MacOSDistributedNotifications {

// The names a change of the desktop arrives under.
inline constexpr const char* kThemeChanged = "AppleInterfaceThemeChangedNotification";
inline constexpr const char* kColorsChanged = "AppleColorPreferencesChangedNotification";

using UserInfo = std::map<std::string, std::string>;

// A client: an object that is told of every notification.
class iNotify {
  public:
    virtual void _MacOSNotificationReceived(const std::string& name, platform::Object* object,
                                            const UserInfo& userInfo) = 0;

  protected:
    ~iNotify() = default;
};

struct NotificationObject {
    std::string name;
    platform::Object* object = nullptr;  // the sender; this desktop names none
    UserInfo userInfo;
};

// Adds a client, which must be an iNotify. Sets up the observer first if it is not there yet; if
// it cannot be set up (there is no application to watch), the client is not recorded and nothing
// else happens.
void Register(platform::Object& client);
// Makes the timer and the observer. False when the observer could not be made.
bool Setup();
// A notification has arrived: queue it and start the timer's next turn.
void impl_GotCalled(const std::string& name, platform::Object* object, const UserInfo& userInfo);
// The timer's action: delivers the queued notifications, then drops the clients that are gone.
void SendToClients(platform::Timer& timer);

// The state, for the tests and the curious.
const std::vector<platform::WeakRef>& dispatchTo();
const std::vector<NotificationObject>& NotificationQueue();
platform::Timer* mCallDelayTimer();  // nil until Setup

}  // namespace korvane::_MacOSDistributedNotifications
