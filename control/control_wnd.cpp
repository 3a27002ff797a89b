#include "control/control_wnd.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "control/control_records.h"
#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "platform/qt/buttons.h"
#include "platform/qt/canvas.h"
#include "platform/qt/frames.h"
#include "platform/qt/spoken.h"
#include "platform/qt/text_controls.h"
#include "windows/menu.h"
#include "windows/pictures.h"

namespace korvane {

using platform::Canvas;
using platform::Delegate;

// The bar goes in before the record, so the window's first show already carries it.
void ControlWnd::Layout() {
    MenuBar(&Menu::Instance());
    platform::ApplyRecord(*this, records::ControlWnd.view());
}

// One control of the window, in creation order: how it is made, its name and its record.
struct ControlWnd::Part {
    platform::Object& (ControlWnd::*make)(const std::string& name);
    const char* name;
    std::string_view record;
};

template <class C>
platform::Object& ControlWnd::Make(const std::string& name) {
    return Create<C>(name);
}

// The form's one canvas is its title: the picture goes in before the record.
template <>
platform::Object& ControlWnd::Make<Canvas>(const std::string& name) {
    Create<Canvas>(name).Backdrop(tlarge());
    return Named<Canvas>(name);
}

namespace {

using W = ControlWnd;

// The handlers a control gets once its record is in, before the next control exists, in the
// order they stand here.
struct Wiring {
    std::string_view control;
    void (*attach)(ControlWnd& window);
};
// One row: the control's event gets the handler named <control>_<event>.
// clang-format off
#define KORVANE_WIRE(control, event) \
    Wiring{#control, [](W& w) { w.control().event = Delegate(w, &W::control##_##event); }}
// clang-format on
constexpr Wiring kWiring[] = {
    KORVANE_WIRE(m2fld, KeyDown),
    KORVANE_WIRE(sd2fld, KeyDown),
    KORVANE_WIRE(m1fld, KeyDown),
    KORVANE_WIRE(sd1fld, KeyDown),
    KORVANE_WIRE(HalbrineTitle, MouseExit),
    KORVANE_WIRE(HalbrineTitle, MouseEnter),
    KORVANE_WIRE(CalcBtn, Action),
    KORVANE_WIRE(ClearBtn, Action),
    KORVANE_WIRE(IBtn, Action),
    KORVANE_WIRE(RBtn, Action),
    KORVANE_WIRE(typeBox, MouseDown),
    KORVANE_WIRE(PushButton1, MouseDown),
};
#undef KORVANE_WIRE

// A wiring row for a control the table does not have would never be attached.
constexpr bool WiresOnlyControlsOfTheTable() {
    return std::ranges::all_of(kWiring, [](const Wiring& wiring) {
        return std::ranges::find(W::kControlNames, wiring.control) != std::end(W::kControlNames);
    });
}
static_assert(WiresOnlyControlsOfTheTable());

}  // namespace

void ControlWnd::CreateControls() {
#define KORVANE_PART(name, Class, ...) {&W::Make<platform::Class>, #name, records::name.view()},
    static constexpr Part kParts[] = {KORVANE_CONTROLS(KORVANE_PART)};
#undef KORVANE_PART
    for (const Part& part : kParts) {
        platform::ApplyRecord((this->*part.make)(part.name), part.record);
        for (const Wiring& wiring : kWiring) {
            if (wiring.control == part.name) {
                wiring.attach(*this);
            }
        }
    }
    NameControlsForScreenReaders();
}

// The fields have no caption of their own, the frame of the radio buttons shows none and "?"
// says nothing of what it does: a screen reader speaks these names instead.
void ControlWnd::NameControlsForScreenReaders() {
    struct Spoken {
        const char* control;
        std::string_view name;
    };
#define KORVANE_SPOKEN(name, Class, place, look, spoken) {#name, spoken},
    static constexpr Spoken kSpoken[] = {KORVANE_CONTROLS(KORVANE_SPOKEN)};
#undef KORVANE_SPOKEN
    for (const Spoken& spoken : kSpoken) {
        if (!spoken.name.empty()) {
            Named<platform::RectControl>(spoken.control).AccessibleName(std::string(spoken.name));
        }
    }
    // Tab does not reach the results, and they appear where the user is not: a screen reader
    // says them as the form shows them, with the captions under them, once a calculation has
    // written them. The form leaves the letter p to the reader.
    using std::string;
    platform::SpeakWhenWritten(*this,
                               {{string(layout::dfText.text), string(layout::dfFld.name), ""},
                                {string(layout::ttext.text), string(layout::tfld.name), ""},
                                {"p", string(layout::pfld.name), string(layout::dtail.text)}});
}

#define KORVANE_ACCESSOR(name, Class, ...)    \
    platform::Class& ControlWnd::name() {     \
        return Named<platform::Class>(#name); \
    }
KORVANE_CONTROLS(KORVANE_ACCESSOR)
#undef KORVANE_ACCESSOR

// The item of that name anywhere in the window's bar, cast to its class.
template <class Item>
Item& ControlWnd::MenuItemNamed(const std::string& name) const {
    return platform::RuntimeCheckCast<Item>(platform::NotNil(MenuBar())._Lookup(name));
}

using platform::AppleMenuItem;
using platform::MenuItem;
using platform::QuitMenuItem;

// clang-format off
MenuItem& ControlWnd::UntitledMenu4() { return MenuItemNamed<MenuItem>("UntitledMenu4"); }
MenuItem& ControlWnd::WindowMenu() { return MenuItemNamed<MenuItem>("WindowMenu"); }
AppleMenuItem& ControlWnd::UntitledMenu5() { return MenuItemNamed<AppleMenuItem>("UntitledMenu5"); }
AppleMenuItem& ControlWnd::AboutHalbrine() { return MenuItemNamed<AppleMenuItem>("AboutHalbrine"); }
MenuItem& ControlWnd::UntitledMenu6() { return MenuItemNamed<MenuItem>("UntitledMenu6"); }
MenuItem& ControlWnd::AboutMenuItem() { return MenuItemNamed<MenuItem>("AboutMenuItem"); }
MenuItem& ControlWnd::ControlMenuItem() { return MenuItemNamed<MenuItem>("ControlMenuItem"); }
MenuItem& ControlWnd::UntitledMenu0() { return MenuItemNamed<MenuItem>("UntitledMenu0"); }
MenuItem& ControlWnd::UntitledMenu7() { return MenuItemNamed<MenuItem>("UntitledMenu7"); }
MenuItem& ControlWnd::EditClear() { return MenuItemNamed<MenuItem>("EditClear"); }
MenuItem& ControlWnd::EditPaste() { return MenuItemNamed<MenuItem>("EditPaste"); }
MenuItem& ControlWnd::EditCopy() { return MenuItemNamed<MenuItem>("EditCopy"); }
MenuItem& ControlWnd::EditCut() { return MenuItemNamed<MenuItem>("EditCut"); }
MenuItem& ControlWnd::UntitledMenu1() { return MenuItemNamed<MenuItem>("UntitledMenu1"); }
MenuItem& ControlWnd::EditUndo() { return MenuItemNamed<MenuItem>("EditUndo"); }
MenuItem& ControlWnd::UntitledMenu2() { return MenuItemNamed<MenuItem>("UntitledMenu2"); }
MenuItem& ControlWnd::UntitledMenu8() { return MenuItemNamed<MenuItem>("UntitledMenu8"); }
QuitMenuItem& ControlWnd::FileQuit() { return MenuItemNamed<QuitMenuItem>("FileQuit"); }
MenuItem& ControlWnd::FilePrint() { return MenuItemNamed<MenuItem>("FilePrint"); }
MenuItem& ControlWnd::UntitledMenu3() { return MenuItemNamed<MenuItem>("UntitledMenu3"); }
// clang-format on

}  // namespace korvane
