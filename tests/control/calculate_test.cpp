// Calculate through the real form: the user's clicks and keys in, the three result fields or a
// message and the focus out.
#include <QTimer>
#include <map>
#include <string>
#include <vector>

#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

enum class Choice { None, Independent, Related };

using Entries = std::vector<std::pair<std::string, std::string>>;

class CalculateTest : public UiTest {
  protected:
    platform::TextField& Field(const std::string& name) {
        return platform::RuntimeCheckCast<platform::TextField>(form->_ControlByName(name));
    }

    platform::RectControl& Control(const std::string& name) {
        return platform::RuntimeCheckCast<platform::RectControl>(form->_ControlByName(name));
    }

    void Choose(Choice test) {
        if (test == Choice::Independent)
            Click(form->IBtn());
        if (test == Choice::Related)
            Click(form->RBtn());
    }

    // Types each entry into its field; a field the chosen test hides gets its text set instead,
    // as if typed before the test was changed.
    void Fill(const Entries& entries) {
        for (const auto& [name, text] : entries) {
            if (Field(name).Widget()->isVisible()) {
                Type(Field(name), text);
            } else {
                Field(name).Text(text);
            }
        }
    }

    void Calculate() { Click(form->CalcBtn()); }

    struct Shown {
        std::string t, df, p;
        friend bool operator==(const Shown&, const Shown&) = default;
    };
    Shown Results() { return {form->tfld().Text(), form->dfFld().Text(), form->pfld().Text()}; }

    void SetUp() override {
        UiTest::SetUp();
        form = &Form();
    }

    ControlWnd* form = nullptr;
};

struct Example {
    const char* name;
    Choice test;
    Entries entries;
    const char* t;
    const char* df;
    const char* p;
};

class ExampleTest : public CalculateTest, public ::testing::WithParamInterface<Example> {};

TEST_P(ExampleTest, TypedEntriesGiveTheThreeResultTexts) {
    const Example& example = GetParam();
    Choose(example.test);
    Fill(example.entries);
    Calculate();
    EXPECT_TRUE(messages.empty()) << messages.front();
    EXPECT_EQ(Results(), (Shown{example.t, example.df, example.p}));
    for (const char* shown : {"tfld", "dfFld", "pfld", "ttext", "dfText", "dtail"}) {
        EXPECT_TRUE(Control(shown).Widget()->isVisible()) << shown;
    }
}

Entries Independent(const char* m1, const char* m2, const char* sd1, const char* sd2,
                    const char* n1, const char* n2) {
    return {{"m1fld", m1},   {"m2fld", m2}, {"sd1fld", sd1},
            {"sd2fld", sd2}, {"n1fld", n1}, {"n2fld", n2}};
}

Entries Related(const char* m1, const char* m2, const char* sd1, const char* sd2, const char* n,
                const char* r) {
    return {{"m1fld", m1},   {"m2fld", m2}, {"sd1fld", sd1},
            {"sd2fld", sd2}, {"n1fld", n},  {"rfld", r}};
}

Entries operator+(Entries entries, const Entries& more) {
    entries.insert(entries.end(), more.begin(), more.end());
    return entries;
}

INSTANTIATE_TEST_SUITE_P(
    Examples, ExampleTest,
    ::testing::Values(
        Example{"IndependentFirstMeanLarger", Choice::Independent,
                Independent("10", "8", "2", "3", "10", "12"), "+1.798", "20", ".0873"},
        Example{"IndependentFirstMeanSmaller", Choice::Independent,
                Independent("8", "10", "2", "3", "10", "12"), "-1.798", "20", ".0873"},
        Example{"IndependentThirtyEach", Choice::Independent,
                Independent("100", "90", "15", "15", "30", "30"), "+2.582", "58", ".0124"},
        Example{"IndependentLargestN", Choice::Independent,
                Independent("3.2", "3.1", ".4", ".5", "9999", "9999"), "+15.617", "19996", ".0001"},
        Example{"RelatedHalfCorrelated", Choice::Related, Related("10", "8", "2", "3", "10", ".5"),
                "+2.390", "9", ".0405"},
        Example{"RelatedStronglyCorrelated", Choice::Related,
                Related("50", "47", "10", "10", "25", ".8"), "+2.372", "24", ".0261"},
        Example{"RelatedPerfectlyCorrelated", Choice::Related,
                Related("10", "8", "2", "3", "10", "1"), "+6.325", "9", ".0001"},
        Example{"RelatedTwoPairsUncorrelated", Choice::Related,
                Related("12", "9", "2", "2", "2", "0"), "+1.500", "1", ".3743"},
        Example{"FractionalNIsTruncated", Choice::Independent,
                Independent("10", "8", "2", "3", "10", "12.7"), "+1.798", "20", ".0873"},
        Example{"NJustBelowTheTopIsTruncatedIntoRange", Choice::Independent,
                Independent("3.2", "3.1", ".4", ".5", "9999.9", "9999"), "+15.617", "19996",
                ".0001"},
        Example{"EqualMeansShowAZeroT", Choice::Independent,
                Independent("5", "5", "1", "1", "2", "2"), "+.000", "2", "1.0000"},
        Example{"IndependentIgnoresAHiddenCorrelation", Choice::Independent,
                Independent("10", "8", "2", "3", "10", "12") + Entries{{"rfld", "7"}}, "+1.798",
                "20", ".0873"},
        Example{"RelatedIgnoresAHiddenNOfSample2", Choice::Related,
                Related("10", "8", "2", "3", "10", ".5") + Entries{{"n2fld", "1"}}, "+2.390", "9",
                ".0405"}),
    [](const ::testing::TestParamInfo<Example>& info) { return std::string(info.param.name); });

