// The test choice, Calculate and Clear through the real form: clicks and typed keys in, the
// controls a user sees, the result texts, the message and the focus out. The arithmetic and
// the checks themselves are the engine's and tested there.
#include <QTimer>
#include <set>
#include <string>
#include <vector>

#include "stats/messages.h"
#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

using Names = std::set<std::string>;
const Names kAlwaysShown{"HalbrineTitle", "typeBox",  "IBtn",        "RBtn",
                         "CalcBtn",       "ClearBtn", "PushButton1", "StaticText5"};
const Names kEntries{"GroupBox1", "GroupBox2",   "m1fld", "StaticText1", "sd1fld", "StaticText2",
                     "n1fld",     "StaticText7", "m2fld", "StaticText3", "sd2fld", "StaticText4"};
const Names kIndependentOnly{"n2fld", "n2text"};
const Names kRelatedOnly{"rfld", "rtext", "Sep1", "Sep2"};
const Names kResults{"dfFld", "dfText", "tfld", "ttext", "pfld", "dtail"};

Names Union(std::initializer_list<Names> sets) {
    Names all;
    for (const Names& set : sets)
        all.insert(set.begin(), set.end());
    return all;
}

class CalculateTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        form = &Form();
    }

    // The controls a user can see now.
    Names Seen() {
        Names seen;
        for (std::size_t i = 0; i < form->ControlCount(); ++i) {
            const auto& control =
                platform::RuntimeCheckCast<platform::RectControl>(form->ControlAt(i));
            if (control.Widget()->isVisible())
                seen.insert(control.Name());
        }
        return seen;
    }

    void TypeIndependentExample() {
        Click(form->IBtn());
        for (auto [field, text] : {std::pair{&form->m1fld(), "10"},
                                   {&form->m2fld(), "8"},
                                   {&form->sd1fld(), "2"},
                                   {&form->sd2fld(), "3"},
                                   {&form->n1fld(), "10"},
                                   {&form->n2fld(), "12"}}) {
            Type(*field, text);
        }
    }

    std::string Results() {
        return form->tfld().Text() + " " + form->dfFld().Text() + " " + form->pfld().Text();
    }

    ControlWnd* form = nullptr;
};

TEST_F(CalculateTest, EachTestShowsItsEntriesAndFocusesTheFirstMean) {
    EXPECT_EQ(Seen(), kAlwaysShown);
    platform::recorder::Start();
    Click(form->IBtn());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kEntries, kIndependentOnly}));
    EXPECT_TRUE(HasFocus(form->m1fld()));
    // What goes first matters to a screen that draws each step.
    const std::vector<std::string> log = Log();
    EXPECT_EQ(std::vector<std::string>(log.begin(), log.begin() + 4),
              (std::vector<std::string>{"rfld.Visible=0", "rtext.Visible=0", "n2fld.Visible=1",
                                        "n2text.Visible=1"}));

    Click(form->sd2fld());
    Click(form->RBtn());
    EXPECT_EQ(Globals::btn, 2);
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kEntries, kRelatedOnly}));
    EXPECT_TRUE(HasFocus(form->m1fld()));
    EXPECT_TRUE(form->RBtn().Value() && !form->IBtn().Value());
}

TEST_F(CalculateTest, TypedEntriesShowTheResultsUntilTheNextSuccessOrClear) {
    TypeIndependentExample();
    Click(form->CalcBtn());
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(Results(), "+1.798 20 .0873");
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kEntries, kIndependentOnly, kResults}));
    EXPECT_FALSE(form->dtail().Enabled());
    EXPECT_TRUE(HasFocus(form->n2fld())) << "a result moves no focus";

    form->n2fld().Text("");  // refused: the results stay, so does the chosen test
    Click(form->CalcBtn());
    EXPECT_EQ(messages, std::vector<std::string>{messages::kN2});
    EXPECT_EQ(Results(), "+1.798 20 .0873");
    EXPECT_EQ(Globals::btn, 1);

    Click(form->RBtn());  // a changed test leaves the results on display
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kEntries, kRelatedOnly, kResults}));
    Type(form->rfld(), ".5");
    Click(form->CalcBtn());
    EXPECT_EQ(Results(), "+2.390 9 .0405");
}

TEST_F(CalculateTest, ARefusalFocusesItsField) {
    Click(form->RBtn());
    Type(form->m1fld(), "10");
    platform::recorder::Start();
    Click(form->CalcBtn());
    EXPECT_EQ(Log(), (std::vector<std::string>{std::string("MsgBox:") + messages::kMean2,
                                               "m2fld.SetFocus"}));
    EXPECT_TRUE(HasFocus(form->m2fld()));
}

// A real message box: its closing must not count as an activation of the form, or the chosen
// test would be forgotten.
TEST_F(CalculateTest, DismissingARealMessageKeepsTheChosenTestAndTheFocusMove) {
    platform::SetMessageBoxHook({});
    Click(form->IBtn());
    bool dismissed = false;
    QTimer::singleShot(50, [&dismissed] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            QTest::keyClick(box, Qt::Key_Escape);
            dismissed = true;
        }
    });
    Click(form->CalcBtn());
    ASSERT_TRUE(dismissed);
    EXPECT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    QTest::qWait(50);
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_TRUE(HasFocus(form->m1fld()));
}

// Clear leaves the chosen test; tfld and pfld keep their texts, hidden, and rfld stays
// disabled until Related means is chosen again.
TEST_F(CalculateTest, ClearEmptiesAndHidesAllButKeepsTheChosenTest) {
    TypeIndependentExample();
    form->rfld().Text(".5");  // as if typed before the test was changed
    Click(form->CalcBtn());
    Click(form->ClearBtn());
    EXPECT_EQ(Seen(), kAlwaysShown);
    EXPECT_FALSE(form->IBtn().Value() || form->RBtn().Value());
    EXPECT_EQ(Globals::btn, 1);
    std::string texts;
    for (const auto* field : {&form->m1fld(), &form->m2fld(), &form->sd1fld(), &form->sd2fld(),
                              &form->n1fld(), &form->n2fld(), &form->rfld(), &form->dfFld()}) {
        texts += field->Text() + ",";
    }
    EXPECT_EQ(texts, ",,,,,,,,");
    EXPECT_EQ(form->tfld().Text() + " " + form->pfld().Text(), "+1.798 .0873");
    for (const char* off : {"tfld", "pfld", "dfFld", "dfText", "rfld"}) {
        EXPECT_FALSE(
            platform::RuntimeCheckCast<platform::RectControl>(form->_ControlByName(off)).Enabled())
            << off;
    }

    Click(form->CalcBtn());  // the hidden, empty fields of the last test are checked
    EXPECT_EQ(messages.back(), messages::kMean1);
    Click(form->RBtn());
    EXPECT_TRUE(form->rfld().Enabled());
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kEntries, kRelatedOnly}));
}

}  // namespace
}  // namespace korvane::testing
