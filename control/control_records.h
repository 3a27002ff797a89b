// The layout records of the control window: the window's own and one for each of its 33
// controls, encoded at compile time.
//
// A control's place and role stand in one row of `layout` below, in creation order; the shape
// templates lay a row out with every property of its class, in the stored order of that class's
// records, the values all controls of the class share written in once. `records` holds the
// finished byte strings that CreateControls applies.
#pragma once

#include <cstdint>
#include <string_view>

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

// What sets one control apart from the others of its class. Left and Top count from the
// window's top-left corner also inside a panel; an empty parent is the window itself. Text is
// a label's Value or a button's or frame's Caption.
struct Row {
    std::string_view name;
    std::string_view parent;
    std::int64_t left, top, width, height;
    std::int64_t tabIndex;
    bool tabStop;
    bool visible;
    bool enabled;
    std::string_view text;
    Locks locks = kLocked;
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

struct ButtonStyle {
    bool transparent;
    float fontSize;
    bool bold;
};

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

inline constexpr ButtonStyle kPlainButton{1, 12, 0};
inline constexpr ButtonStyle kHelpButton{0, 14, 1};

// clang-format off
//                         Name             Parent       Left Top  W    H   Tab Stop V  E  Text
inline constexpr Row n2text       {"n2text",       "",          214, 308, 80,  18,  0, 0, 0, 1, "N"};
inline constexpr Row rfld         {"rfld",         "",          213, 287, 80,  22,  8, 1, 0, 1, ""};
inline constexpr Row GroupBox2    {"GroupBox2",    "",          188, 167, 140, 165, 2, 1, 0, 1, "Sample 2"};
inline constexpr Row m2fld        {"m2fld",        "GroupBox2", 213, 192, 80,  22,  3, 1, 0, 1, ""};
inline constexpr Row sd2fld       {"sd2fld",       "GroupBox2", 213, 237, 80,  22,  4, 1, 0, 1, ""};
inline constexpr Row n2fld        {"n2fld",        "GroupBox2", 213, 287, 80,  22,  5, 1, 0, 1, ""};
inline constexpr Row StaticText3  {"StaticText3",  "GroupBox2", 213, 214, 80,  18,  4, 0, 0, 1, "Mean"};
inline constexpr Row StaticText4  {"StaticText4",  "GroupBox2", 199, 259, 110, 18,  5, 0, 0, 1, "Standard Deviation"};
inline constexpr Row Sep2         {"Sep2",         "GroupBox2", 188, 277, 140, 5,   6, 1, 0, 1, "", kFree};
inline constexpr Row rtext        {"rtext",        "GroupBox2", 214, 307, 80,  18,  7, 0, 0, 1, "r"};
inline constexpr Row GroupBox1    {"GroupBox1",    "",          27,  167, 140, 165, 3, 1, 0, 1, "Sample 1", kFree};
inline constexpr Row m1fld        {"m1fld",        "GroupBox1", 52,  192, 80,  22,  0, 1, 0, 1, ""};
inline constexpr Row sd1fld       {"sd1fld",       "GroupBox1", 52,  237, 80,  22,  1, 1, 0, 1, ""};
inline constexpr Row n1fld        {"n1fld",        "GroupBox1", 52,  287, 80,  22,  2, 1, 0, 1, ""};
inline constexpr Row StaticText1  {"StaticText1",  "GroupBox1", 52,  214, 80,  18,  3, 0, 0, 1, "Mean"};
inline constexpr Row StaticText2  {"StaticText2",  "GroupBox1", 38,  259, 110, 18,  4, 0, 0, 1, "Standard Deviation"};
inline constexpr Row StaticText7  {"StaticText7",  "GroupBox1", 46,  308, 95,  18,  5, 0, 0, 1, "N"};
inline constexpr Row Sep1         {"Sep1",         "GroupBox1", 27,  277, 140, 5,   6, 1, 0, 1, "", kFree};
inline constexpr Row HalbrineTitle{"HalbrineTitle", "",         6,   2,   488, 73,  4, 0, 1, 1, ""};
inline constexpr Row CalcBtn      {"CalcBtn",      "",          21,  360, 80,  30,  5, 0, 1, 1, "Calculate"};
inline constexpr Row ClearBtn     {"ClearBtn",     "",          401, 360, 80,  30,  6, 0, 1, 1, "Clear"};
inline constexpr Row copyright    {"copyright",    "",          6,   72,  488, 16,  7, 0, 0, 1, kAttribution};
inline constexpr Row tfld         {"tfld",         "",          369, 237, 80,  22,  8, 0, 0, 0, ""};
inline constexpr Row pfld         {"pfld",         "",          369, 287, 80,  22,  9, 0, 0, 0, ""};
inline constexpr Row dtail        {"dtail",        "",          370, 309, 80,  20, 10, 1, 0, 0, "two-tailed"};
inline constexpr Row IBtn         {"IBtn",         "",          23,  130, 150, 18, 12, 1, 1, 1, "Independent Means", kFree};
inline constexpr Row RBtn         {"RBtn",         "",          190, 130, 115, 18, 13, 1, 1, 1, "Related Means", kFree};
inline constexpr Row typeBox      {"typeBox",      "",          19,  123, 300, 32, 14, 1, 1, 1, ""};
inline constexpr Row ttext        {"ttext",        "",          369, 258, 80,  18, 15, 0, 0, 0, "t"};
inline constexpr Row dfFld        {"dfFld",        "",          369, 192, 80,  22, 16, 0, 0, 0, ""};
inline constexpr Row dfText       {"dfText",       "",          369, 214, 80,  18, 17, 0, 0, 0, "df"};
inline constexpr Row StaticText5  {"StaticText5",  "",          283, 338, 12,  20, 18, 1, 1, 1, "Untitled"};
inline constexpr Row PushButton1  {"PushButton1",  "",          226, 360, 50,  30, 19, 1, 1, 1, "?", kTopLeft};
// clang-format on

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

template <const Row& R, bool Bold>
constexpr auto GroupBoxRecord() {
    return PLATFORM_RECORD(Placement<R>(), TabOrder<R>(), Str("Caption", R.text),
                           Bool("Enabled", R.enabled), Str("Tooltip", ""), Bool("Transparent", 1),
                           Bool("Visible", R.visible), Bool("Bold", Bold), Bool("Italic", 0),
                           Str("FontName", "System"), Bool("Underline", 0), Single("FontSize", 12),
                           Enum8("FontUnit", 0), Str("InitialParent", R.parent));
}

template <const Row& R>
constexpr auto SeparatorRecord() {
    return PLATFORM_RECORD(
        Bool("AllowAutoDeactivate", 1), Str("Tooltip", ""), Bool("Transparent", 1), Placement<R>(),
        Int("TabPanelIndex", 0), Int("TabIndex", R.tabIndex), Bool("TabStop", R.tabStop),
        Str("InitialParent", R.parent), Bool("Visible", R.visible), Bool("Enabled", R.enabled));
}

// Transparent stands twice in a canvas record, both times true.
template <const Row& R>
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

template <const Row& R>
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

// clang-format off
inline constexpr auto n2text        = LabelRecord<layout::n2text, kEntryCaption>();
inline constexpr auto rfld          = TextFieldRecord<layout::rfld, kEntry>();
inline constexpr auto GroupBox2     = GroupBoxRecord<layout::GroupBox2, false>();
inline constexpr auto m2fld         = TextFieldRecord<layout::m2fld, kEntry>();
inline constexpr auto sd2fld        = TextFieldRecord<layout::sd2fld, kEntry>();
inline constexpr auto n2fld         = TextFieldRecord<layout::n2fld, kEntry>();
inline constexpr auto StaticText3   = LabelRecord<layout::StaticText3, kEntryCaption>();
inline constexpr auto StaticText4   = LabelRecord<layout::StaticText4, kEntryCaption>();
inline constexpr auto Sep2          = SeparatorRecord<layout::Sep2>();
inline constexpr auto rtext         = LabelRecord<layout::rtext, kEntryCaption>();
inline constexpr auto GroupBox1     = GroupBoxRecord<layout::GroupBox1, false>();
inline constexpr auto m1fld         = TextFieldRecord<layout::m1fld, kEntry>();
inline constexpr auto sd1fld        = TextFieldRecord<layout::sd1fld, kEntry>();
inline constexpr auto n1fld         = TextFieldRecord<layout::n1fld, kEntry>();
inline constexpr auto StaticText1   = LabelRecord<layout::StaticText1, kEntryCaption>();
inline constexpr auto StaticText2   = LabelRecord<layout::StaticText2, kEntryCaption>();
inline constexpr auto StaticText7   = LabelRecord<layout::StaticText7, kEntryCaption>();
inline constexpr auto Sep1          = SeparatorRecord<layout::Sep1>();
inline constexpr auto HalbrineTitle = CanvasRecord<layout::HalbrineTitle>();
inline constexpr auto CalcBtn       = PushButtonRecord<layout::CalcBtn, kPlainButton>();
inline constexpr auto ClearBtn      = PushButtonRecord<layout::ClearBtn, kPlainButton>();
inline constexpr auto copyright     = LabelRecord<layout::copyright, kAttributionStyle>();
inline constexpr auto tfld          = TextFieldRecord<layout::tfld, kResult>();
inline constexpr auto pfld          = TextFieldRecord<layout::pfld, kResult>();
inline constexpr auto dtail         = LabelRecord<layout::dtail, kTailCaption>();
inline constexpr auto IBtn          = RadioButtonRecord<layout::IBtn>();
inline constexpr auto RBtn          = RadioButtonRecord<layout::RBtn>();
inline constexpr auto typeBox       = GroupBoxRecord<layout::typeBox, true>();
inline constexpr auto ttext         = LabelRecord<layout::ttext, kResultCaption>();
inline constexpr auto dfFld         = TextFieldRecord<layout::dfFld, kResultDf>();
inline constexpr auto dfText        = LabelRecord<layout::dfText, kResultCaption>();
inline constexpr auto StaticText5   = LabelRecord<layout::StaticText5, kWhiteOnWhite>();
inline constexpr auto PushButton1   = PushButtonRecord<layout::PushButton1, kHelpButton>();
// clang-format on

}  // namespace records

}  // namespace korvane
