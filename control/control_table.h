// Every control of the control window, once, in creation order. Everything else about the
// controls is made from this table: the layout rows and records (control_records.h), the
// accessors (control_wnd.h), the creation table and the names screen readers speak
// (control_wnd.cpp). The handlers a control gets are wired in control_wnd.cpp.
//
// KORVANE_CONTROLS(X) calls X(name, Class, place, look, spoken) once per control:
//   name    the control's name, also the name of its accessor
//   Class   its class in platform::
//   place   (Parent, Left, Top, Width, Height, TabIndex, TabStop, Visible, Enabled, Text,
//           Locks): the fields of layout::Row after the name. Left and Top count from the
//           window's top-left corner also inside a panel; an empty parent is the window; Text
//           is a label's Value or a button's or frame's Caption
//   look    what the records of its class let differ beyond the place (layout::LabelStyle,
//           FieldRole, FrameStyle, ButtonStyle; kPlain where the class has nothing)
//   spoken  the name a screen reader speaks for it, "" where its caption or text says it
#pragma once

// clang-format off
#define KORVANE_CONTROLS(X) \
/*  Name           Class        Parent       Left Top  W    H   Tab Stop V  E  Text                  Locks       Look               Spoken name */ \
  X(n2text,        Label,       ("",          214, 308, 80,  18,  0, 0, 0, 1, "N",                  kLocked),   kEntryCaption,     "") \
  X(rfld,          TextField,   ("",          213, 287, 80,  22,  8, 1, 0, 1, "",                   kLocked),   kEntry,            "Correlation r between the samples") \
  X(GroupBox2,     GroupBox,    ("",          188, 167, 140, 165, 2, 1, 0, 1, "Sample 2",           kLocked),   kPlainFrame,       "") \
  X(m2fld,         TextField,   ("GroupBox2", 213, 192, 80,  22,  3, 1, 0, 1, "",                   kLocked),   kEntry,            "Mean of sample 2") \
  X(sd2fld,        TextField,   ("GroupBox2", 213, 237, 80,  22,  4, 1, 0, 1, "",                   kLocked),   kEntry,            "Standard deviation of sample 2") \
  X(n2fld,         TextField,   ("GroupBox2", 213, 287, 80,  22,  5, 1, 0, 1, "",                   kLocked),   kEntry,            "N of sample 2") \
  X(StaticText3,   Label,       ("GroupBox2", 213, 214, 80,  18,  4, 0, 0, 1, "Mean",               kLocked),   kEntryCaption,     "") \
  X(StaticText4,   Label,       ("GroupBox2", 199, 259, 110, 18,  5, 0, 0, 1, "Standard Deviation", kLocked),   kEntryCaption,     "") \
  X(Sep2,          Separator,   ("GroupBox2", 188, 277, 140, 5,   6, 1, 0, 1, "",                   kFree),     kPlain,            "") \
  X(rtext,         Label,       ("GroupBox2", 214, 307, 80,  18,  7, 0, 0, 1, "r",                  kLocked),   kEntryCaption,     "") \
  X(GroupBox1,     GroupBox,    ("",          27,  167, 140, 165, 3, 1, 0, 1, "Sample 1",           kFree),     kPlainFrame,       "") \
  X(m1fld,         TextField,   ("GroupBox1", 52,  192, 80,  22,  0, 1, 0, 1, "",                   kLocked),   kEntry,            "Mean of sample 1") \
  X(sd1fld,        TextField,   ("GroupBox1", 52,  237, 80,  22,  1, 1, 0, 1, "",                   kLocked),   kEntry,            "Standard deviation of sample 1") \
  X(n1fld,         TextField,   ("GroupBox1", 52,  287, 80,  22,  2, 1, 0, 1, "",                   kLocked),   kEntry,            "N of sample 1, or number of pairs") \
  X(StaticText1,   Label,       ("GroupBox1", 52,  214, 80,  18,  3, 0, 0, 1, "Mean",               kLocked),   kEntryCaption,     "") \
  X(StaticText2,   Label,       ("GroupBox1", 38,  259, 110, 18,  4, 0, 0, 1, "Standard Deviation", kLocked),   kEntryCaption,     "") \
  X(StaticText7,   Label,       ("GroupBox1", 46,  308, 95,  18,  5, 0, 0, 1, "N",                  kLocked),   kEntryCaption,     "") \
  X(Sep1,          Separator,   ("GroupBox1", 27,  277, 140, 5,   6, 1, 0, 1, "",                   kFree),     kPlain,            "") \
  X(HalbrineTitle, Canvas,      ("",          6,   2,   488, 73,  4, 0, 1, 1, "",                   kLocked),   kPlain,            "") \
  X(CalcBtn,       PushButton,  ("",          21,  360, 80,  30,  5, 0, 1, 1, "Calculate",          kLocked),   kPlainButton,      "") \
  X(ClearBtn,      PushButton,  ("",          401, 360, 80,  30,  6, 0, 1, 1, "Clear",              kLocked),   kPlainButton,      "") \
  X(copyright,     Label,       ("",          6,   72,  488, 16,  7, 0, 0, 1, kAttribution,         kLocked),   kAttributionStyle, "") \
  X(tfld,          TextField,   ("",          369, 237, 80,  22,  8, 0, 0, 0, "",                   kLocked),   kResult,           "t") \
  X(pfld,          TextField,   ("",          369, 287, 80,  22,  9, 0, 0, 0, "",                   kLocked),   kResult,           "Probability, two-tailed") \
  X(dtail,         Label,       ("",          370, 309, 80,  20, 10, 1, 0, 0, "two-tailed",         kLocked),   kTailCaption,      "") \
  X(IBtn,          RadioButton, ("",          23,  130, 150, 18, 12, 1, 1, 1, "Independent Means",  kFree),     kPlain,            "") \
  X(RBtn,          RadioButton, ("",          190, 130, 115, 18, 13, 1, 1, 1, "Related Means",      kFree),     kPlain,            "") \
  X(typeBox,       GroupBox,    ("",          19,  123, 300, 32, 14, 1, 1, 1, "",                   kLocked),   kBoldFrame,        "Kind of t-test") \
  X(ttext,         Label,       ("",          369, 258, 80,  18, 15, 0, 0, 0, "t",                  kLocked),   kResultCaption,    "") \
  X(dfFld,         TextField,   ("",          369, 192, 80,  22, 16, 0, 0, 0, "",                   kLocked),   kResultDf,         "Degrees of freedom") \
  X(dfText,        Label,       ("",          369, 214, 80,  18, 17, 0, 0, 0, "df",                 kLocked),   kResultCaption,    "") \
  X(StaticText5,   Label,       ("",          283, 338, 12,  20, 18, 1, 1, 1, "Untitled",           kLocked),   kWhiteOnWhite,     "") \
  X(PushButton1,   PushButton,  ("",          226, 360, 50,  30, 19, 1, 1, 1, "?",                  kTopLeft),  kHelpButton,       "Show the t-test information")
// clang-format on

// Opens a place tuple of the table: KORVANE_PLACE place gives its fields, comma-separated.
#define KORVANE_PLACE(...) __VA_ARGS__
