// The control window as it comes up: its frame and every control against one table.
#include <QFont>
#include <QPalette>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/qt/buttons.h"
#include "platform/qt/canvas.h"
#include "platform/qt/frames.h"
#include "platform/qt/text_controls.h"
#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

using platform::RectControl;

// What a control shows in words: a label's or field's text, a button's or frame's caption.
std::string TextOf(const QWidget& widget) {
    const QVariant text = widget.property("text");
    return (text.isValid() ? text : widget.property("title")).toString().toStdString();
}

// What sets a control apart that a user notices: a label's colour, as drawn in its present
// state, a read-only field, a default button, bold type.
std::string LookOf(const RectControl& control) {
    const QWidget& widget = *control.Widget();
    std::ostringstream look;
    if (dynamic_cast<const platform::Label*>(&control))
        look << " " << widget.palette().color(widget.foregroundRole()).name().toStdString();
    auto* field = dynamic_cast<const platform::TextField*>(&control);
    auto* button = dynamic_cast<const platform::PushButton*>(&control);
    look << (field && field->ReadOnly() ? " read-only" : "")
         << (button && button->Default() ? " default" : "")
         << (widget.font().bold() ? " bold" : "");
    return look.str();
}

// Kind, name, frame, place on the window's content, TabIndex and TabStop, own visibility and
// state, text, look and the name a screen reader speaks for a control without a caption.
std::string Describe(ControlWnd& form, const RectControl& control) {
    const QWidget& widget = *control.Widget();
    const QPoint at = widget.mapTo(form.ContentWidget(), QPoint(0, 0));
    std::ostringstream out;
    out << control.Class().name << " " << control.Name() << " in "
        << (control.InitialParent().empty() ? "window" : control.InitialParent()) << " at "
        << at.x() << "," << at.y() << " " << widget.width() << "x" << widget.height() << " tab "
        << control.TabIndex() << (control.TabStop() ? " stop" : "")
        << (control.Visible() ? " shown" : "") << (control.Enabled() ? "" : " disabled") << " \""
        << TextOf(widget) << "\"" << LookOf(control);
    if (!widget.accessibleName().isEmpty())
        out << " [" << widget.accessibleName().toStdString() << "]";
    return out.str();
}

// The control's name in a description.
std::string NameIn(const std::string& description) {
    const std::size_t from = description.find(' ') + 1;
    return description.substr(from, description.find(' ', from) - from);
}

// Each expected description against the control of its name, and the controls in the order
// of the descriptions; a control missing from the form or from the descriptions is named.
void ExpectSameControls(const std::vector<std::string>& actual,
                        const std::vector<std::string>& expected) {
    std::map<std::string, std::size_t> made;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        made[NameIn(actual[i])] = i;
    }
    std::string before;  // the last described control found, and where it was made
    std::size_t beforeAt = 0;
    for (const std::string& description : expected) {
        const std::string name = NameIn(description);
        const auto found = made.find(name);
        if (found == made.end()) {
            ADD_FAILURE() << name << " is not on the form";
            continue;
        }
        EXPECT_EQ(actual[found->second], description);
        EXPECT_TRUE(before.empty() || beforeAt < found->second)
            << name << " is created before " << before;
        before = name;
        beforeAt = found->second;
        made.erase(found);
    }
    for (const auto& [name, at] : made) {
        ADD_FAILURE() << name << " is on the form but not described here";
    }
}

using FormTest = FormFixture;

