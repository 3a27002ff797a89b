#include "platform/qt/tab_order.h"

#include <algorithm>
#include <functional>
#include <map>

namespace platform::qt {

bool Encloses(const TabPlace& frame, const TabPlace& control) {
    return control.left >= frame.left && control.top >= frame.top &&
           control.left + control.width <= frame.left + frame.width &&
           control.top + control.height <= frame.top + frame.height;
}

std::optional<std::size_t> EnclosingFrame(const std::vector<TabPlace>& places, std::size_t at) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        const TabPlace& frame = places[i];
        if (i != at && frame.frame && frame.parent == TabPlace::kOnWindow &&
            Encloses(frame, places[at])) {
            return i;
        }
    }
    return std::nullopt;
}

namespace {

std::vector<std::size_t> ChildrenOf(const std::vector<TabPlace>& places, std::ptrdiff_t parent) {
    std::vector<std::size_t> children;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].parent == parent) {
            children.push_back(i);
        }
    }
    return children;
}

void SortByTabIndex(const std::vector<TabPlace>& places, std::vector<std::size_t>& indices) {
    std::stable_sort(indices.begin(), indices.end(), [&](std::size_t a, std::size_t b) {
        return places[a].tabIndex < places[b].tabIndex;
    });
}

}  // namespace

std::vector<std::size_t> TabOrder(const std::vector<TabPlace>& places) {
    std::vector<std::size_t> chain;
    std::function<void(std::size_t)> visit = [&](std::size_t at) {
        const std::size_t before = chain.size();
        std::vector<std::size_t> inside = ChildrenOf(places, std::ptrdiff_t(at));
        SortByTabIndex(places, inside);
        for (std::size_t child : inside) {
            visit(child);
        }
        if (chain.size() == before) {
            chain.push_back(at);
        }
    };

    std::map<std::size_t, std::vector<std::size_t>> held;  // frame -> window controls within it
    std::vector<std::size_t> blocks;
    for (std::size_t at : ChildrenOf(places, TabPlace::kOnWindow)) {
        if (const auto frame = EnclosingFrame(places, at)) {
            held[*frame].push_back(at);
        } else {
            blocks.push_back(at);
        }
    }
    std::stable_sort(blocks.begin(), blocks.end(), [&](std::size_t i, std::size_t j) {
        const TabPlace& a = places[i];
        const TabPlace& b = places[j];
        return a.top != b.top ? a.top < b.top : a.left < b.left;
    });
    for (std::size_t block : blocks) {
        visit(block);
        std::vector<std::size_t>& within = held[block];
        SortByTabIndex(places, within);
        for (std::size_t at : within) {
            visit(at);
        }
    }
    return chain;
}

namespace {

bool IsRadioStop(const std::vector<TabLink>& chain, std::size_t at) {
    std::optional<std::size_t> first, chosen;
    bool groupTakesTab = false;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const TabLink& sibling = chain[i];
        if (sibling.radioGroup != chain[at].radioGroup || !sibling.shown) {
            continue;
        }
        first = first ? first : i;
        chosen = sibling.chosen ? i : chosen;
        groupTakesTab = groupTakesTab || sibling.takesTab;
    }
    return groupTakesTab && at == (chosen ? *chosen : *first);
}

}  // namespace

bool IsTabStop(const std::vector<TabLink>& chain, std::size_t at) {
    const TabLink& link = chain[at];
    if (!link.shown || !link.enabled) {
        return false;
    }
    return link.radioGroup != 0 ? IsRadioStop(chain, at) : link.takesTab;
}

std::optional<std::size_t> NextTabStop(const std::vector<TabLink>& chain,
                                       std::optional<std::size_t> from, bool forward) {
    const auto count = static_cast<std::ptrdiff_t>(chain.size());
    std::ptrdiff_t index = from ? std::ptrdiff_t(*from) : (forward ? -1 : count);
    for (std::ptrdiff_t step = 0; step < count; ++step) {
        index = ((forward ? index + 1 : index - 1) % count + count) % count;
        if (IsTabStop(chain, std::size_t(index))) {
            return std::size_t(index);
        }
    }
    return std::nullopt;
}

}  // namespace platform::qt
