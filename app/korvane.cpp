#include "app/korvane.h"

#include <memory>

#include "windows/about_wnd.h"
#include "windows/menu.h"

namespace korvane {

Korvane::Korvane() {
    _MacOSDistributedNotifications::Register(*this);
}

const platform::ClassInfo& Korvane::StaticClass() {
    static const platform::ClassInfo info{"Korvane", &platform::Application::StaticClass(), {}};
    return info;
}

bool Korvane::IsEventImplemented(const std::string& /*event*/) const {
    return false;
}

void Korvane::_MacOSNotificationReceived(const std::string& name, platform::Object* /*object*/,
                                         const _MacOSDistributedNotifications::UserInfo&
                                         /*userInfo*/) {
    if (name != _MacOSDistributedNotifications::kThemeChanged &&
        name != _MacOSDistributedNotifications::kColorsChanged) {
        return;
    }
    // Qt widgets take the desktop's new palette by themselves: no appearance needs making
    // current around the event.
    if (IsEventImplemented("AppearanceChanged")) {
        Event_AppearanceChanged();
    }
}

void _NewAppInstance() {
    auto app = std::make_unique<Korvane>();
    app->Constructor();
    // The Copyright is the attribution the about window shows.
    app->_x_SetVersionData(4, 0, 0, 0, 3, AboutWnd::kAttribution, "4.0", "Korvane");
    app->MenuBar(&Menu::Instance());
    platform::_RuntimeRegisterAppObject(std::move(app));
}

void _MakeDefaultView() {
    // The about window's record makes it visible, so building it is enough.
    AboutWnd::Instance();
}

}  // namespace korvane
