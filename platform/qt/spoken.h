// What a screen reader says by itself: fields whose text appears without the focus moving to
// them. A sighted user sees results appear; a blind user would have to go and look for them, and
// Tab may not even reach them. A window names such fields once; whenever an event has written
// the text of any of them, the screen reader hears all of them once the event is over, politely
// (a notification of the window's status line), without the focus moving and without anything
// on the screen changing.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace platform {

class Window;

// Said as "<caption> <text> <after>"; a field that is hidden or empty is left out.
struct SpokenField {
    std::string caption;
    std::string field;  // the control's name
    std::string after;
};

// The fields, in the order they are said, joined by ", ".
void SpeakWhenWritten(Window& window, std::vector<SpokenField> fields);

// Tests hear here what is said, as it is handed to screen readers (which need an accessibility
// bus to be told anything). Empty: nobody listens.
void SetSpokenHook(std::function<void(const std::string& words)> hook);

}  // namespace platform
