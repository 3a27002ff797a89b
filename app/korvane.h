// The application object and the making of the first window.
//
// _NewAppInstance makes the one Korvane object during start-up: on creation it becomes a client
// of the appearance observer, then it gets its version data and the default menu bar, and the
// platform keeps it to the end of the run. Korvane implements no application event, so it is a
// shell for those values. _MakeDefaultView, called back by the platform once it is up, brings
// up the about window, which shows itself.
#pragma once

#include <string>

#include "app/notifications.h"
#include "platform/qt/application.h"

namespace korvane {

class Korvane : public platform::Classed<Korvane, platform::Application>,
                public _MacOSDistributedNotifications::iNotify {
  public:
    Korvane();  // the object's initialisation: it registers with the appearance observer
    static const platform::ClassInfo& StaticClass();

    void Constructor() override {}
    // Korvane implements none of the application events.
    bool IsEventImplemented(const std::string& event) const override;

    // A change of the desktop's theme or colours raises AppearanceChanged where it is implemented;
    // any other notification changes nothing.
    void _MacOSNotificationReceived(
        const std::string& name, platform::Object* object,
        const _MacOSDistributedNotifications::UserInfo& userInfo) override;
};

void _NewAppInstance();   // makes, fills and registers the application object
void _MakeDefaultView();  // the first window: the about window

}  // namespace korvane
