// The test choice, Calculate, Clear and the key filter through the real form: clicks and typed
// keys in, the controls a user sees, the result texts, the message and the focus out. The
// arithmetic and the checks themselves are the engine's and tested there.
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/qt/buttons.h"
#include "platform/qt/text_controls.h"
#include "stats/messages.h"
#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

using Names = std::set<std::string>;
const Names kAlwaysShown{"HalbrineTitle", "typeBox",  "IBtn",        "RBtn",
                         "CalcBtn",       "ClearBtn", "PushButton1", "StaticText5"};
const Names kEntries{"GroupBox1", "GroupBox2",   "m1fld", "StaticText1", "sd1fld", "StaticText2",
                     "n1fld",     "StaticText7", "m2fld", "StaticText3", "sd2fld", "StaticText4"};
const Names kResults{"dfFld", "dfText", "tfld", "ttext", "pfld", "dtail"};

Names Union(std::initializer_list<Names> sets) {
    Names all;
    for (const Names& set : sets)
        all.insert(set.begin(), set.end());
    return all;
}
const Names kIndependentForm = Union({kAlwaysShown, kEntries, {"n2fld", "n2text"}});
const Names kRelatedForm = Union({kAlwaysShown, kEntries, {"rfld", "rtext", "Sep1", "Sep2"}});

class FormUseTest : public FormFixture {
  protected:
    // The controls a user can see now.
    Names Seen() {
        Names seen;
        for (std::size_t i = 0; i < form->ControlCount(); ++i) {
            auto& control = platform::RuntimeCheckCast<platform::RectControl>(form->ControlAt(i));
            if (control.Widget()->isVisible())
                seen.insert(control.Name());
        }
        return seen;
    }

    void TypeIndependentExample() {
        Click(form->IBtn());
        Type(form->m1fld(), "10");
        Type(form->m2fld(), "8");
        Type(form->sd1fld(), "2");
        Type(form->sd2fld(), "3");
        Type(form->n1fld(), "10");
        Type(form->n2fld(), "12");
    }

    std::string Results() {
        return form->tfld().Text() + " " + form->dfFld().Text() + " " + form->pfld().Text();
    }
};

TEST_F(FormUseTest, EachTestShowsItsEntriesAndFocusesTheFirstMean) {
    EXPECT_EQ(Seen(), kAlwaysShown);
    platform::recorder::Start();
    Click(form->IBtn());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_EQ(Seen(), kIndependentForm);
    EXPECT_TRUE(HasFocus(form->m1fld()));
    const std::vector<std::string> log = Log();  // each step may be drawn as it comes
    EXPECT_EQ(std::vector<std::string>(log.begin(), log.begin() + 4),
              (std::vector<std::string>{"rfld.Visible=0", "rtext.Visible=0", "n2fld.Visible=1",
                                        "n2text.Visible=1"}));
    Click(form->sd2fld());
    Click(form->RBtn());
    EXPECT_EQ(Globals::btn, 2);
    EXPECT_EQ(Seen(), kRelatedForm);
    EXPECT_TRUE(HasFocus(form->m1fld()));
}

TEST_F(FormUseTest, ResultsStayUntilClearAndARefusalFocusesItsField) {
    TypeIndependentExample();
    Click(form->CalcBtn());
    EXPECT_EQ(Results(), "+1.798 20 .0873");
    EXPECT_EQ(Seen(), Union({kIndependentForm, kResults}));
    EXPECT_FALSE(form->dtail().Enabled());
    EXPECT_TRUE(HasFocus(form->n2fld())) << "a result moves no focus";

    form->sd1fld().Text("");
    Click(form->CalcBtn());
    EXPECT_EQ(messages, std::vector<std::string>{messages::kSd1});
    EXPECT_TRUE(HasFocus(form->sd1fld()));
    EXPECT_EQ(Results(), "+1.798 20 .0873");
    EXPECT_EQ(Globals::btn, 1);

    Click(form->RBtn());  // a changed test leaves the results on display
    EXPECT_EQ(Seen(), Union({kRelatedForm, kResults}));
}

// Clear leaves the chosen test; tfld and pfld keep their texts, hidden, and rfld stays
// disabled until Related means is chosen again.
TEST_F(FormUseTest, ClearEmptiesAndHidesAllButKeepsTheChosenTest) {
    TypeIndependentExample();
    form->rfld().Text(".5");  // as if typed before the test was changed
    Click(form->CalcBtn());
    Click(form->ClearBtn());
    EXPECT_EQ(Seen(), kAlwaysShown);
    EXPECT_FALSE(form->IBtn().Value() || form->RBtn().Value());
    std::string texts;
    for (const auto* field : {&form->m1fld(), &form->m2fld(), &form->sd1fld(), &form->sd2fld(),
                              &form->n1fld(), &form->n2fld(), &form->rfld(), &form->dfFld()}) {
        texts += field->Text() + ",";
    }
    EXPECT_EQ(texts, ",,,,,,,,");
    EXPECT_EQ(form->tfld().Text() + " " + form->pfld().Text(), "+1.798 .0873");
    EXPECT_FALSE(form->tfld().Enabled() || form->pfld().Enabled() || form->dfFld().Enabled() ||
                 form->dfText().Enabled() || form->rfld().Enabled());
    Click(form->CalcBtn());  // the hidden, empty fields of the last test are checked
    EXPECT_EQ(messages, std::vector<std::string>{messages::kMean1});
    Click(form->RBtn());
    EXPECT_TRUE(form->rfld().Enabled());
}

