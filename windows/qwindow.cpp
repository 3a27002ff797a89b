#include "windows/qwindow.h"

#include <string_view>

#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "platform/qt/canvas.h"
#include "platform/qt/text_controls.h"
#include "windows/pictures.h"

namespace korvane {

namespace {

using namespace platform::rec;

constexpr std::int64_t kNoIndex = -2147483648LL;  // no member of a control array

constexpr std::string_view kInformationText =
    "Probability calculation via Algorithm 8.7 from: Wrenfield, D., Ostrander, A. H., & "
    "Pellmoor, G. M. (1990). Basic statistical computing (2nd ed.). Harrowgate Press."
    "\r\r"
    "Korvane is written and maintained by the Korvane developers, \u00A9 2026. ";

// A titled window of fixed size that can be closed and minimised.
constexpr auto kWindowRecord = PLATFORM_RECORD(
    Int("Width", 500), Int("Height", 367), Int("MinimumWidth", 64), Int("MinimumHeight", 64),
    Int("MaximumWidth", 32000), Int("MaximumHeight", 32000), Int("Type", 0),
    Str("Title", "t-test Information"), Bool("HasCloseButton", 1), Bool("HasMaximizeButton", 0),
    Bool("HasMinimizeButton", 1), Bool("HasFullScreenButton", 0), Bool("Resizeable", 0),
    Bool("Composite", 0), Int("MacProcID", 0), Bool("FullScreen", 0), Int("DefaultLocation", 0),
    Bool("Visible", 1), Bool("HasBackgroundColor", 1), Color("BackgroundColor", 0xFFFFFF),
    Bool("MenuBarVisible", 1), Bool("LiveResize", 0));

// An editable, borderless, left-aligned text beneath the picture; no code reads it back.
constexpr auto kStaticText1Record = PLATFORM_RECORD(
    Str("InitialParent", ""), Str("DataField", ""), Str("DataSource", ""), Bool("ReadOnly", 0),
    Bool("Underline", 0), Bool("Italic", 0), Bool("Bold", 0), Bool("Visible", 1),
    Bool("Transparent", 1), Color("TextColor", 0x000000), Bool("Multiline", 1),
    Double("LineSpacing", 1.0), Double("LineHeight", 0.0), Bool("HideSelection", 1),
    Str("Format", ""), Bool("Enabled", 1), Bool("TabStop", 1), Int("TabPanelIndex", 0),
    Int("TabIndex", 0), Bool("LockBottom", 0), Bool("LockRight", 0), Bool("LockTop", 0),
    Bool("LockLeft", 0), Int("Height", 107), Int("Width", 460), Int("Top", 242), Int("Left", 27),
    Int("Index", kNoIndex), Str("Name", "StaticText1"), Bool("AllowAutoDeactivate", 1),
    Color("BackgroundColor", 0xFFFFFF), Bool("HasBorder", 0), Str("Tooltip", ""),
    Bool("HasHorizontalScrollbar", 0), Bool("HasVerticalScrollbar", 0), Bool("AllowStyledText", 1),
    Bool("AllowFocusRing", 0), Str("FontName", "System"), Single("FontSize", 12),
    Enum8("FontUnit", 0), Str("Value", kInformationText), Bool("AllowTabs", 0),
    Int("TextAlignment", 1), Bool("AllowSpellChecking", 0), Int("MaximumCharactersAllowed", 0),
    Str("ValidationMask", ""));

constexpr auto kCanvas1Record = PLATFORM_RECORD(
    Str("InitialParent", ""), Bool("Transparent", 1), Bool("DoubleBuffer", 0), Bool("Visible", 1),
    Bool("Enabled", 1), Bool("TabStop", 0), Int("TabPanelIndex", 0), Int("TabIndex", 1),
    Bool("LockBottom", 0), Bool("LockRight", 0), Bool("LockTop", 0), Bool("LockLeft", 0),
    Int("Height", 216), Int("Width", 282), Int("Top", 14), Int("Left", 109), Int("Index", kNoIndex),
    Str("Name", "Canvas1"), Bool("AllowAutoDeactivate", 1), Str("Tooltip", ""),
    Bool("AllowFocusRing", 1), Bool("AllowFocus", 0), Bool("AllowTabs", 0));

}  // namespace

const std::string& Qwindow::InformationText() {
    static const std::string text(kInformationText);
    return text;
}

void Qwindow::Layout() {
    platform::ApplyRecord(*this, kWindowRecord.view());
}

// A missing formula picture leaves Canvas1 empty; the window is built and shown all the same.
void Qwindow::CreateControls() {
    platform::ApplyRecord(Create<platform::TextArea>("StaticText1"), kStaticText1Record.view());
    Create<platform::Canvas>("Canvas1").Backdrop(tformula());  // the picture before the record
    platform::ApplyRecord(Canvas1(), kCanvas1Record.view());
    // A screen reader says what the text is before reading it.
    StaticText1().AccessibleName("Citation");
}

platform::TextArea& Qwindow::StaticText1() {
    return Named<platform::TextArea>("StaticText1");
}

platform::Canvas& Qwindow::Canvas1() {
    return Named<platform::Canvas>("Canvas1");
}

// Hiding, not closing: the platform keeps a window that hid itself here, so the one instance
// and the text typed into it survive until "?" brings it back.
void Qwindow::Event_Close() {
    Instance().Hide();
}

bool Qwindow::Event_MouseDown(std::int64_t, std::int64_t) {
    return false;
}

bool Qwindow::Event_KeyDown(const std::string&) {
    return false;
}

}  // namespace korvane
