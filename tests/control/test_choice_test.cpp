// The radio buttons, the Clear button and the states of the form they move between.
#include <set>
#include <string>
#include <vector>

#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

const std::set<std::string> kAlwaysShown{"HalbrineTitle", "typeBox",  "IBtn",        "RBtn",
                                         "CalcBtn",       "ClearBtn", "PushButton1", "StaticText5"};
const std::set<std::string> kCommonEntry{"GroupBox1", "GroupBox2",   "m1fld",  "StaticText1",
                                         "sd1fld",    "StaticText2", "n1fld",  "StaticText7",
                                         "m2fld",     "StaticText3", "sd2fld", "StaticText4"};
const std::set<std::string> kIndependentOnly{"n2fld", "n2text"};
const std::set<std::string> kRelatedOnly{"rfld", "rtext", "Sep1", "Sep2"};
const std::set<std::string> kResults{"dfFld", "dfText", "tfld", "ttext", "pfld", "dtail"};

std::set<std::string> Union(std::initializer_list<std::set<std::string>> sets) {
    std::set<std::string> all;
    for (const auto& set : sets)
        all.insert(set.begin(), set.end());
    return all;
}

class TestChoiceTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        form = &Form();
    }

    platform::RectControl& Control(const std::string& name) {
        return platform::RuntimeCheckCast<platform::RectControl>(form->_ControlByName(name));
    }

    // The names of the controls a user can see now.
    std::set<std::string> Seen() {
        std::set<std::string> seen;
        for (const auto& name : Union({kAlwaysShown,
                                       kCommonEntry,
                                       kIndependentOnly,
                                       kRelatedOnly,
                                       kResults,
                                       {"copyright"}})) {
            if (Control(name).Widget()->isVisible())
                seen.insert(name);
        }
        return seen;
    }

    void FillIndependentExample() {
        Type(form->m1fld(), "10");
        Type(form->m2fld(), "8");
        Type(form->sd1fld(), "2");
        Type(form->sd2fld(), "3");
        Type(form->n1fld(), "10");
        Type(form->n2fld(), "12");
    }

    ControlWnd* form = nullptr;
};

TEST_F(TestChoiceTest, EachTestShowsItsEntriesChecksItsButtonAndFocusesMean1) {
    // Independent shows N of sample 2; Related shows the correlation, enabled, in its place.
    Click(form->IBtn());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kCommonEntry, kIndependentOnly}));
    EXPECT_TRUE(HasFocus(form->m1fld()));
    EXPECT_TRUE(form->IBtn().Value());
    EXPECT_FALSE(form->RBtn().Value());

    Click(form->sd2fld());
    Click(form->RBtn());
    EXPECT_EQ(Globals::btn, 2);
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kCommonEntry, kRelatedOnly}));
    EXPECT_TRUE(form->rfld().Enabled());
    EXPECT_TRUE(HasFocus(form->m1fld()));
    EXPECT_TRUE(form->RBtn().Value());
    EXPECT_FALSE(form->IBtn().Value());
}

TEST_F(TestChoiceTest, ChoosingTheSameTestAgainFocusesMean1Again) {
    Click(form->IBtn());
    Click(form->sd2fld());
    Globals::btn = 0;
    Click(form->IBtn());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_TRUE(HasFocus(form->m1fld()));
}

TEST_F(TestChoiceTest, TextTypedInAFieldThatGetsHiddenComesBackWithIt) {
    Click(form->IBtn());
    Type(form->n2fld(), "12");
    Click(form->RBtn());
    Type(form->rfld(), ".5");
    EXPECT_FALSE(form->n2fld().Widget()->isVisible());
    EXPECT_EQ(form->n2fld().Text(), "12");
    Click(form->IBtn());
    EXPECT_TRUE(form->n2fld().Widget()->isVisible());
    EXPECT_EQ(form->n2fld().Text(), "12");
    EXPECT_EQ(form->rfld().Text(), ".5");
}

TEST_F(TestChoiceTest, ChangingTheTestLeavesResultsOnDisplayUntilTheNextCalculate) {
    Click(form->IBtn());
    FillIndependentExample();
    Click(form->CalcBtn());
    Click(form->RBtn());
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kCommonEntry, kRelatedOnly, kResults}));
    EXPECT_EQ(form->tfld().Text(), "+1.798");
}

