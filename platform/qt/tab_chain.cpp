#include "platform/qt/tab_chain.h"

#include <QApplication>
#include <algorithm>
#include <map>

#include "platform/qt/control_widgets.h"
#include "platform/qt/tab_order.h"
#include "platform/qt/window.h"

namespace platform::qt {

namespace {

std::vector<RectControl*> RectControls(const Window& window) {
    std::vector<RectControl*> controls;
    for (std::size_t i = 0; i < window.ControlCount(); ++i) {
        auto* rect = dynamic_cast<RectControl*>(window.ControlAt(i));
        if (rect != nullptr && rect->Widget() != nullptr) {
            controls.push_back(rect);
        }
    }
    return controls;
}

// Where each control lies, and which of them (or the window's content) holds its widget.
std::vector<TabPlace> PlacesOf(const std::vector<RectControl*>& controls, const QWidget* content) {
    std::map<const QWidget*, std::ptrdiff_t> holders{{content, TabPlace::kOnWindow}};
    for (std::size_t i = 0; i < controls.size(); ++i) {
        holders[controls[i]->Widget()] = std::ptrdiff_t(i);
    }
    std::vector<TabPlace> places;
    for (const RectControl* control : controls) {
        const auto holder = holders.find(control->Widget()->parentWidget());
        places.push_back({control->Left(), control->Top(), control->Width(), control->Height(),
                          control->TabIndex(),
                          dynamic_cast<BoxWidget*>(control->Widget()) != nullptr,
                          holder != holders.end() ? holder->second : TabPlace::kElsewhere});
    }
    return places;
}

// Each link as Tab finds it now; the radio buttons of one parent that exclude each other are
// one group.
std::vector<TabLink> LinksOf(const std::vector<QWidget*>& chain) {
    std::map<const QWidget*, std::size_t> groups;
    std::vector<TabLink> links;
    for (const QWidget* widget : chain) {
        TabLink link{widget->isVisible(), widget->isEnabled(),
                     (widget->focusPolicy() & Qt::TabFocus) != 0};
        auto* radio = qobject_cast<const QRadioButton*>(widget);
        if (radio != nullptr && radio->autoExclusive()) {
            link.radioGroup =
                groups.try_emplace(radio->parentWidget(), groups.size() + 1).first->second;
            link.chosen = radio->isChecked();
        }
        links.push_back(link);
    }
    return links;
}

}  // namespace

std::vector<QWidget*> TabChain(const Window& window) {
    const std::vector<RectControl*> controls = RectControls(window);
    std::vector<QWidget*> chain;
    for (std::size_t at : TabOrder(PlacesOf(controls, window.ContentWidget()))) {
        chain.push_back(controls[at]->Widget());
    }
    return chain;
}

void RebuildTabChain(Window& window) {
    const std::vector<QWidget*> chain = TabChain(window);
    for (std::size_t i = 1; i < chain.size(); ++i) {
        QWidget::setTabOrder(chain[i - 1], chain[i]);
    }
}

// Tab and Shift+Tab go through the window's own chain, not Qt's: Qt keeps its chain in the order
// widgets were made and moved, and re-ordering it pairwise does not hold where frames hold some
// controls and not others.
bool MoveFocusAlongTabChain(const Window& window, bool forward) {
    const std::vector<QWidget*> chain = TabChain(window);
    const auto focus = std::find(chain.begin(), chain.end(), QApplication::focusWidget());
    const auto from =
        focus == chain.end() ? std::nullopt : std::optional<std::size_t>(focus - chain.begin());
    const auto stop = NextTabStop(LinksOf(chain), from, forward);
    if (!stop) {
        return false;
    }
    chain[*stop]->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

// Radio buttons drawn inside a frame are that frame's group, as a reader sees them: they move
// into the frame's widget, so a screen reader hears the frame's name as the group's name and
// the frame's focus goes to them. Their place on the window does not change.
void GatherRadioButtonsIntoFrames(Window& window) {
    const std::vector<RectControl*> controls = RectControls(window);
    const std::vector<TabPlace> places = PlacesOf(controls, window.ContentWidget());
    for (std::size_t at = 0; at < controls.size(); ++at) {
        RectControl* control = controls[at];
        if (dynamic_cast<RadioWidget*>(control->Widget()) == nullptr ||
            !control->InitialParent().empty()) {
            continue;
        }
        if (const auto frame = EnclosingFrame(places, at)) {
            control->EnterFrame(*controls[*frame]);
        }
    }
}

}  // namespace platform::qt
