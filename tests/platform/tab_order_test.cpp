// The Tab chain's order and stops on plain rectangles and flags, case by case: reading order of
// the window's blocks, TabIndex within a frame, a radio group as one stop, TabStop 0 out.
#include "platform/qt/tab_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::qt::NextTabStop;
using platform::qt::TabLink;
using platform::qt::TabOrder;
using platform::qt::TabPlace;
using Chain = std::vector<std::size_t>;

constexpr std::ptrdiff_t kWindow = TabPlace::kOnWindow;

TabPlace Box(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height,
             std::int64_t tabIndex = 0, std::ptrdiff_t parent = kWindow) {
    return {left, top, width, height, tabIndex, false, parent};
}

TabPlace Frame(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height,
               std::int64_t tabIndex = 0) {
    return {left, top, width, height, tabIndex, true, kWindow};
}

struct OrderCase {
    std::string what;
    std::vector<TabPlace> places;  // in creation order
    Chain chain;
};

TEST(TabOrderTest, FollowsReadingOrderThenTabIndexWithinAFrame) {
    const std::vector<OrderCase> cases = {
        {"a higher control comes first, whatever its left or its TabIndex",
         {Box(10, 50, 40, 20, 0), Box(200, 10, 40, 20, 5)},
         {1, 0}},
        {"on one line, left before right",
         {Box(200, 10, 40, 20, 0), Box(10, 10, 40, 20, 1)},
         {1, 0}},
        {"a frame's children by TabIndex, creation order breaking ties, not by place",
         {Frame(0, 0, 300, 200), Box(10, 150, 40, 20, 2, 0), Box(10, 10, 40, 20, 1, 0),
          Box(10, 80, 40, 20, 1, 0)},
         {2, 3, 1}},
        {"window controls within a frame's rectangle follow its children, by TabIndex",
         {Frame(0, 0, 300, 200), Box(10, 10, 40, 20, 3), Box(10, 60, 40, 20, 0, 0),
          Box(10, 100, 40, 20, 1)},
         {2, 3, 1}},
        {"frames by place, though their TabIndex says otherwise",
         {Frame(0, 100, 300, 80, 0), Box(10, 110, 40, 20, 0, 0), Frame(0, 0, 300, 80, 1),
          Box(10, 10, 40, 20, 0, 2)},
         {3, 1}},
        {"a frame that holds nothing is a link of its own, a control held elsewhere none",
         {Frame(0, 0, 100, 100), Box(0, 200, 40, 20, 0, TabPlace::kElsewhere)},
         {0}},
        {"a control only partly inside a frame stands on its own",
         {Frame(0, 0, 100, 100), Box(90, 50, 40, 20), Box(10, 120, 40, 20)},
         {0, 1, 2}},
    };
    for (const OrderCase& c : cases) {
        EXPECT_EQ(TabOrder(c.places), c.chain) << c.what;
    }
}

TabLink Link(bool takesTab = true) {
    return TabLink{true, true, takesTab};
}

TabLink Radio(std::size_t group, bool chosen = false) {
    TabLink link = Link();
    link.radioGroup = group;
    link.chosen = chosen;
    return link;
}

TabLink Hidden(TabLink link = Link()) {
    link.shown = false;
    return link;
}

TabLink Disabled() {
    TabLink link = Link();
    link.enabled = false;
    return link;
}

struct StopCase {
    std::string what;
    std::vector<TabLink> chain;
    Chain forward;   // the stops Tab visits from outside the chain, once round
    Chain backward;  // the same for Shift+Tab
};

// The stops that Tab reaches, one after another, until it comes back to the first.
Chain Walk(const std::vector<TabLink>& chain, bool forward) {
    Chain stops;
    auto at = NextTabStop(chain, std::nullopt, forward);
    while (at && (stops.empty() || *at != stops.front())) {
        stops.push_back(*at);
        at = NextTabStop(chain, at, forward);
    }
    return stops;
}

TEST(TabOrderTest, StopsAtShownEnabledTabStopsAndOncePerRadioGroup) {
    const std::vector<StopCase> cases = {
        {"every link with TabStop, both ways", {Link(), Link(), Link()}, {0, 1, 2}, {2, 1, 0}},
        {"TabStop 0 is out", {Link(), Link(false), Link()}, {0, 2}, {2, 0}},
        {"hidden and disabled links are out", {Hidden(), Link(), Disabled()}, {1}, {1}},
        {"a radio group is one stop: its first button while none is chosen",
         {Link(), Radio(1), Radio(1), Link()},
         {0, 1, 3},
         {3, 1, 0}},
        {"the chosen button is the group's stop",
         {Radio(1), Radio(1, true), Radio(2), Radio(2)},
         {1, 2},
         {2, 1}},
        {"a hidden button gives way to the next shown one of its group",
         {Hidden(Radio(1)), Radio(1), Radio(1)},
         {1},
         {1}},
        {"no stop at all", {Link(false), Hidden()}, {}, {}},
    };
    for (const StopCase& c : cases) {
        EXPECT_EQ(Walk(c.chain, true), c.forward) << c.what;
        EXPECT_EQ(Walk(c.chain, false), c.backward) << c.what;
    }
}

TEST(TabOrderTest, GoesOnFromTheLinkThatHasTheFocus) {
    const std::vector<TabLink> chain = {Link(), Link(false), Link()};
    EXPECT_EQ(NextTabStop(chain, 0, true), 2u);
    EXPECT_EQ(NextTabStop(chain, 2, true), 0u);  // round to the start
    EXPECT_EQ(NextTabStop(chain, 0, false), 2u);
    EXPECT_EQ(NextTabStop(chain, 1, false), 0u);  // from a link that is no stop
}

}  // namespace