TEST_F(TestChoiceTest, BothChoicesWriteTheirStepsInOrder) {
    const std::vector<std::string> common{
        "GroupBox1.Visible=1",   "GroupBox2.Visible=1",   "m1fld.Visible=1",
        "StaticText1.Visible=1", "sd1fld.Visible=1",      "StaticText2.Visible=1",
        "n1fld.Visible=1",       "StaticText7.Visible=1", "m2fld.Visible=1",
        "StaticText3.Visible=1", "sd2fld.Visible=1",      "StaticText4.Visible=1"};
    auto steps = [&common](std::vector<std::string> head, std::vector<std::string> tail) {
        head.insert(head.end(), common.begin(), common.end());
        head.insert(head.end(), tail.begin(), tail.end());
        return head;
    };
    platform::recorder::Start();
    Click(form->IBtn());
    EXPECT_EQ(Log(),
              steps({"rfld.Visible=0", "rtext.Visible=0", "n2fld.Visible=1", "n2text.Visible=1"},
                    {"Sep1.Visible=0", "Sep2.Visible=0", "m1fld.SetFocus"}));
    platform::recorder::Start();
    Click(form->RBtn());
    EXPECT_EQ(Log(), steps({"rfld.Enabled=1", "rfld.Visible=1", "rtext.Visible=1",
                            "n2fld.Visible=0", "n2text.Visible=0"},
                           {"Sep1.Visible=1", "Sep2.Visible=1", "m1fld.SetFocus"}));
}

TEST_F(TestChoiceTest, ClearWritesItsFortyStepsInOrder) {
    Click(form->IBtn());
    platform::recorder::Start();
    Click(form->ClearBtn());
    // clang-format off
    const std::vector<std::string> expected{
        "rfld.Visible=0", "rfld.Enabled=0", "tfld.Enabled=0", "tfld.Visible=0", "pfld.Enabled=0",
        "pfld.Visible=0", "dtail.Visible=0", "rtext.Visible=0", "ttext.Visible=0", "RBtn.Value=0",
        "IBtn.Value=0", "dfFld.Visible=0", "dfFld.Enabled=0", "dfText.Visible=0",
        "dfText.Enabled=0", "dfFld.Text=", "m1fld.Text=", "m2fld.Text=", "sd1fld.Text=",
        "sd2fld.Text=", "n1fld.Text=", "n2fld.Text=", "rfld.Text=", "GroupBox1.Visible=0",
        "GroupBox2.Visible=0", "m1fld.Visible=0", "StaticText1.Visible=0", "sd1fld.Visible=0",
        "StaticText2.Visible=0", "n1fld.Visible=0", "StaticText7.Visible=0", "m2fld.Visible=0",
        "StaticText3.Visible=0", "sd2fld.Visible=0", "StaticText4.Visible=0", "n2fld.Visible=0",
        "n2text.Visible=0", "Sep1.Visible=0", "Sep2.Visible=0", "typeBox.SetFocus"};
    // clang-format on
    EXPECT_EQ(Log(), expected);
}

TEST_F(TestChoiceTest, ClearHidesAllButKeepsTAndPTextAndDisablesTheCorrelation) {
    Click(form->IBtn());
    FillIndependentExample();
    Click(form->CalcBtn());
    Click(form->ClearBtn());

    EXPECT_EQ(Seen(), kAlwaysShown);
    EXPECT_FALSE(form->IBtn().Value());
    EXPECT_FALSE(form->RBtn().Value());
    EXPECT_EQ(Globals::btn, 1) << "Clear leaves the chosen test alone";
    EXPECT_EQ(form->dfFld().Text(), "");
    EXPECT_EQ(form->tfld().Text(), "+1.798");
    EXPECT_EQ(form->pfld().Text(), ".0873");
    for (const char* disabled : {"tfld", "pfld", "dfFld", "dfText", "rfld", "dtail"}) {
        EXPECT_FALSE(Control(disabled).Enabled()) << disabled;
    }
    EXPECT_TRUE(form->ttext().Enabled()) << "ttext is only hidden";
    for (const char* field : {"m1fld", "m2fld", "sd1fld", "sd2fld", "n1fld", "n2fld"}) {
        EXPECT_TRUE(Control(field).Enabled()) << field;
        EXPECT_EQ(platform::RuntimeCheckCast<platform::TextField>(&Control(field)).Text(), "")
            << field;
    }

    Click(form->RBtn());  // a test chosen after Clear shows empty fields and no result
    EXPECT_EQ(Seen(), Union({kAlwaysShown, kCommonEntry, kRelatedOnly}));
    EXPECT_EQ(form->m1fld().Text(), "");
}

TEST_F(TestChoiceTest, ClearAtStartOnlyDisablesTheCorrelationAndRelatedEnablesItAgain) {
    Click(form->ClearBtn());
    EXPECT_EQ(Seen(), kAlwaysShown);
    EXPECT_FALSE(form->rfld().Enabled());
    Click(form->RBtn());
    EXPECT_TRUE(form->rfld().Enabled());
    EXPECT_TRUE(form->rfld().Widget()->isVisible());
}

// Clear leaves btn as it was, so Calculate goes on to the checks on the hidden, empty fields.
TEST_F(TestChoiceTest, CalculateAfterClearChecksTheHiddenFieldsOfTheLastTest) {
    Click(form->RBtn());
    Click(form->ClearBtn());
    Click(form->CalcBtn());
    EXPECT_EQ(messages, std::vector<std::string>{"Please enter the mean of the 1st sample"});
}

}  // namespace
}  // namespace korvane::testing