struct Refusal {
    const char* name;
    Choice test;
    Entries entries;
    const char* message;
    const char* focus;
};

class RefusalTest : public CalculateTest, public ::testing::WithParamInterface<Refusal> {};

TEST_P(RefusalTest, ARefusedEntryGivesItsMessageOnceAndFocusesItsField) {
    const Refusal& refusal = GetParam();
    Choose(refusal.test);
    Fill(refusal.entries);
    platform::recorder::Start();
    Calculate();
    EXPECT_EQ(messages, std::vector<std::string>{refusal.message});
    EXPECT_EQ(Log(), (std::vector<std::string>{std::string("MsgBox:") + refusal.message,
                                               std::string(refusal.focus) + ".SetFocus"}));
    EXPECT_TRUE(HasFocus(Field(refusal.focus)));
    EXPECT_FALSE(form->tfld().Widget()->isVisible());
}

const char* const kMean1 = "Please enter the mean of the 1st sample";
const char* const kNRange = "N for each sample must range from 2-9999";
const char* const kPairsRange = "N of paired samples must range from 2-9999";
const char* const kRRange = "Correlation must range from -1.00 thru +1.00";

INSTANTIATE_TEST_SUITE_P(
    Refusals, RefusalTest,
    ::testing::Values(Refusal{"IndependentAllBlank", Choice::Independent, {}, kMean1, "m1fld"},
                      Refusal{"IndependentMean2Blank",
                              Choice::Independent,
                              {{"m1fld", "1"}},
                              "Please enter the mean of the 2nd sample",
                              "m2fld"},
                      Refusal{"IndependentSd1Blank",
                              Choice::Independent,
                              {{"m1fld", "1"}, {"m2fld", "2"}},
                              "Please enter the standard deviation of the 1st sample",
                              "sd1fld"},
                      Refusal{"IndependentSd2Blank",
                              Choice::Independent,
                              {{"m1fld", "1"}, {"m2fld", "2"}, {"sd1fld", "1"}},
                              "Please enter the standard deviation of the 2nd sample",
                              "sd2fld"},
                      Refusal{"IndependentN1Blank",
                              Choice::Independent,
                              {{"m1fld", "1"}, {"m2fld", "2"}, {"sd1fld", "1"}, {"sd2fld", "1"}},
                              "Please enter the N of the 1st sample",
                              "n1fld"},
                      Refusal{"BlankN2ComesBeforeABadN1", Choice::Independent,
                              Independent("1", "2", "1", "1", "1", ""),
                              "Please enter the N of the 2nd sample", "n2fld"},
                      Refusal{"IndependentN1OfOne", Choice::Independent,
                              Independent("1", "2", "1", "1", "1", "12"), kNRange, "n1fld"},
                      Refusal{"IndependentN2Of10000", Choice::Independent,
                              Independent("1", "2", "1", "1", "10", "10000"), kNRange, "n2fld"},
                      Refusal{"BothNOutOfRangeReportsN1Once", Choice::Independent,
                              Independent("1", "2", "1", "1", "10000", "1"), kNRange, "n1fld"},
                      Refusal{"NOf1Point9IsOne", Choice::Independent,
                              Independent("1", "2", "1", "1", "1.9", "5"), kNRange, "n1fld"},
                      Refusal{"NWithoutANumberIsOutOfRange", Choice::Independent,
                              Independent("1", "2", "1", "1", "ten", "5"), kNRange, "n1fld"},
                      Refusal{"RelatedMean1Blank", Choice::Related, {}, kMean1, "m1fld"},
                      Refusal{"BlankRComesBeforeABadN", Choice::Related,
                              Related("1", "2", "1", "1", "1", ""),
                              "Please enter the correlation between Sample 1 and Sample 2", "rfld"},
                      Refusal{"BadPairsComeBeforeABadR", Choice::Related,
                              Related("1", "2", "1", "1", "1", "2"), kPairsRange, "n1fld"},
                      Refusal{"RAboveOne", Choice::Related,
                              Related("1", "2", "1", "1", "5", "1.0001"), kRRange, "rfld"},
                      Refusal{"RBelowMinusOne", Choice::Related,
                              Related("1", "2", "1", "1", "5", "-1.0001"), kRRange, "rfld"}),
    [](const ::testing::TestParamInfo<Refusal>& info) { return std::string(info.param.name); });

