// The order of the Tab chain and its stops, worked out on plain rectangles and flags so that it
// holds whatever the widgets behind them (tab_chain.h puts it on a window's widgets).
//
// The chain follows reading order. On the window's content, the frames and the controls outside
// any frame follow each other top to bottom, then left to right; a frame brings the controls
// inside it, first its own children by TabIndex (creation order breaks ties), then those that lie
// within its rectangle on the window, by TabIndex. Records number some frames against reading
// order ("Sample 2" before "Sample 1"), which Tab does not follow. A control that holds others is
// no link of the chain, only the controls that hold none are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform::qt {

// A control as the chain sees it, in creation order.
struct TabPlace {
    static constexpr std::ptrdiff_t kOnWindow = -1;
    static constexpr std::ptrdiff_t kElsewhere = -2;

    std::int64_t left = 0, top = 0, width = 0, height = 0;  // on the window
    std::int64_t tabIndex = 0;
    bool frame = false;  // a frame (group box), which may enclose window-level controls
    // The place whose widget holds this one, kOnWindow for the window's content, or kElsewhere
    // for a widget outside the window: such a control is no link.
    std::ptrdiff_t parent = kOnWindow;
};

// Whether the frame's rectangle holds the control's.
bool Encloses(const TabPlace& frame, const TabPlace& control);
// The first frame on the window's content whose rectangle holds place `at`, if any.
std::optional<std::size_t> EnclosingFrame(const std::vector<TabPlace>& places, std::size_t at);
// The places of the chain, by index, in chain order.
std::vector<std::size_t> TabOrder(const std::vector<TabPlace>& places);

// A link of the chain as Tab finds it now.
struct TabLink {
    bool shown = true;  // visible, its parents too
    bool enabled = true;
    bool takesTab = true;  // TabStop
    // Radio buttons that exclude each other share a group number (their parent's); 0 is none.
    std::size_t radioGroup = 0;
    bool chosen = false;  // a radio button that is on
};

// Whether Tab stops at link `at`: shown, enabled and TabStop. The radio buttons of one group are
// one stop, as on any desktop: the one chosen or, where none is, the first shown; the group takes
// Tab where any of its shown buttons does (Qt moves the focus policy among them by itself).
bool IsTabStop(const std::vector<TabLink>& chain, std::size_t at);
// The stop that Tab (forward) or Shift+Tab reaches from link `from` (none: from outside the
// chain), going round; none when the chain has no stop.
std::optional<std::size_t> NextTabStop(const std::vector<TabLink>& chain,
                                       std::optional<std::size_t> from, bool forward);

}  // namespace platform::qt
