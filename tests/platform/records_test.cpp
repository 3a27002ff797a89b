// Layout records on Qt: every name a record of each class carries is accepted, the order of the
// properties does not matter, and each property that means something on Qt takes effect.
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>

#include "sample_windows.h"

namespace {

using namespace sample;

// Records with every property their class's records carry, in the program's storage order.
constexpr auto kFullLabel = PLATFORM_RECORD(
    Str("Name", "lbl"), Int("Index", INT32_MIN), Int("Left", 214), Int("Top", 308),
    Int("Width", 80), Int("Height", 18), Bool("LockLeft", true), Bool("LockTop", true),
    Bool("LockRight", true), Bool("LockBottom", true), Int("TabIndex", 0), Int("TabPanelIndex", 0),
    Bool("TabStop", false), Bool("AllowAutoDeactivate", true), Bool("Enabled", true),
    Str("Tooltip", ""), Bool("Multiline", false), Bool("Selectable", false),
    Int("TextAlignment", 2), Color("TextColor", 0xCC0000), Bool("Transparent", true),
    Str("Value", "N"), Bool("Visible", true), Bool("Bold", false), Bool("Italic", false),
    Str("FontName", "System"), Bool("Underline", false), Single("FontSize", 12),
    Enum8("FontUnit", 0), Str("DataSource", ""), Str("DataField", ""), Str("InitialParent", "grp"));

// The same label, its properties in the reverse order (InitialParent first).
constexpr auto kFullLabelReversed = PLATFORM_RECORD(
    Str("InitialParent", "grp"), Str("DataField", ""), Str("DataSource", ""), Enum8("FontUnit", 0),
    Single("FontSize", 12), Bool("Underline", false), Str("FontName", "System"),
    Bool("Italic", false), Bool("Bold", false), Bool("Visible", true), Str("Value", "N"),
    Bool("Transparent", true), Color("TextColor", 0xCC0000), Int("TextAlignment", 2),
    Bool("Selectable", false), Bool("Multiline", false), Str("Tooltip", ""), Bool("Enabled", true),
    Bool("AllowAutoDeactivate", true), Bool("TabStop", false), Int("TabPanelIndex", 0),
    Int("TabIndex", 0), Bool("LockBottom", true), Bool("LockRight", true), Bool("LockTop", true),
    Bool("LockLeft", true), Int("Height", 18), Int("Width", 80), Int("Top", 308), Int("Left", 214),
    Int("Index", INT32_MIN), Str("Name", "lbl"));

constexpr auto kFullField = PLATFORM_RECORD(
    Str("Name", "fld"), Int("Index", INT32_MIN), Int("Left", 213), Int("Top", 287),
    Int("Width", 80), Int("Height", 22), Bool("LockLeft", true), Bool("LockTop", true),
    Bool("LockRight", true), Bool("LockBottom", true), Int("TabIndex", 8), Int("TabPanelIndex", 0),
    Bool("TabStop", true), Bool("AllowAutoDeactivate", true), Color("BackgroundColor", 0xFFFFFF),
    Bool("HasBorder", true), Bool("Enabled", true), Str("Format", ""), Str("Tooltip", ""),
    Bool("Password", false), Color("TextColor", 0), Bool("Transparent", true),
    Bool("AllowFocusRing", true), Bool("Visible", true), Str("FontName", "System"),
    Single("FontSize", 12), Enum8("FontUnit", 0), Bool("Bold", false), Bool("Italic", false),
    Bool("Underline", false), Str("Hint", ""), Str("Value", ""), Bool("AllowTabs", false),
    Int("TextAlignment", 2), Bool("AllowSpellChecking", false), Int("MaximumCharactersAllowed", 0),
    Str("ValidationMask", ""), Bool("ReadOnly", true), Str("DataSource", ""), Str("DataField", ""),
    Str("InitialParent", ""));

constexpr auto kFullGroupBox = PLATFORM_RECORD(
    Str("Name", "grp"), Int("Index", INT32_MIN), Int("Left", 188), Int("Top", 167),
    Int("Width", 140), Int("Height", 165), Bool("LockLeft", true), Bool("LockTop", true),
    Bool("LockRight", true), Bool("LockBottom", true), Int("TabIndex", 2), Int("TabPanelIndex", 0),
    Bool("TabStop", true), Bool("AllowAutoDeactivate", true), Str("Caption", "Sample & 2"),
    Bool("Enabled", true), Str("Tooltip", ""), Bool("Transparent", true), Bool("Visible", true),
    Bool("Bold", false), Bool("Italic", false), Str("FontName", "System"), Bool("Underline", false),
    Single("FontSize", 12), Enum8("FontUnit", 0), Str("InitialParent", ""));

constexpr auto kFullSeparator = PLATFORM_RECORD(
    Bool("AllowAutoDeactivate", true), Str("Tooltip", ""), Bool("Transparent", true),
    Str("Name", "sep"), Int("Index", INT32_MIN), Int("Left", 188), Int("Top", 277),
    Int("Width", 140), Int("Height", 5), Bool("LockLeft", true), Bool("LockTop", true),
    Bool("LockRight", true), Bool("LockBottom", true), Int("TabPanelIndex", 0), Int("TabIndex", 6),
    Bool("TabStop", true), Str("InitialParent", "grp"), Bool("Visible", true),
    Bool("Enabled", true));

constexpr auto kFullCanvas = PLATFORM_RECORD(
    Str("Name", "cnv"), Int("Index", INT32_MIN), Int("Left", 6), Int("Top", 2), Int("Width", 488),
    Int("Height", 73), Bool("LockLeft", true), Bool("LockTop", true), Bool("LockRight", true),
    Bool("LockBottom", true), Int("TabIndex", 4), Int("TabPanelIndex", 0), Bool("TabStop", false),
    Bool("AllowAutoDeactivate", true), Bool("Enabled", true), Str("Tooltip", ""),
    Bool("AllowFocusRing", true), Bool("Visible", true), Bool("AllowFocus", false),
    Bool("AllowTabs", false), Bool("Transparent", true), Bool("DoubleBuffer", false),
    Bool("Transparent", true), Str("InitialParent", ""));

constexpr auto kFullPushButton = PLATFORM_RECORD(
    Str("Name", "btn"), Int("Index", INT32_MIN), Int("Left", 226), Int("Top", 360),
    Int("Width", 50), Int("Height", 30), Bool("LockLeft", true), Bool("LockTop", true),
    Bool("LockRight", false), Bool("LockBottom", false), Int("TabIndex", 19),
    Int("TabPanelIndex", 0), Bool("TabStop", true), Bool("AllowAutoDeactivate", true),
    Int("MacButtonStyle", 0), Bool("Cancel", false), Str("Caption", "?"), Bool("Default", true),
    Bool("Enabled", true), Str("Tooltip", ""), Bool("Transparent", false), Bool("Visible", true),
    Str("FontName", "System"), Single("FontSize", 14), Enum8("FontUnit", 0), Bool("Bold", true),
    Bool("Italic", false), Bool("Underline", false), Str("InitialParent", ""));

constexpr auto kFullRadioButton = PLATFORM_RECORD(
    Str("Name", "rad"), Int("Index", INT32_MIN), Int("Left", 23), Int("Top", 130),
    Int("Width", 150), Int("Height", 18), Bool("LockLeft", false), Bool("LockTop", false),
    Bool("LockRight", false), Bool("LockBottom", false), Int("TabIndex", 12),
    Int("TabPanelIndex", 0), Bool("TabStop", true), Bool("AllowAutoDeactivate", true),
    Str("Caption", "Independent Means"), Bool("Enabled", true), Str("Tooltip", ""),
    Bool("Transparent", true), Bool("Visible", true), Str("FontName", "System"),
    Single("FontSize", 12), Enum8("FontUnit", 0), Bool("Bold", false), Bool("Italic", false),
    Bool("Underline", false), Bool("Value", true), Str("InitialParent", ""));

constexpr auto kFullTextArea = PLATFORM_RECORD(
    Str("InitialParent", ""), Str("DataField", ""), Str("DataSource", ""), Bool("ReadOnly", false),
    Bool("Underline", false), Bool("Italic", false), Bool("Bold", false), Bool("Visible", true),
    Bool("Transparent", true), Color("TextColor", 0), Bool("Multiline", true),
    Double("LineSpacing", 1.0), Double("LineHeight", 0.0), Bool("HideSelection", true),
    Str("Format", ""), Bool("Enabled", true), Bool("TabStop", true), Int("TabPanelIndex", 0),
    Int("TabIndex", 0), Bool("LockBottom", false), Bool("LockRight", false), Bool("LockTop", false),
    Bool("LockLeft", false), Int("Height", 107), Int("Width", 460), Int("Top", 242),
    Int("Left", 27), Int("Index", INT32_MIN), Str("Name", "area"),
    Bool("AllowAutoDeactivate", true), Color("BackgroundColor", 0xFFFFFF), Bool("HasBorder", false),
    Str("Tooltip", ""), Bool("HasHorizontalScrollbar", false), Bool("HasVerticalScrollbar", false),
    Bool("AllowStyledText", true), Bool("AllowFocusRing", false), Str("FontName", "System"),
    Single("FontSize", 12), Enum8("FontUnit", 0),
    Str("Value", "First paragraph.\r\rSecond paragraph. "), Bool("AllowTabs", false),
    Int("TextAlignment", 1), Bool("AllowSpellChecking", false), Int("MaximumCharactersAllowed", 0),
    Str("ValidationMask", ""));

class RecordsTest : public PlatformTest {
  protected:
    platform::Window window;
};

TEST_F(RecordsTest, EveryNameOfEveryControlRecordIsAccepted) {
    EXPECT_NO_THROW(Make<platform::GroupBox>(window, "grp", kFullGroupBox));
    EXPECT_NO_THROW(Make<platform::Label>(window, "lbl", kFullLabel));
    EXPECT_NO_THROW(Make<platform::TextField>(window, "fld", kFullField));
    EXPECT_NO_THROW(Make<platform::Separator>(window, "sep", kFullSeparator));
    EXPECT_NO_THROW(Make<platform::Canvas>(window, "cnv", kFullCanvas));
    EXPECT_NO_THROW(Make<platform::PushButton>(window, "btn", kFullPushButton));
    EXPECT_NO_THROW(Make<platform::RadioButton>(window, "rad", kFullRadioButton));
    EXPECT_NO_THROW(Make<platform::TextArea>(window, "area", kFullTextArea));
    EXPECT_NO_THROW(platform::ApplyRecord(window, kFormRecord.view()));
}

TEST_F(RecordsTest, ANameOfAnotherClassIsRefused) {
    window._AddControl("sep", window.__New<platform::Separator>());
    constexpr auto kCaption = PLATFORM_RECORD(Str("Caption", "x"));

    EXPECT_THROW(platform::ApplyRecord(*window._ControlByName("sep"), kCaption.view()),
                 platform::RecordFormatException);
}

TEST_F(RecordsTest, ARecordInEitherOrderGivesTheSameControl) {
    Make<platform::GroupBox>(window, "grp", kFullGroupBox);
    auto& forward = Make<platform::Label>(window, "lbl", kFullLabel);
    platform::Window other;
    Make<platform::GroupBox>(other, "grp", kFullGroupBox);
    auto& reversed = Make<platform::Label>(other, "lbl", kFullLabelReversed);

    EXPECT_EQ(WindowRect(forward, window), QRect(214, 308, 80, 18));
    EXPECT_EQ(WindowRect(reversed, other), WindowRect(forward, window));
    EXPECT_EQ(
        reversed.Widget()->parentWidget(),
        platform::RuntimeCheckCast<platform::RectControl>(other._ControlByName("grp")).Widget());
    EXPECT_EQ(reversed.Widget()->geometry(), forward.Widget()->geometry());
    EXPECT_EQ(reversed.Value(), "N");
    EXPECT_EQ(reversed.Visible(), forward.Visible());
    EXPECT_EQ(reversed.Name(), forward.Name());
    EXPECT_EQ(static_cast<QLabel*>(reversed.Widget())->alignment(),
              static_cast<QLabel*>(forward.Widget())->alignment());
    EXPECT_EQ(reversed.Widget()->font(), forward.Widget()->font());
}

TEST_F(RecordsTest, LabelsShowTheirTextColourSizeAndAlignment) {
    Make<platform::GroupBox>(window, "grp", kFullGroupBox);
    auto& label = Make<platform::Label>(window, "lbl", kFullLabel);
    auto* qlabel = static_cast<QLabel*>(label.Widget());

    EXPECT_EQ(qlabel->text(), QStringLiteral("N"));
    EXPECT_EQ(qlabel->palette().color(QPalette::WindowText), QColor(0xCC, 0, 0));
    EXPECT_TRUE(qlabel->alignment() & Qt::AlignHCenter);
    EXPECT_NEAR(QFontInfo(qlabel->font()).pixelSize(), 12, 1);  // a record point is a pixel
    EXPECT_FALSE(qlabel->font().bold());
    EXPECT_EQ(qlabel->focusPolicy(), Qt::NoFocus);
}

TEST_F(RecordsTest, FieldsTakeColoursBorderAlignmentAndReadOnly) {
    auto& field = Make<platform::TextField>(window, "fld", kFullField);
    auto* edit = static_cast<QLineEdit*>(field.Widget());

    EXPECT_TRUE(edit->hasFrame());
    EXPECT_TRUE(edit->alignment() & Qt::AlignHCenter);
    EXPECT_TRUE(field.ReadOnly());
    EXPECT_EQ(edit->palette().color(QPalette::Base), QColor(Qt::white));
    EXPECT_EQ(edit->palette().color(QPalette::Text), QColor(Qt::black));
    EXPECT_EQ(edit->maxLength(), 32767);  // 0 is no limit
    EXPECT_EQ(edit->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(edit->focusPolicy(), Qt::StrongFocus);
}

TEST_F(RecordsTest, ButtonsAndFramesShowTheirCaptionsAsWritten) {
    auto& box = Make<platform::GroupBox>(window, "grp", kFullGroupBox);
    auto& button = Make<platform::PushButton>(window, "btn", kFullPushButton);
    auto& radio = Make<platform::RadioButton>(window, "rad", kFullRadioButton);

    EXPECT_EQ(box.Caption(), "Sample & 2");
    EXPECT_EQ(static_cast<QGroupBox*>(box.Widget())->title(), QStringLiteral("Sample && 2"));
    EXPECT_EQ(button.Caption(), "?");
    EXPECT_TRUE(button.Default());
    EXPECT_TRUE(button.Widget()->font().bold());
    EXPECT_EQ(button.Widget()->focusPolicy(), Qt::TabFocus);
    EXPECT_EQ(radio.Caption(), "Independent Means");
    EXPECT_TRUE(radio.Value());
}

TEST_F(RecordsTest, TheTextAreaShowsParagraphsLeftAlignedWithoutBorder) {
    auto& area = Make<platform::TextArea>(window, "area", kFullTextArea);
    auto* edit = static_cast<QTextEdit*>(area.Widget());

    EXPECT_EQ(area.Text(), "First paragraph.\r\rSecond paragraph. ");
    EXPECT_EQ(edit->document()->blockCount(), 3);
    EXPECT_EQ(edit->frameShape(), QFrame::NoFrame);
    EXPECT_FALSE(edit->isReadOnly());
    EXPECT_TRUE(edit->tabChangesFocus());
    EXPECT_EQ(edit->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_TRUE(edit->document()->defaultTextOption().alignment() & Qt::AlignLeft);
}

TEST_F(RecordsTest, AControlHiddenOrDisabledByItsRecordStaysSoOnAShownWindow) {
    constexpr auto kHidden =
        PLATFORM_RECORD(Int("Left", 10), Int("Top", 10), Int("Width", 50), Int("Height", 20),
                        Bool("Visible", false), Bool("Enabled", false));
    auto& field = Make<platform::TextField>(window, "fld", kHidden);

    window.Show();

    EXPECT_FALSE(field.Visible());
    EXPECT_FALSE(field.Widget()->isVisible());
    EXPECT_FALSE(field.Enabled());
    EXPECT_FALSE(field.Widget()->isEnabled());
}

TEST_F(RecordsTest, TheTimerRecordSetsPeriodAndModeUnderEitherName) {
    platform::Timer timer;
    constexpr auto kModeRecord = PLATFORM_RECORD(Int("Period", 4000), Int("Mode", 2));

    platform::ApplyRecord(timer, kModeRecord.view());

    EXPECT_EQ(timer.Period(), 4000);
    EXPECT_EQ(timer.Mode(), 2);
    EXPECT_TRUE(timer.Armed());
    timer.Mode(0);
    EXPECT_FALSE(timer.Armed());
}

constexpr auto kWideLabel =
    PLATFORM_RECORD(Int("Left", 10), Int("Top", 10), Int("Width", 60), Int("Height", 18),
                    Str("Value", "Standard Deviation"), Color("TextColor", 0xCC0000),
                    Single("FontSize", 12), Int("TextAlignment", 2));

TEST_F(RecordsTest, ALineTooWideForItsLabelIsDrawnSmallerNotCutOff) {
    auto& label = Make<platform::Label>(window, "wide", kWideLabel);
    const QImage shown = label.Widget()->grab().toImage();

    int left = shown.width(), right = -1;
    for (int x = 0; x < shown.width(); ++x) {
        for (int y = 0; y < shown.height(); ++y) {
            if (QColor(shown.pixel(x, y)).red() > 150 && QColor(shown.pixel(x, y)).green() < 100) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }

    ASSERT_GE(right, 0);  // the text is drawn
    EXPECT_GT(left, 0);   // and neither end is cut off
    EXPECT_LT(right, shown.width() - 1);
    EXPECT_GT(right - left, shown.width() / 2);
}

}  // namespace
