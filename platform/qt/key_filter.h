// The keys a window hears as its KeyDown. Private to platform/qt.
//
// Every key press that no field and no shortcut took is the window's KeyDown, also a function
// key, a combination with Ctrl or Alt and a modifier tapped alone: pressed and released with no
// other key between. An application-wide filter notes the taps, since every key press of the
// application, shortcuts included, passes it, so a combination is seen even where no window gets
// it.
#pragma once

class QKeyEvent;

namespace platform {

class Window;

namespace qt {

// From now on, notes the modifier taps of the application that runs now.
void WatchModifierTaps();
// A press that reached the window's frame, as its KeyDown; true when the window took it.
bool RaiseKeyDown(Window& window, const QKeyEvent& press);
// A release that reached the window's frame: a tapped modifier is KeyDown with an empty key
// string; true when the window took it.
bool RaiseTapKeyDown(Window& window, const QKeyEvent& release);

}  // namespace qt
}  // namespace platform
