// The control window as it comes up: which controls show, where they stand, what they say, and
// how the window itself behaves.
#include <QAccessible>
#include <QMainWindow>
#include <QRect>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

const std::vector<std::string> kAllControls{
    "n2text",        "rfld",        "GroupBox2",   "m2fld",       "sd2fld",      "n2fld",
    "StaticText3",   "StaticText4", "Sep2",        "rtext",       "GroupBox1",   "m1fld",
    "sd1fld",        "n1fld",       "StaticText1", "StaticText2", "StaticText7", "Sep1",
    "HalbrineTitle", "CalcBtn",     "ClearBtn",    "copyright",   "tfld",        "pfld",
    "dtail",         "IBtn",        "RBtn",        "typeBox",     "ttext",       "dfFld",
    "dfText",        "StaticText5", "PushButton1"};

platform::RectControl& Control(ControlWnd& form, const std::string& name) {
    return platform::RuntimeCheckCast<platform::RectControl>(form._ControlByName(name));
}

platform::TextField& Field(ControlWnd& form, const std::string& name) {
    return platform::RuntimeCheckCast<platform::TextField>(form._ControlByName(name));
}

// The control's rectangle counted from the top-left corner of the window's content, below the
// menu bar.
QRect PlaceInWindow(ControlWnd& form, const std::string& name) {
    QWidget* content = qobject_cast<QMainWindow*>(form.Widget())->centralWidget();
    QWidget* widget = Control(form, name).Widget();
    return QRect(widget->mapTo(content, QPoint(0, 0)), widget->size());
}

using FormTest = UiTest;

TEST_F(FormTest, AtStartOnlyTitleButtonsRadioButtonsTheirFrameAndTheBlankLabelShow) {
    ControlWnd& form = Form();
    const std::set<std::string> shown{"HalbrineTitle", "CalcBtn", "ClearBtn",    "IBtn",
                                      "RBtn",          "typeBox", "StaticText5", "PushButton1"};
    for (const std::string& name : kAllControls) {
        SCOPED_TRACE(name);
        const bool expected = shown.count(name) == 1;
        EXPECT_EQ(Control(form, name).Visible(), expected);
        EXPECT_EQ(Control(form, name).Widget()->isVisible(), expected);
    }
    EXPECT_FALSE(form.IBtn().Value());
    EXPECT_FALSE(form.RBtn().Value());
    EXPECT_EQ(Globals::btn, 0);
}

TEST_F(FormTest, ResultControlsStartDisabledAndEntryFieldsEnabled) {
    ControlWnd& form = Form();
    for (const char* name : {"tfld", "pfld", "dfFld", "dtail", "ttext", "dfText"}) {
        EXPECT_FALSE(Control(form, name).Enabled()) << name;
    }
    for (const char* name : {"m1fld", "m2fld", "sd1fld", "sd2fld", "n1fld", "n2fld", "rfld"}) {
        EXPECT_TRUE(Field(form, name).Enabled()) << name;
        EXPECT_FALSE(Field(form, name).ReadOnly()) << name;
    }
    for (const char* name : {"tfld", "pfld", "dfFld"}) {
        EXPECT_TRUE(Field(form, name).ReadOnly()) << name;
    }
}

TEST_F(FormTest, ControlsStandWhereTheLayoutPutsThemAlsoInsideAPanel) {
    ControlWnd& form = Form();
    form.IBtn_Action(form.IBtn());  // shows the panels, so their children have a place
    EXPECT_EQ(PlaceInWindow(form, "HalbrineTitle"), QRect(6, 2, 488, 73));
    EXPECT_EQ(PlaceInWindow(form, "GroupBox2"), QRect(188, 167, 140, 165));
    EXPECT_EQ(PlaceInWindow(form, "m2fld"), QRect(213, 192, 80, 22));
    EXPECT_EQ(PlaceInWindow(form, "StaticText4"), QRect(199, 259, 110, 18));
    EXPECT_EQ(PlaceInWindow(form, "m1fld"), QRect(52, 192, 80, 22));
    EXPECT_EQ(PlaceInWindow(form, "StaticText7"), QRect(46, 308, 95, 18));
    EXPECT_EQ(PlaceInWindow(form, "n2text"), QRect(214, 308, 80, 18));
    EXPECT_EQ(PlaceInWindow(form, "IBtn"), QRect(23, 130, 150, 18));
    EXPECT_EQ(PlaceInWindow(form, "typeBox"), QRect(19, 123, 300, 32));
    EXPECT_EQ(PlaceInWindow(form, "PushButton1"), QRect(226, 360, 50, 30));
    EXPECT_EQ(PlaceInWindow(form, "ClearBtn"), QRect(401, 360, 80, 30));
}

