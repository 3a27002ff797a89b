// The control window as it comes up: every control against one table, the window's frame, the
// names a screen reader speaks and the Tab order.
#include <QAccessible>
#include <QFont>
#include <QPalette>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

using platform::RectControl;

// A label's or button's text, a frame's caption, a field's content.
std::string TextOf(const RectControl& control) {
    if (auto* label = dynamic_cast<const platform::Label*>(&control))
        return label->Value();
    if (auto* field = dynamic_cast<const platform::TextField*>(&control))
        return field->Text();
    if (auto* button = dynamic_cast<const platform::PushButton*>(&control))
        return button->Caption();
    if (auto* radio = dynamic_cast<const platform::RadioButton*>(&control))
        return radio->Caption();
    if (auto* box = dynamic_cast<const platform::GroupBox*>(&control))
        return box->Caption();
    return "";
}

// What sets a control apart that a user notices: a label's colour, as drawn in its present
// state, a read-only field, a default button, bold type.
std::string LookOf(const RectControl& control) {
    const QWidget& widget = *control.Widget();
    std::ostringstream look;
    if (dynamic_cast<const platform::Label*>(&control)) {
        look << " #" << std::hex << std::setw(6) << std::setfill('0')
             << (widget.palette().color(widget.foregroundRole()).rgb() & 0xFFFFFFu);
    }
    auto* field = dynamic_cast<const platform::TextField*>(&control);
    auto* button = dynamic_cast<const platform::PushButton*>(&control);
    look << (field && field->ReadOnly() ? " read-only" : "")
         << (button && button->Default() ? " default" : "")
         << (widget.font().bold() ? " bold" : "");
    return look.str();
}

// Kind, name, frame, place on the window's content, TabIndex and TabStop, own visibility and
// state, text and look.
std::string Describe(ControlWnd& form, const RectControl& control) {
    const QWidget& widget = *control.Widget();
    const QPoint at = widget.mapTo(form.ContentWidget(), QPoint(0, 0));
    std::ostringstream out;
    out << control.Class().name << " " << control.Name() << " in "
        << (control.InitialParent().empty() ? "window" : control.InitialParent()) << " at "
        << at.x() << "," << at.y() << " " << widget.width() << "x" << widget.height() << " tab "
        << control.TabIndex() << (control.TabStop() ? " stop" : "")
        << (control.Visible() ? " shown" : "") << (control.Enabled() ? "" : " disabled") << " \""
        << TextOf(control) << "\"" << LookOf(control);
    return out.str();
}

using FormTest = UiTest;

TEST_F(FormTest, TheControlsComeUpInCreationOrderAsTheTableHasThem) {
    ControlWnd& form = Form();
    // clang-format off
    const std::vector<std::string> expected{
        "Label n2text in window at 214,308 80x18 tab 0 \"N\" #cc0000",
        "TextField rfld in window at 213,287 80x22 tab 8 stop \"\"",
        "GroupBox GroupBox2 in window at 188,167 140x165 tab 2 stop \"Sample 2\"",
        "TextField m2fld in GroupBox2 at 213,192 80x22 tab 3 stop \"\"",
        "TextField sd2fld in GroupBox2 at 213,237 80x22 tab 4 stop \"\"",
        "TextField n2fld in GroupBox2 at 213,287 80x22 tab 5 stop \"\"",
        "Label StaticText3 in GroupBox2 at 213,214 80x18 tab 4 \"Mean\" #cc0000",
        "Label StaticText4 in GroupBox2 at 199,259 110x18 tab 5 \"Standard Deviation\" #cc0000",
        "Separator Sep2 in GroupBox2 at 188,277 140x5 tab 6 stop \"\"",
        "Label rtext in GroupBox2 at 214,307 80x18 tab 7 \"r\" #cc0000",
        "GroupBox GroupBox1 in window at 27,167 140x165 tab 3 stop \"Sample 1\"",
        "TextField m1fld in GroupBox1 at 52,192 80x22 tab 0 stop \"\"",
        "TextField sd1fld in GroupBox1 at 52,237 80x22 tab 1 stop \"\"",
        "TextField n1fld in GroupBox1 at 52,287 80x22 tab 2 stop \"\"",
        "Label StaticText1 in GroupBox1 at 52,214 80x18 tab 3 \"Mean\" #cc0000",
        "Label StaticText2 in GroupBox1 at 38,259 110x18 tab 4 \"Standard Deviation\" #cc0000",
        "Label StaticText7 in GroupBox1 at 46,308 95x18 tab 5 \"N\" #cc0000",
        "Separator Sep1 in GroupBox1 at 27,277 140x5 tab 6 stop \"\"",
        "Canvas HalbrineTitle in window at 6,2 488x73 tab 4 shown \"\"",
        "PushButton CalcBtn in window at 21,360 80x30 tab 5 shown \"Calculate\" default",
        "PushButton ClearBtn in window at 401,360 80x30 tab 6 shown \"Clear\" default",
        "Label copyright in window at 6,72 488x16 tab 7 \"\u00A9 2026 The Korvane developers\" #808080",
        "TextField tfld in window at 369,237 80x22 tab 8 disabled \"\" read-only",
        "TextField pfld in window at 369,287 80x22 tab 9 disabled \"\" read-only",
        "Label dtail in window at 370,309 80x20 tab 10 stop disabled \"two-tailed\" #777777",
        "RadioButton IBtn in window at 23,130 150x18 tab 12 stop shown \"Independent Means\"",
        "RadioButton RBtn in window at 190,130 115x18 tab 13 stop shown \"Related Means\"",
        "GroupBox typeBox in window at 19,123 300x32 tab 14 stop shown \"\" bold",
        "Label ttext in window at 369,258 80x18 tab 15 disabled \"t\" #999999 bold",
        "TextField dfFld in window at 369,192 80x22 tab 16 disabled \"\" read-only",
        "Label dfText in window at 369,214 80x18 tab 17 disabled \"df\" #999999 bold",
        "Label StaticText5 in window at 283,338 12x20 tab 18 stop shown \"Untitled\" #ffffff bold",
        "PushButton PushButton1 in window at 226,360 50x30 tab 19 stop shown \"?\" default bold",
    };
    // clang-format on
    std::vector<std::string> actual;
    for (std::size_t i = 0; i < form.ControlCount(); ++i) {
        actual.push_back(
            Describe(form, platform::RuntimeCheckCast<RectControl>(form.ControlAt(i))));
    }
    EXPECT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < std::min(actual.size(), expected.size()); ++i) {
        EXPECT_EQ(actual[i], expected[i]);
    }
    EXPECT_FALSE(form.IBtn().Value() || form.RBtn().Value());
}

