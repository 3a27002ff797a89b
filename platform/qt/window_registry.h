// The windows the platform owns, by run-time class name (ImplicitWindow and its kin in window.h),
// and the actions that wait for the end of the event Qt dispatches now. Private to platform/qt.
#pragma once

namespace platform {

class Window;

namespace qt {

// A window that closed leaves the registry and is deleted once this event is over, never inside
// its own event. Nothing for a window the registry does not hold.
void EndAfterThisEvent(Window& window);

}  // namespace qt
}  // namespace platform
