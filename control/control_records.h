// The layout records of the control window: the window's own and one for each control of
// control_table.h, encoded at compile time.
//
// `layout` holds one Row per control, made from its place in the table; the shape templates lay
// a row out with every property of its class, in the stored order of that class's records, the
// values all controls of the class share written in once, and the control's look filling in
// what differs. `records` holds the finished byte strings that CreateControls applies.
#pragma once

#include <cstdint>
#include <string_view>

#include "control/control_table.h"
#include "platform/core/record_encoder.h"

namespace korvane {

namespace layout {

// LockLeft, LockTop, LockRight, LockBottom.
struct Locks {
    bool left, top, right, bottom;
};
inline constexpr Locks kLocked{1, 1, 1, 1};
inline constexpr Locks kFree{0, 0, 0, 0};
inline constexpr Locks kTopLeft{1, 1, 0, 0};

// Where a control stands and what it shows: its name and its place in the table.
struct Row {
    std::string_view name;
    std::string_view parent;
    std::int64_t left, top, width, height;
    std::int64_t tabIndex;
    bool tabStop;
    bool visible;
    bool enabled;
    std::string_view text;
    Locks locks;
};

struct LabelStyle {
    std::uint32_t textColor;
    float fontSize;
    bool bold;
    std::int64_t textAlignment;  // 0 left, 2 centred
};

struct FieldRole {
    bool readOnly;
    bool allowSpellChecking;
};

struct FrameStyle {
    bool bold;
};

struct ButtonStyle {
    bool transparent;
    float fontSize;
    bool bold;
};

// The look of a class whose records differ in their place alone.
struct Plain {};

// Index of a control that is no member of a control array: the smallest 32-bit integer.
inline constexpr std::int64_t kNoIndex = -2147483648LL;

inline constexpr std::string_view kAttribution = "\u00A9 2026 The Korvane developers";

inline constexpr LabelStyle kEntryCaption{0xCC0000, 12, 0, 2};
inline constexpr LabelStyle kAttributionStyle{0x808080, 10, 0, 2};
inline constexpr LabelStyle kTailCaption{0x777777, 12, 0, 2};
inline constexpr LabelStyle kResultCaption{0x999999, 12, 1, 2};
inline constexpr LabelStyle kWhiteOnWhite{0xFFFFFF, 0, 1, 0};

inline constexpr FieldRole kEntry{0, 0};
inline constexpr FieldRole kResult{1, 1};
inline constexpr FieldRole kResultDf{1, 0};

inline constexpr FrameStyle kPlainFrame{0};
inline constexpr FrameStyle kBoldFrame{1};

inline constexpr ButtonStyle kPlainButton{1, 12, 0};
inline constexpr ButtonStyle kHelpButton{0, 14, 1};

inline constexpr Plain kPlain{};

// One row per control of the table, named as the control.
#define KORVANE_ROW(name, Class, place, look, spoken) \
    inline constexpr Row name{#name, KORVANE_PLACE place};
KORVANE_CONTROLS(KORVANE_ROW)
#undef KORVANE_ROW

using namespace platform::rec;

// The fields every control's record begins with: name and place.
template <const Row& R>
constexpr auto Placement() {
    return Fields(Str("Name", R.name), Int("Index", kNoIndex), Int("Left", R.left),
                  Int("Top", R.top), Int("Width", R.width), Int("Height", R.height),
                  Bool("LockLeft", R.locks.left), Bool("LockTop", R.locks.top),
                  Bool("LockRight", R.locks.right), Bool("LockBottom", R.locks.bottom));
}

// What follows the place in the records of every class but the separator.
template <const Row& R>
constexpr auto TabOrder() {
    return Fields(Int("TabIndex", R.tabIndex), Int("TabPanelIndex", 0), Bool("TabStop", R.tabStop),
                  Bool("AllowAutoDeactivate", 1));
}

template <const Row& R, const LabelStyle& S>
constexpr auto LabelRecord() {
    return PLATFORM_RECORD(Placement<R>(), TabOrder<R>(), Bool("Enabled", R.enabled),
                           Str("Tooltip", ""), Bool("Multiline", 0), Bool("Selectable", 0),
                           Int("TextAlignment", S.textAlignment), Color("TextColor", S.textColor),
                           Bool("Transparent", 1), Str("Value", R.text), Bool("Visible", R.visible),
                           Bool("Bold", S.bold), Bool("Italic", 0), Str("FontName", "System"),
                           Bool("Underline", 0), Single("FontSize", S.fontSize),
                           Enum8("FontUnit", 0), Str("DataSource", ""), Str("DataField", ""),
                           Str("InitialParent", R.parent));
}

template <const Row& R, const FieldRole& F>
constexpr auto TextFieldRecord() {
    return PLATFORM_RECORD(
        Placement<R>(), TabOrder<R>(), Color("BackgroundColor", 0xFFFFFF), Bool("HasBorder", 1),
        Bool("Enabled", R.enabled), Str("Format", ""), Str("Tooltip", ""), Bool("Password", 0),
        Color("TextColor", 0x000000), Bool("Transparent", 1), Bool("AllowFocusRing", 1),
        Bool("Visible", R.visible), Str("FontName", "System"), Single("FontSize", 12),
        Enum8("FontUnit", 0), Bool("Bold", 0), Bool("Italic", 0), Bool("Underline", 0),
        Str("Hint", ""), Str("Value", ""), Bool("AllowTabs", 0), Int("TextAlignment", 2),
        Bool("AllowSpellChecking", F.allowSpellChecking), Int("MaximumCharactersAllowed", 0),
        Str("ValidationMask", ""), Bool("ReadOnly", F.readOnly), Str("DataSource", ""),
        Str("DataField", ""), Str("InitialParent", R.parent));
}

template <const Row& R, const FrameStyle& S>
constexpr auto GroupBoxRecord() {
    return PLATFORM_RECORD(Placement<R>(), TabOrder<R>(), Str("Caption", R.text),
                           Bool("Enabled", R.enabled), Str("Tooltip", ""), Bool("Transparent", 1),
                           Bool("Visible", R.visible), Bool("Bold", S.bold), Bool("Italic", 0),
                           Str("FontName", "System"), Bool("Underline", 0), Single("FontSize", 12),
                           Enum8("FontUnit", 0), Str("InitialParent", R.parent));
}

template <const Row& R, const Plain&>
constexpr auto SeparatorRecord() {
    return PLATFORM_RECORD(
        Bool("AllowAutoDeactivate", 1), Str("Tooltip", ""), Bool("Transparent", 1), Placement<R>(),
        Int("TabPanelIndex", 0), Int("TabIndex", R.tabIndex), Bool("TabStop", R.tabStop),
        Str("InitialParent", R.parent), Bool("Visible", R.visible), Bool("Enabled", R.enabled));
}

// Transparent stands twice in a canvas record, both times true.
template <const Row& R, const Plain&>
constexpr auto CanvasRecord() {
    return PLATFORM_RECORD(Placement<R>(), TabOrder<R>(), Bool("Enabled", R.enabled),
                           Str("Tooltip", ""), Bool("AllowFocusRing", 1),
                           Bool("Visible", R.visible), Bool("AllowFocus", 0), Bool("AllowTabs", 0),
                           Bool("Transparent", 1), Bool("DoubleBuffer", 0), Bool("Transparent", 1),
                           Str("InitialParent", R.parent));
}

// All three buttons of the form are marked Default.
template <const Row& R, const ButtonStyle& S>
constexpr auto PushButtonRecord() {
    return PLATFORM_RECORD(
        Placement<R>(), TabOrder<R>(), Int("MacButtonStyle", 0), Bool("Cancel", 0),
        Str("Caption", R.text), Bool("Default", 1), Bool("Enabled", R.enabled), Str("Tooltip", ""),
        Bool("Transparent", S.transparent), Bool("Visible", R.visible), Str("FontName", "System"),
        Single("FontSize", S.fontSize), Enum8("FontUnit", 0), Bool("Bold", S.bold),
        Bool("Italic", 0), Bool("Underline", 0), Str("InitialParent", R.parent));
}

template <const Row& R, const Plain&>
constexpr auto RadioButtonRecord() {
    return PLATFORM_RECORD(
        Placement<R>(), TabOrder<R>(), Str("Caption", R.text), Bool("Enabled", R.enabled),
        Str("Tooltip", ""), Bool("Transparent", 1), Bool("Visible", R.visible),
        Str("FontName", "System"), Single("FontSize", 12), Enum8("FontUnit", 0), Bool("Bold", 0),
        Bool("Italic", 0), Bool("Underline", 0), Bool("Value", 0), Str("InitialParent", R.parent));
}

}  // namespace layout

namespace records {

using namespace platform::rec;

// A fixed-size titled window: it can be minimised and closed, never resized or zoomed.
inline constexpr auto ControlWnd = PLATFORM_RECORD(
    Int("Width", 500), Int("Height", 400), Int("MinimumWidth", 64), Int("MinimumHeight", 64),
    Int("MaximumWidth", 500), Int("MaximumHeight", 500), Int("Type", 0), Str("Title", "Korvane"),
    Bool("HasCloseButton", 1), Bool("HasMaximizeButton", 0), Bool("HasMinimizeButton", 1),
    Bool("HasFullScreenButton", 0), Bool("Resizeable", 0), Bool("Composite", 0),
    Int("MacProcID", 0), Bool("FullScreen", 0), Int("DefaultLocation", 0), Bool("Visible", 1),
    Bool("HasBackgroundColor", 1), Color("BackgroundColor", 0xFFFFFF), Bool("MenuBarVisible", 1),
    Bool("LiveResize", 0));

using namespace layout;

// One record per control, made by its class's shape template (LabelRecord, ...) from its row
// and look.
#define KORVANE_RECORD(name, Class, place, look, spoken) \
    inline constexpr auto name = Class##Record<layout::name, look>();
KORVANE_CONTROLS(KORVANE_RECORD)
#undef KORVANE_RECORD

}  // namespace records

}  // namespace korvane