TEST_F(FormTest, RfldAndN2fldShareOnePlaceUnderDifferentParents) {
    ControlWnd& form = Form();
    EXPECT_EQ(PlaceInWindow(form, "rfld"), QRect(213, 287, 80, 22));
    EXPECT_EQ(PlaceInWindow(form, "n2fld"), QRect(213, 287, 80, 22));
    EXPECT_EQ(form.rfld().Widget()->parentWidget(), form.n2text().Widget()->parentWidget());
    EXPECT_EQ(form.n2fld().Widget()->parentWidget(), form.GroupBox2().Widget());
    EXPECT_EQ(form.rtext().Widget()->parentWidget(), form.GroupBox2().Widget());
}

TEST_F(FormTest, CaptionsAndLabelsCarryTheirTextsAndAllThreeButtonsAreDefault) {
    ControlWnd& form = Form();
    EXPECT_TRUE(form.CalcBtn().Default() && form.ClearBtn().Default() &&
                form.PushButton1().Default());
    EXPECT_EQ(form.CalcBtn().Caption(), "Calculate");
    EXPECT_EQ(form.ClearBtn().Caption(), "Clear");
    EXPECT_EQ(form.PushButton1().Caption(), "?");
    EXPECT_EQ(form.IBtn().Caption(), "Independent Means");
    EXPECT_EQ(form.RBtn().Caption(), "Related Means");
    EXPECT_EQ(form.GroupBox1().Caption(), "Sample 1");
    EXPECT_EQ(form.GroupBox2().Caption(), "Sample 2");
    EXPECT_EQ(form.typeBox().Caption(), "");
    // clang-format off
    const std::map<std::string, std::string> labels{
        {"StaticText1", "Mean"}, {"StaticText2", "Standard Deviation"}, {"StaticText3", "Mean"},
        {"StaticText4", "Standard Deviation"}, {"StaticText7", "N"}, {"n2text", "N"},
        {"rtext", "r"}, {"ttext", "t"}, {"dfText", "df"}, {"dtail", "two-tailed"},
        {"StaticText5", "Untitled"}};
    // clang-format on
    for (const auto& [name, text] : labels) {
        EXPECT_EQ(platform::RuntimeCheckCast<platform::Label>(form._ControlByName(name)).Value(),
                  text)
            << name;
    }
    EXPECT_NE(form.copyright().Value().find("\u00A9"), std::string::npos);
}

// What a screen reader hears: every control a person sees has a name that says what it does,
// the pictures have words, the invisible label is not read out, and the radio pair is a group.
TEST_F(FormTest, AScreenReaderHearsANameForEveryVisibleControlAndNothingInvisible) {
    ControlWnd& form = Form();
    Click(form.IBtn());
    const std::map<std::string, std::string> spoken{
        {"m1fld", "Mean of sample 1"},
        {"sd2fld", "Standard deviation of sample 2"},
        {"n2fld", "N of sample 2"},
        {"pfld", "Probability, two-tailed"},
        {"dfFld", "Degrees of freedom"},
        {"PushButton1", "Show the t-test information"},
        {"typeBox", "Kind of t-test"},
        {"HalbrineTitle", "Korvane, Student's t-test from summary statistics"},
        {"IBtn", "Independent Means"},
        {"GroupBox1", "Sample 1"},
        {"StaticText2", "Standard Deviation"},
    };
    for (const auto& [name, words] : spoken) {
        QAccessibleInterface* heard =
            QAccessible::queryAccessibleInterface(Control(form, name).Widget());
        ASSERT_NE(heard, nullptr) << name;
        EXPECT_EQ(heard->text(QAccessible::Name).toStdString(), words) << name;
        EXPECT_EQ(heard->state().invisible, !Control(form, name).Widget()->isVisible()) << name;
    }
    QAccessibleInterface* blank =
        QAccessible::queryAccessibleInterface(Control(form, "StaticText5").Widget());
    EXPECT_TRUE(blank->state().invisible);  // white on white
    for (const char* radio : {"IBtn", "RBtn"}) {
        EXPECT_EQ(Control(form, radio).Widget()->parentWidget(), form.typeBox().Widget());
    }
    EXPECT_EQ(PlaceInWindow(form, "RBtn"), QRect(190, 130, 115, 18));
}