TEST_F(CalculateTest, WithNoTestChosenCalculateAsksForOneAndMovesNoFocus) {
    platform::recorder::Start();
    Calculate();
    EXPECT_EQ(messages,
              std::vector<std::string>{
                  "Select Independent or Related t-test and then enter appropriate data"});
    EXPECT_EQ(Log(), std::vector<std::string>{
                         "MsgBox:Select Independent or Related t-test and then enter appropriate "
                         "data"});
}

TEST_F(CalculateTest, AMeanOfOneBlankIsNotBlank) {
    Choose(Choice::Independent);
    Fill(Independent("", "0", "1", "1", "2", "2"));
    form->m1fld().Text(" ");  // the key filter refuses a typed blank; pasted, it stays
    Calculate();
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(Results(), (Shown{"+.000", "2", "1.0000"}));
}

TEST_F(CalculateTest, TheFirstSuccessShowsTheLabelsAndLeavesTheTailLabelDisabled) {
    Choose(Choice::Independent);
    Fill(Independent("10", "8", "2", "3", "10", "12"));
    Calculate();
    EXPECT_TRUE(form->ttext().Enabled());
    EXPECT_TRUE(form->dfText().Enabled());
    EXPECT_TRUE(form->dtail().Visible());
    EXPECT_FALSE(form->dtail().Enabled());
    EXPECT_TRUE(form->tfld().Enabled());
    EXPECT_TRUE(HasFocus(form->n2fld())) << "the result step moves no focus";
}

TEST_F(CalculateTest, AFailedCheckAfterASuccessKeepsTheResultsAndTheChosenTest) {
    Choose(Choice::Independent);
    Fill(Independent("10", "8", "2", "3", "10", "12"));
    Calculate();
    ASSERT_EQ(Results(), (Shown{"+1.798", "20", ".0873"}));

    form->n2fld().Text("");
    Calculate();
    Calculate();
    EXPECT_EQ(messages, (std::vector<std::string>{"Please enter the N of the 2nd sample",
                                                  "Please enter the N of the 2nd sample"}));
    EXPECT_EQ(Results(), (Shown{"+1.798", "20", ".0873"}));
    EXPECT_TRUE(form->tfld().Widget()->isVisible());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_EQ(form->m1fld().Text(), "10");
}

TEST_F(CalculateTest, ASecondSuccessOverwritesTheResults) {
    Choose(Choice::Independent);
    Fill(Independent("10", "8", "2", "3", "10", "12"));
    Calculate();
    Choose(Choice::Related);
    Fill({{"rfld", ".5"}});
    Calculate();
    EXPECT_EQ(Results(), (Shown{"+2.390", "9", ".0405"}));
}

// The message box a user dismisses is a real dialog here: its closing must not count as an
// activation of the form, or the chosen test would be forgotten.
TEST_F(CalculateTest, DismissingARealMessageKeepsTheChosenTestAndTheFocusMove) {
    platform::SetMessageBoxHook({});
    Choose(Choice::Independent);
    Fill(Independent("10", "8", "2", "3", "10", ""));
    bool dismissed = false;
    QTimer::singleShot(50, [&dismissed] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            QTest::keyClick(box, Qt::Key_Escape);
            dismissed = true;
        }
    });
    Calculate();
    ASSERT_TRUE(dismissed);
    EXPECT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    QTest::qWait(50);
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_TRUE(HasFocus(form->n2fld()));
}

}  // namespace
}  // namespace korvane::testing
