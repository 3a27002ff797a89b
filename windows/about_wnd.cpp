#include "windows/about_wnd.h"

#include <string_view>

#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "platform/qt/canvas.h"
#include "platform/qt/text_controls.h"
#include "platform/qt/timer.h"
#include "windows/pictures.h"

namespace korvane {

namespace {

using namespace platform::rec;

constexpr std::int64_t kInNoArray = -2147483648;  // Index of a control that stands in no array

// Type 2 is the untitled frame without buttons.
constexpr auto kWindowRecord = PLATFORM_RECORD(
    Int("Width", 500), Int("Height", 200), Int("MinimumWidth", 64), Int("MinimumHeight", 64),
    Int("MaximumWidth", 32000), Int("MaximumHeight", 32000), Int("Type", 2), Str("Title", ""),
    Bool("HasCloseButton", false), Bool("HasMaximizeButton", false),
    Bool("HasMinimizeButton", false), Bool("HasFullScreenButton", false), Bool("Resizeable", false),
    Bool("Composite", false), Int("MacProcID", 0), Bool("FullScreen", false),
    Int("DefaultLocation", 0), Bool("Visible", true), Bool("HasBackgroundColor", true),
    Color("BackgroundColor", 0xFFFFFF), Bool("MenuBarVisible", true), Bool("LiveResize", false));

constexpr auto kStaticText5Record = PLATFORM_RECORD(
    Str("InitialParent", ""), Str("DataField", ""), Str("DataSource", ""), Bool("Underline", false),
    Bool("Italic", false), Bool("Bold", false), Bool("Visible", true), Bool("Transparent", true),
    Color("TextColor", 0x808080), Bool("Selectable", false), Bool("Multiline", false),
    Bool("Enabled", true), Bool("TabStop", false), Int("TabPanelIndex", 0), Int("TabIndex", 0),
    Bool("LockBottom", false), Bool("LockRight", false), Bool("LockTop", false),
    Bool("LockLeft", false), Int("Height", 21), Int("Width", 490), Int("Top", 113), Int("Left", 5),
    Int("Index", kInNoArray), Str("Name", "StaticText5"), Bool("AllowAutoDeactivate", true),
    Str("Tooltip", ""), Int("TextAlignment", 2), Str("Value", AboutWnd::kAttribution),
    Str("FontName", "System"), Single("FontSize", 9), Enum8("FontUnit", 0));

constexpr auto kCanvas1Record = PLATFORM_RECORD(
    Str("InitialParent", ""), Bool("Transparent", true), Bool("DoubleBuffer", false),
    Bool("Visible", true), Bool("Enabled", true), Bool("TabStop", true), Int("TabPanelIndex", 0),
    Int("TabIndex", 2), Bool("LockBottom", false), Bool("LockRight", false), Bool("LockTop", false),
    Bool("LockLeft", false), Int("Height", 76), Int("Width", 490), Int("Top", 40), Int("Left", 5),
    Int("Index", kInNoArray), Str("Name", "Canvas1"), Bool("AllowAutoDeactivate", true),
    Str("Tooltip", ""), Bool("AllowFocusRing", true), Bool("AllowFocus", false),
    Bool("AllowTabs", false));

// Fires once, 4000 ms after the record starts it.
constexpr auto kTimer1Record = PLATFORM_RECORD(Int("Period", 4000), Int("RunMode", 1));

// The about window gives way: it hides, and the control window comes up (built on first use).
// This folder does not know the control window's class, so it reaches it by its run-time class
// name through the platform's accessor, the same call ControlWnd::Instance() makes (the run's
// initialisers have registered the class by then).
void GiveWayToControlWindow() {
    AboutWnd::Instance().Hide();
    platform::ImplicitWindow("ControlWnd.ControlWnd").Show();
}

}  // namespace

const platform::ClassInfo& AboutWnd::_wrapper_Timer1::StaticClass() {
    static const platform::ClassInfo info{
        "AboutWnd._wrapper_Timer1", &platform::Timer::StaticClass(), {}};
    return info;
}

void AboutWnd::_wrapper_Timer1::_SetWindow(platform::Window* window) {
    ownerWindow = platform::WeakRef(window);
}

platform::Window* AboutWnd::_wrapper_Timer1::Window() const {
    return dynamic_cast<platform::Window*>(ownerWindow.Value());
}

void AboutWnd::_wrapper_Timer1::Attach(platform::Window& window, const std::string& name) {
    platform::Timer::Attach(window, name);
    _SetWindow(&window);
}

void AboutWnd::Layout() {
    platform::ApplyRecord(*this, kWindowRecord.view());
    // The frame has no title bar; a screen reader says what the menu item that calls it up says.
    AccessibleName("About Korvane");
}

void AboutWnd::CreateControls() {
    platform::ApplyRecord(Create<platform::Label>("StaticText5"), kStaticText5Record.view());

    // Before the record; a missing picture leaves it empty.
    Create<platform::Canvas>("Canvas1").Backdrop(tlarge());
    platform::ApplyRecord(Canvas1(), kCanvas1Record.view());

    platform::ApplyRecord(Create<_wrapper_Timer1>("Timer1"), kTimer1Record.view());
    Timer1().Action = platform::Delegate(*this, &AboutWnd::Timer1_Action);
}

void AboutWnd::AddMenuHandlers() {
    _AddMenuHandler("AboutMenuItem", platform::Delegate(*this, &AboutWnd::_AboutMenuItem_Action));
}

platform::Label& AboutWnd::StaticText5() {
    return Named<platform::Label>("StaticText5");
}

platform::Canvas& AboutWnd::Canvas1() {
    return Named<platform::Canvas>("Canvas1");
}

platform::Timer& AboutWnd::Timer1() {
    return Named<platform::Timer>("Timer1");
}

void AboutWnd::Timer1_Action(platform::Timer& /*timer*/) {
    GiveWayToControlWindow();
}

// Neither press stops the timer: it still fires later and gives way once more. A press on the
// banner or the attribution line counts as well, since the platform passes the presses on passive
// controls to their window.
bool AboutWnd::Event_KeyDown(const std::string& /*key*/) {
    GiveWayToControlWindow();
    return false;
}

bool AboutWnd::Event_MouseDown(std::int64_t /*x*/, std::int64_t /*y*/) {
    GiveWayToControlWindow();
    return false;
}

bool AboutWnd::_AboutMenuItem_Action() {
    Instance().Show();
    return false;
}

}  // namespace korvane