TEST_F(FormTest, TheWindowIsTitledOfFixedSizeAndCannotBeZoomed) {
    ControlWnd& form = Form();
    EXPECT_EQ(form.Title(), "Korvane");
    EXPECT_EQ(form.ContentWidget()->size(), QSize(500, 400));
    EXPECT_EQ(form.Widget()->minimumSize(), form.Widget()->maximumSize());
    const Qt::WindowFlags flags = form.Widget()->windowFlags();
    EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowMinimizeButtonHint) &&
                flags.testFlag(Qt::WindowCloseButtonHint));
}

// Every control a person sees has a name that says what it does; the white-on-white label is
// not read out, and the radio pair is one group named by its frame.
TEST_F(FormTest, AScreenReaderHearsANameForEveryVisibleControlAndNothingInvisible) {
    ControlWnd& form = Form();
    Click(form.IBtn());
    const std::vector<std::pair<const char*, const char*>> spoken{
        {"m1fld", "Mean of sample 1"},
        {"sd2fld", "Standard deviation of sample 2"},
        {"n2fld", "N of sample 2"},
        {"pfld", "Probability, two-tailed"},
        {"PushButton1", "Show the t-test information"},
        {"typeBox", "Kind of t-test"},
        {"HalbrineTitle", "Korvane, Student's t-test from summary statistics"},
        {"StaticText2", "Standard Deviation"}};
    for (const auto& [name, words] : spoken) {
        const auto& control = platform::RuntimeCheckCast<RectControl>(form._ControlByName(name));
        QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(control.Widget());
        ASSERT_NE(heard, nullptr) << name;
        EXPECT_EQ(heard->text(QAccessible::Name).toStdString(), words) << name;
        EXPECT_EQ(heard->state().invisible, !control.Widget()->isVisible()) << name;
    }
    EXPECT_TRUE(
        QAccessible::queryAccessibleInterface(form.StaticText5().Widget())->state().invisible);
    EXPECT_EQ(form.IBtn().Widget()->parentWidget(), form.typeBox().Widget());
}

// Typing a whole test with Tab between the values fills the fields in reading order; Tab then
// goes on to "?", the chosen radio button and back to the first field.
TEST_F(FormTest, TypingWithTabFillsTheFieldsInReadingOrder) {
    for (const char* choice : {"IBtn", "RBtn"}) {
        ControlWnd& form = Form();
        auto& radio =
            platform::RuntimeCheckCast<platform::RadioButton>(form._ControlByName(choice));
        Click(radio);
        for (const char* value : {"1", "2", "3", "4", "5", "6"}) {
            QTest::keyClicks(QApplication::focusWidget(), value);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        const platform::TextField& last = choice[0] == 'R' ? form.rfld() : form.n2fld();
        EXPECT_EQ(form.m1fld().Text() + form.sd1fld().Text() + form.n1fld().Text() +
                      form.m2fld().Text() + form.sd2fld().Text() + last.Text(),
                  "123456")
            << choice;
        EXPECT_TRUE(HasFocus(form.PushButton1()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(radio));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(form.m1fld()));
        EXPECT_EQ(Beeps(), 0);
        platform::DestroyAllWindows();
    }
}

}  // namespace
}  // namespace korvane::testing
