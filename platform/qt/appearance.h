// Changes of the desktop's appearance, as Qt reports them to the application: a new theme (the
// style, icons or dark mode of the desktop) or a new colour scheme (the application palette).
// A change that reaches many widgets at once is reported once.
#pragma once

#include <functional>
#include <string>

namespace platform {

inline constexpr const char* kAppearanceTheme = "theme";    // the desktop's theme changed
inline constexpr const char* kAppearanceColors = "colors";  // the desktop's colours changed

// Calls `observer` with the kind of each change, on the main thread, in a later turn of the run
// loop, from now to the end of the application. False when there is no application to watch
// yet; then nothing is watched.
bool OnDesktopAppearanceChange(std::function<void(const std::string& kind)> observer);

}  // namespace platform
