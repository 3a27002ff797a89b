// Which window is the active one, as the platform keeps it beside Qt's, and the Activate event.
// Private to platform/qt; what the rest of it asks (ActiveWindow, the message box's return) is in
// qt_support.h.
#pragma once

namespace platform {

class Window;

namespace qt {

// Qt activated the window: its Activate and EnableMenuItems, unless it only gets the keyboard
// back from a dismissed message box.
void RaiseActivate(Window& window);
// The window is being destroyed: it is no longer the one activated last nor awaited back.
void ForgetWindow(const Window& window);

}  // namespace qt
}  // namespace platform