// The labels draw in their records' colours whatever their state: dtail is never enabled.
TEST_F(FormTest, ALabelDrawsInItsRecordColourThoughDisabled) {
    ControlWnd& form = Form();
    const QWidget& dtail = *form.dtail().Widget();
    EXPECT_FALSE(dtail.isEnabled());
    EXPECT_EQ(dtail.palette().color(QPalette::Disabled, QPalette::WindowText), QColor(0x777777));
}

TEST_F(FormTest, TheWindowIsTitledAndOfFixedSize) {
    ControlWnd& form = Form();
    EXPECT_EQ(form.Title(), "Korvane");
    QWidget* content = qobject_cast<QMainWindow*>(form.Widget())->centralWidget();
    EXPECT_EQ(content->size(), QSize(500, 400));
    EXPECT_EQ(form.Widget()->minimumSize(), form.Widget()->maximumSize());
    EXPECT_FALSE(form.Widget()->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(form.Widget()->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_TRUE(form.Widget()->windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

TEST_F(FormTest, TheAccessorGivesTheOneLivingWindow) {
    ControlWnd& form = Form();
    EXPECT_EQ(&ControlWnd::Instance(), &form);
    EXPECT_EQ(platform::_GetImplicitWindow(ControlWnd::kClassName), &form);
    int controlWindows = 0;
    for (QWidget* top : QApplication::topLevelWidgets()) {
        controlWindows += top->windowTitle() == "Korvane" ? 1 : 0;
    }
    EXPECT_EQ(controlWindows, 1);
}

TEST_F(FormTest, TheClassAnswersForTheSixEventsItImplements) {
    ControlWnd& form = Form();
    for (const char* event :
         {"Layout", "CreateControls", "AddMenuHandlers", "Close", "Activate", "EnableMenuItems"}) {
        EXPECT_TRUE(form.IsEventImplemented(event)) << event;
    }
    for (const char* event : {"KeyDown", "MouseDown", "Deactivate", "close"}) {
        EXPECT_FALSE(form.IsEventImplemented(event)) << event;
    }
}

// Typing a whole test with Tab between the values fills the fields in reading order: first
// sample's mean, SD and N, then the second's, and r in the related test. Tab then goes on to "?"
// and the radio group before it comes back to the first field.
TEST_F(FormTest, TypingWithTabFillsTheFieldsInReadingOrder) {
    struct Case {
        const char* test;
        std::vector<std::string> fields;
    };
    const Case cases[] = {
        {"IBtn", {"m1fld", "sd1fld", "n1fld", "m2fld", "sd2fld", "n2fld"}},
        {"RBtn", {"m1fld", "sd1fld", "n1fld", "m2fld", "sd2fld", "rfld"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.test);
        ControlWnd& form = Form();
        Click(Control(form, c.test));
        const std::vector<std::string> typed{"10", "2", "10", "8", "3", ".5"};
        for (const std::string& value : typed) {
            QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(value));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (std::size_t i = 0; i < typed.size(); ++i) {
            EXPECT_EQ(Field(form, c.fields[i]).Text(), typed[i]) << c.fields[i];
        }
        EXPECT_TRUE(HasFocus(form.PushButton1()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(Control(form, c.test)))
            << QApplication::focusWidget()->metaObject()->className() << " "
            << QApplication::focusWidget()
                   ->accessibleName()
                   .toStdString();  // the chosen one of the pair
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(form.m1fld()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_TRUE(HasFocus(Control(form, c.test)));
        EXPECT_EQ(Beeps(), 0);
        platform::DestroyAllWindows();
    }
}

}  // namespace
}  // namespace korvane::testing