// Digits, minus, point, slash, backspace and tab pass in the fields of means and standard
// deviations; any other key beeps and is dropped there, Return included.
TEST_F(FormUseTest, TheKeyFilterLetsNumbersIntoTheFieldsOfMeansAndDeviationsOnly) {
    Click(form->RBtn());
    const std::tuple<platform::TextField*, const char*, const char*, long> cases[] = {
        {&form->m1fld(), "-12.5/0123456789", "-12.5/0123456789", 0},
        {&form->sd1fld(), "1,+ :e5", "15", 5},
        {&form->m2fld(), ";<", "", 2},
        {&form->sd2fld(), "9.-", "9.-", 0},
        {&form->n1fld(), "1,5 e+:", "1,5 e+:", 0},
        {&form->rfld(), "a,b", "a,b", 0}};
    for (const auto& [field, typed, kept, beeps] : cases) {
        const long before = Beeps();
        Type(*field, typed);
        EXPECT_EQ(field->Text(), kept) << typed;
        EXPECT_EQ(Beeps() - before, beeps) << typed;
    }
    const long before = Beeps();
    for (Qt::Key key : {Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Delete, Qt::Key_Return})
        QTest::keyClick(form->m1fld().Widget(), key);
    EXPECT_EQ(form->m1fld().Text(), "-12.5/012345678");
    EXPECT_EQ(Beeps() - before, 3);
    EXPECT_TRUE(messages.empty()) << "Return pressed Calculate";
    QTest::keyClick(form->rfld().Widget(), Qt::Key_Return);  // presses the first default button
    EXPECT_EQ(messages, std::vector<std::string>{messages::kMean2});
}

// The result copied from an Edit menu opened by key, by each way in: the menu is enabled by the
// field that had the keyboard, Copy copies its selection, and the field has the keyboard and its
// selection back once the menu closes.
TEST_F(FormUseTest, EditCopyOpenedByKeyCopiesTheSelectionOfTheFieldThatHadTheKeyboard) {
    const struct {
        const char* keys;
        std::vector<Qt::Key> opening;
        Qt::KeyboardModifiers modifiers;
        Qt::Key choosing;
    } ways[] = {
        {"Alt+E, O", {Qt::Key_E}, Qt::AltModifier, Qt::Key_O},
        {"F10, Right, Return", {Qt::Key_F10, Qt::Key_Right}, {}, Qt::Key_Return},
        {"F10, Down, Right, O", {Qt::Key_F10, Qt::Key_Down, Qt::Key_Right}, {}, Qt::Key_O},
        {"Alt, Right, Down, O", {Qt::Key_Alt, Qt::Key_Right, Qt::Key_Down}, {}, Qt::Key_O},
    };
    TypeIndependentExample();
    Click(form->CalcBtn());
    for (const auto& way : ways) {
        SCOPED_TRACE(way.keys);
        QGuiApplication::clipboard()->setText(QStringLiteral("earlier"));
        Click(form->pfld());
        Press(*form, Qt::Key_A, Qt::ControlModifier);
        for (Qt::Key key : way.opening) {
            if (key == Qt::Key_Alt)
                TapAlt(*form);
            else
                Press(*form, key, way.modifiers);
        }
        EXPECT_EQ(OpenMenuTitle(), "&Edit");
        EXPECT_EQ(OpenMenuItems(),
                  (std::vector<std::string>{"(&Undo)", "-", "(&Cut)", "C&opy", "(&Paste)"}));
        Press(*form, way.choosing);
        EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), ".0873");
        EXPECT_EQ(OpenMenuTitle(), "");
        EXPECT_TRUE(HasFocus(form->pfld()));
        EXPECT_EQ(qobject_cast<QLineEdit*>(form->pfld().Widget())->selectedText().toStdString(),
                  ".0873");
        CloseMenus(*form);  // should a way have left one open
    }
}

// On X11 an open menu walked by key takes the keyboard from the field (the offscreen platform
// leaves it with the field, so the test hands it over as X11 does): the Edit menu it leads to
// still serves the field, and Copy copies its selection.
TEST_F(FormUseTest, TheEditMenuServesTheFieldAlsoWhenAnOpenMenuHasTheKeyboard) {
    TypeIndependentExample();
    Click(form->CalcBtn());
    Click(form->pfld());
    Press(*form, Qt::Key_A, Qt::ControlModifier);
    Press(*form, Qt::Key_F10);
    ASSERT_EQ(OpenMenuTitle(), "&File");
    QApplication::activePopupWidget()->setFocus(Qt::PopupFocusReason);
    ASSERT_EQ(QApplication::focusWidget(), QApplication::activePopupWidget());
    Press(*QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(OpenMenuTitle(), "&Edit");
    EXPECT_EQ(OpenMenuItems(),
              (std::vector<std::string>{"(&Undo)", "-", "(&Cut)", "C&opy", "(&Paste)"}));
    CloseMenus(*form);
}

}  // namespace
}  // namespace korvane::testing