TEST_F(FormTest, TheWindowAndItsControlsComeUpAsTheTableHasThem) {
    EXPECT_EQ(form->Title(), "Korvane");
    EXPECT_EQ(form->ContentWidget()->size(), QSize(500, 400));
    EXPECT_EQ(form->Widget()->minimumSize(), form->Widget()->maximumSize());
    EXPECT_EQ(
        form->Widget()->windowFlags() & (Qt::WindowMaximizeButtonHint |
                                         Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
        Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    // clang-format off
    const std::vector<std::string> expected{
        "Label n2text in window at 214,308 80x18 tab 0 \"N\" #cc0000",
        "TextField rfld in window at 213,287 80x22 tab 8 stop \"\""
            " [Correlation r between the samples]",
        "GroupBox GroupBox2 in window at 188,167 140x165 tab 2 stop \"Sample 2\"",
        "TextField m2fld in GroupBox2 at 213,192 80x22 tab 3 stop \"\" [Mean of sample 2]",
        "TextField sd2fld in GroupBox2 at 213,237 80x22 tab 4 stop \"\""
            " [Standard deviation of sample 2]",
        "TextField n2fld in GroupBox2 at 213,287 80x22 tab 5 stop \"\" [N of sample 2]",
        "Label StaticText3 in GroupBox2 at 213,214 80x18 tab 4 \"Mean\" #cc0000",
        "Label StaticText4 in GroupBox2 at 199,259 110x18 tab 5 \"Standard Deviation\" #cc0000",
        "Separator Sep2 in GroupBox2 at 188,277 140x5 tab 6 stop \"\"",
        "Label rtext in GroupBox2 at 214,307 80x18 tab 7 \"r\" #cc0000",
        "GroupBox GroupBox1 in window at 27,167 140x165 tab 3 stop \"Sample 1\"",
        "TextField m1fld in GroupBox1 at 52,192 80x22 tab 0 stop \"\" [Mean of sample 1]",
        "TextField sd1fld in GroupBox1 at 52,237 80x22 tab 1 stop \"\""
            " [Standard deviation of sample 1]",
        "TextField n1fld in GroupBox1 at 52,287 80x22 tab 2 stop \"\""
            " [N of sample 1, or number of pairs]",
        "Label StaticText1 in GroupBox1 at 52,214 80x18 tab 3 \"Mean\" #cc0000",
        "Label StaticText2 in GroupBox1 at 38,259 110x18 tab 4 \"Standard Deviation\" #cc0000",
        "Label StaticText7 in GroupBox1 at 46,308 95x18 tab 5 \"N\" #cc0000",
        "Separator Sep1 in GroupBox1 at 27,277 140x5 tab 6 stop \"\"",
        "Canvas HalbrineTitle in window at 6,2 488x73 tab 4 shown \"\""
            " [Korvane, Student's t-test from summary statistics]",
        "PushButton CalcBtn in window at 21,360 80x30 tab 5 shown \"Calculate\" default",
        "PushButton ClearBtn in window at 401,360 80x30 tab 6 shown \"Clear\" default",
        "Label copyright in window at 6,72 488x16 tab 7 \"\u00A9 2026 The Korvane developers\""
            " #808080",
        "TextField tfld in window at 369,237 80x22 tab 8 disabled \"\" read-only [t]",
        "TextField pfld in window at 369,287 80x22 tab 9 disabled \"\" read-only"
            " [Probability, two-tailed]",
        "Label dtail in window at 370,309 80x20 tab 10 stop disabled \"two-tailed\" #777777",
        "RadioButton IBtn in window at 23,130 150x18 tab 12 stop shown \"Independent Means\"",
        "RadioButton RBtn in window at 190,130 115x18 tab 13 stop shown \"Related Means\"",
        "GroupBox typeBox in window at 19,123 300x32 tab 14 stop shown \"\" bold [Kind of t-test]",
        "Label ttext in window at 369,258 80x18 tab 15 disabled \"t\" #999999 bold",
        "TextField dfFld in window at 369,192 80x22 tab 16 disabled \"\" read-only"
            " [Degrees of freedom]",
        "Label dfText in window at 369,214 80x18 tab 17 disabled \"df\" #999999 bold",
        "Label StaticText5 in window at 283,338 12x20 tab 18 stop shown \"Untitled\" #ffffff bold",
        "PushButton PushButton1 in window at 226,360 50x30 tab 19 stop shown \"?\" default bold"
            " [Show the t-test information]",
    };
    // clang-format on
    std::vector<std::string> actual;
    for (std::size_t i = 0; i < form->ControlCount(); ++i) {
        actual.push_back(
            Describe(*form, platform::RuntimeCheckCast<RectControl>(form->ControlAt(i))));
    }
    ExpectSameControls(actual, expected);
    EXPECT_FALSE(form->IBtn().Value() || form->RBtn().Value());
}

}  // namespace
}  // namespace korvane::testing
