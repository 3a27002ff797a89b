#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "stats/stats.h"
#include "tests/stats/map_panel.h"

namespace korvane {
namespace {

using testing::MapPanel;
using Entries = std::map<std::string, std::string>;
using Log = std::vector<std::string>;

constexpr const char* kChooseTest =
    "Select Independent or Related t-test and then enter appropriate data";
constexpr const char* kIndependentN = "N for each sample must range from 2-9999";
constexpr const char* kPairedN = "N of paired samples must range from 2-9999";
constexpr const char* kCorrelation = "Correlation must range from -1.00 thru +1.00";

struct BlankCheck {
    std::string field;
    std::string message;
};

const std::vector<BlankCheck> kIndependentBlanks = {
    {"m1fld", "Please enter the mean of the 1st sample"},
    {"m2fld", "Please enter the mean of the 2nd sample"},
    {"sd1fld", "Please enter the standard deviation of the 1st sample"},
    {"sd2fld", "Please enter the standard deviation of the 2nd sample"},
    {"n1fld", "Please enter the N of the 1st sample"},
    {"n2fld", "Please enter the N of the 2nd sample"},
};

const std::vector<BlankCheck> kRelatedBlanks = {
    kIndependentBlanks[0], kIndependentBlanks[1],
    kIndependentBlanks[2], kIndependentBlanks[3],
    kIndependentBlanks[4], {"rfld", "Please enter the correlation between Sample 1 and Sample 2"},
};

Entries IndependentEntries() {
    return {{"m1fld", "10"}, {"m2fld", "8"},  {"sd1fld", "2"},
            {"sd2fld", "3"}, {"n1fld", "10"}, {"n2fld", "12"}};
}

Entries RelatedEntries() {
    return {{"m1fld", "10"}, {"m2fld", "8"},  {"sd1fld", "2"},
            {"sd2fld", "3"}, {"n1fld", "10"}, {"rfld", ".5"}};
}

Log Refusal(const std::string& message, const std::string& field) {
    return {"MsgBox:" + message, field + ".SetFocus"};
}

struct Shown {
    std::string t, df, p;
    friend bool operator==(const Shown&, const Shown&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Shown& s) {
        return out << "t=" << s.t << " df=" << s.df << " p=" << s.p;
    }
};

Shown ShownBy(const MapPanel& panel) {
    auto text = [&](const char* field) {
        const auto found = panel.texts.find(field);
        return found == panel.texts.end() ? std::string("<unset>") : found->second;
    };
    return {text("tfld"), text("dfFld"), text("pfld")};
}

class CalculateTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Globals::btn = 0;
        Globals::k1 = 0;
        Globals::t = 0.0;
        Globals::p = 0.0;
    }

    static MapPanel Press(std::int64_t test, Entries entries) {
        Globals::btn = test;
        MapPanel panel(std::move(entries));
        CalcBtn_Action(panel);
        return panel;
    }
};

TEST_F(CalculateTest, WithoutAChosenTestOnlyAsksForOne) {
    for (std::int64_t btn : {0, 3, -1}) {
        SCOPED_TRACE(btn);
        Entries all = IndependentEntries();
        all["rfld"] = ".5";
        const MapPanel panel = Press(btn, all);
        EXPECT_EQ(panel.calls, Log{std::string("MsgBox:") + kChooseTest});
        EXPECT_EQ(panel.focus, "");
        EXPECT_EQ(Globals::btn, btn);
    }
}

void ExpectBlankChecks(std::int64_t test, const Entries& valid,
                       const std::vector<BlankCheck>& checks) {
    for (std::size_t k = 0; k < checks.size(); ++k) {
        SCOPED_TRACE(checks[k].field);
        Entries onlyThis = valid;
        onlyThis[checks[k].field] = "";
        Entries thisAndLater = valid;
        for (std::size_t later = k; later < checks.size(); ++later) {
            thisAndLater.erase(checks[later].field);  // an absent field reads empty too
        }
        for (const Entries& entries : {onlyThis, thisAndLater}) {
            Globals::btn = test;
            MapPanel panel(entries);
            CalcBtn_Action(panel);
            EXPECT_EQ(panel.Writes(), Refusal(checks[k].message, checks[k].field));
            EXPECT_EQ(panel.texts, entries);
        }
    }
}

TEST_F(CalculateTest, IndependentBlankChecksComeInOrderWithTheirFocus) {
    ExpectBlankChecks(1, IndependentEntries(), kIndependentBlanks);
}

TEST_F(CalculateTest, RelatedBlankChecksComeInOrderWithTheirFocus) {
    ExpectBlankChecks(2, RelatedEntries(), kRelatedBlanks);
}

TEST_F(CalculateTest, BlankChecksComeBeforeRangeChecks) {
    Entries independent = IndependentEntries();
    independent["n1fld"] = "1";
    independent["n2fld"] = "";
    EXPECT_EQ(Press(1, independent).Writes(), Refusal(kIndependentBlanks[5].message, "n2fld"));

    Entries related = RelatedEntries();
    related["n1fld"] = "1";
    related["rfld"] = "";
    EXPECT_EQ(Press(2, related).Writes(), Refusal(kRelatedBlanks[5].message, "rfld"));
}

TEST_F(CalculateTest, AFieldHoldingABlankIsNotBlank) {
    Entries entries = IndependentEntries();
    entries["m1fld"] = " ";  // reads as 0
    const MapPanel panel = Press(1, entries);
    EXPECT_TRUE(panel.messages.empty());
    EXPECT_EQ(ShownBy(panel).t, "-7.191");
}

struct NCase {
    const char* text;
    std::int64_t n;  // the N taken, or 0 for a refusal
};

// 2 and 9999 bound the range; an N is truncated, never rounded; text with no number and
// values no int64 holds are refused.
const std::vector<NCase> kNCases = {
    {"2", 2},     {"9999", 9999}, {"9999.9", 9999}, {"12.7", 12},
    {"2.9", 2},   {"2e0", 2},     {" 3", 3},        {"1", 0},
    {"1.9", 0},   {"10000", 0},   {"0", 0},         {"-5", 0},
    {"abc", 0},   {"1e30", 0},    {"-1e30", 0},     {"9223372036854775808", 0},
    {"1e999", 0}, {"-1e999", 0},
};

TEST_F(CalculateTest, IndependentNIsTruncatedAndMustLieIn2To9999) {
    for (const char* field : {"n1fld", "n2fld"}) {
        for (const NCase& c : kNCases) {
            SCOPED_TRACE(std::string(field) + "=\"" + c.text + "\"");
            Entries entries = IndependentEntries();
            entries[field] = c.text;
            const MapPanel panel = Press(1, entries);
            const std::int64_t other = std::string(field) == "n1fld" ? 12 : 10;
            if (c.n == 0) {
                EXPECT_EQ(panel.Writes(), Refusal(kIndependentN, field));
            } else {
                EXPECT_TRUE(panel.messages.empty());
                EXPECT_EQ(ShownBy(panel).df, std::to_string(c.n + other - 2));
            }
        }
    }
}

TEST_F(CalculateTest, RelatedNIsTruncatedAndMustLieIn2To9999) {
    for (const NCase& c : kNCases) {
        SCOPED_TRACE(std::string("n1fld=\"") + c.text + "\"");
        Entries entries = RelatedEntries();
        entries["n1fld"] = c.text;
        const MapPanel panel = Press(2, entries);
        if (c.n == 0) {
            EXPECT_EQ(panel.Writes(), Refusal(kPairedN, "n1fld"));
        } else {
            EXPECT_TRUE(panel.messages.empty());
            EXPECT_EQ(ShownBy(panel).df, std::to_string(c.n - 1));
        }
    }
}

TEST_F(CalculateTest, TruncatedNEntersTheArithmetic) {
    Entries entries = IndependentEntries();
    entries["n1fld"] = "12.7";
    EXPECT_EQ(ShownBy(Press(1, entries)), (Shown{"+1.922", "22", ".0677"}));
}

TEST_F(CalculateTest, OnlyTheFirstBadNIsReported) {
    Entries both = IndependentEntries();
    both["n1fld"] = "1";
    both["n2fld"] = "10000";
    EXPECT_EQ(Press(1, both).Writes(), Refusal(kIndependentN, "n1fld"));

    Entries second = IndependentEntries();
    second["n2fld"] = "10000";
    EXPECT_EQ(Press(1, second).Writes(), Refusal(kIndependentN, "n2fld"));
}

TEST_F(CalculateTest, RelatedTestNeverReadsN2) {
    const Shown expected{"+2.390", "9", ".0405"};
    for (const char* n2 : {"", "1", "abc", "99999", "7"}) {
        SCOPED_TRACE(n2);
        Entries entries = RelatedEntries();
        entries["n2fld"] = n2;
        const MapPanel panel = Press(2, entries);
        EXPECT_EQ(ShownBy(panel), expected);
        EXPECT_FALSE(panel.WasRead("n2fld"));
    }
}

TEST_F(CalculateTest, IndependentTestNeverReadsR) {
    const Shown expected{"+1.798", "20", ".0873"};
    for (const char* r : {"", "5", "-1.5", "abc", ".5"}) {
        SCOPED_TRACE(r);
        Entries entries = IndependentEntries();
        entries["rfld"] = r;
        const MapPanel panel = Press(1, entries);
        EXPECT_EQ(ShownBy(panel), expected);
        EXPECT_FALSE(panel.WasRead("rfld"));
    }
}

TEST_F(CalculateTest, CorrelationMustLieWithinPlusMinusOne) {
    for (const char* accepted : {"1", "-1", "0", "1.0", "-1.00", ".999"}) {
        SCOPED_TRACE(accepted);
        Entries entries = RelatedEntries();
        entries["rfld"] = accepted;
        EXPECT_TRUE(Press(2, entries).messages.empty());
    }
    for (const char* refused : {"1.0001", "-1.0001", "2", "1e999", "-1e999"}) {
        SCOPED_TRACE(refused);
        Entries entries = RelatedEntries();
        entries["rfld"] = refused;
        EXPECT_EQ(Press(2, entries).Writes(), Refusal(kCorrelation, "rfld"));
    }
}

TEST_F(CalculateTest, BadNIsReportedBeforeBadCorrelation) {
    Entries entries = RelatedEntries();
    entries["n1fld"] = "1";
    entries["rfld"] = "2";
    EXPECT_EQ(Press(2, entries).Writes(), Refusal(kPairedN, "n1fld"));
}

TEST_F(CalculateTest, ResultStepWritesInItsOrderAndNothingElse) {
    const Entries entries = IndependentEntries();
    const MapPanel panel = Press(1, entries);
    const Log expected = {
        "pfld.Enabled=1",   "pfld.Visible=1",   "pfld.Text=.0873",  "dtail.Visible=1",
        "tfld.Enabled=1",   "tfld.Visible=1",   "tfld.Text=+1.798", "ttext.Enabled=1",
        "ttext.Visible=1",  "dfFld.Enabled=1",  "dfFld.Visible=1",  "dfFld.Text=20",
        "dfText.Enabled=1", "dfText.Visible=1",
    };
    EXPECT_EQ(panel.Writes(), expected);
    EXPECT_EQ(panel.focus, "");
    EXPECT_EQ(panel.enabled.count("dtail"), 0u);  // shown, still disabled
    for (const auto& [field, text] : entries) {
        EXPECT_EQ(panel.texts.at(field), text) << field;
    }
}

struct Example {
    std::int64_t test;
    Entries entries;
    Shown shown;
};

TEST_F(CalculateTest, ExamplesShowTheirResults) {
    const std::vector<Example> examples = {
        {1,
         {{"m1fld", "10"},
          {"m2fld", "8"},
          {"sd1fld", "2"},
          {"sd2fld", "3"},
          {"n1fld", "10"},
          {"n2fld", "12"}},
         {"+1.798", "20", ".0873"}},
        {1,
         {{"m1fld", "8"},
          {"m2fld", "10"},
          {"sd1fld", "2"},
          {"sd2fld", "3"},
          {"n1fld", "10"},
          {"n2fld", "12"}},
         {"-1.798", "20", ".0873"}},
        {1,
         {{"m1fld", "100"},
          {"m2fld", "90"},
          {"sd1fld", "15"},
          {"sd2fld", "15"},
          {"n1fld", "30"},
          {"n2fld", "30"}},
         {"+2.582", "58", ".0124"}},
        {1,
         {{"m1fld", "3.2"},
          {"m2fld", "3.1"},
          {"sd1fld", ".4"},
          {"sd2fld", ".5"},
          {"n1fld", "9999"},
          {"n2fld", "9999"}},
         {"+15.617", "19996", ".0001"}},
        {2,
         {{"m1fld", "10"},
          {"m2fld", "8"},
          {"sd1fld", "2"},
          {"sd2fld", "3"},
          {"n1fld", "10"},
          {"rfld", ".5"}},
         {"+2.390", "9", ".0405"}},
        {2,
         {{"m1fld", "50"},
          {"m2fld", "47"},
          {"sd1fld", "10"},
          {"sd2fld", "10"},
          {"n1fld", "25"},
          {"rfld", ".8"}},
         {"+2.372", "24", ".0261"}},
        {2,
         {{"m1fld", "10"},
          {"m2fld", "8"},
          {"sd1fld", "2"},
          {"sd2fld", "3"},
          {"n1fld", "10"},
          {"rfld", "1"}},
         {"+6.325", "9", ".0001"}},
        {2,
         {{"m1fld", "12"},
          {"m2fld", "9"},
          {"sd1fld", "2"},
          {"sd2fld", "2"},
          {"n1fld", "2"},
          {"rfld", "0"}},
         {"+1.500", "1", ".3743"}},
    };
    for (const Example& example : examples) {
        const MapPanel panel = Press(example.test, example.entries);
        EXPECT_EQ(ShownBy(panel), example.shown);
        EXPECT_TRUE(panel.messages.empty());
    }
}

TEST_F(CalculateTest, CommandLeavesItsValuesInGlobals) {
    Press(1, IndependentEntries());
    EXPECT_EQ(Globals::btn, 1);
    EXPECT_EQ(Globals::k1, 20);
    EXPECT_NEAR(Globals::t, 1.7978662999, 5e-11);
    EXPECT_NEAR(Globals::p, 0.0873128276, 5e-11);

    Entries reversed = IndependentEntries();
    std::swap(reversed["m1fld"], reversed["m2fld"]);
    const MapPanel panel = Press(1, reversed);
    EXPECT_EQ(ShownBy(panel), (Shown{"-1.798", "20", ".0873"}));
    EXPECT_GT(Globals::t, 0.0);  // tprob keeps |t|; the display keeps the sign
}

TEST_F(CalculateTest, FailedCheckKeepsTheEarlierResult) {
    MapPanel panel(IndependentEntries());
    Globals::btn = 1;
    CalcBtn_Action(panel);
    const Shown before = ShownBy(panel);

    panel.texts["n2fld"] = "1";
    for (int press = 0; press < 2; ++press) {
        panel.ClearLog();
        CalcBtn_Action(panel);
        EXPECT_EQ(panel.Writes(), Refusal(kIndependentN, "n2fld"));
        EXPECT_EQ(ShownBy(panel), before);
        EXPECT_TRUE(panel.visible.at("pfld"));
    }
}

TEST_F(CalculateTest, ProbabilityBelowTheFloorShowsAsFloor) {
    Entries tiny = IndependentEntries();
    tiny["m1fld"] = "1000";  // t near 888, p far below .0001
    EXPECT_EQ(ShownBy(Press(1, tiny)).p, ".0001");

    Entries zero = IndependentEntries();  // se of zero at even df: p is exactly 0
    zero["sd1fld"] = "0";
    zero["sd2fld"] = "0";
    Press(1, zero);
    EXPECT_EQ(Globals::p, 0.0);
}

TEST_F(CalculateTest, EqualMeansShowZeroT) {
    Entries entries = IndependentEntries();
    entries["m2fld"] = "10";
    // |t| below the threshold gives .99999, which rounds up to 1 at the fourth place.
    EXPECT_EQ(ShownBy(Press(1, entries)), (Shown{"+.000", "20", "1.0000"}));
}

TEST_F(CalculateTest, ZeroStandardErrorGoesOnWithoutAFailure) {
    struct Case {
        std::int64_t test;
        Entries changes;
        Shown shown;
    };
    const std::vector<Case> cases = {
        {1, {{"sd1fld", "0"}, {"sd2fld", "0"}}, {"+Inf", "20", ".0001"}},
        {1, {{"sd1fld", "0"}, {"sd2fld", "0"}, {"m1fld", "6"}}, {"-Inf", "20", ".0001"}},
        {1, {{"sd1fld", "0"}, {"sd2fld", "0"}, {"m1fld", "8"}}, {"NaN", "20", "NaN"}},
        {2, {{"sd1fld", "3"}, {"sd2fld", "3"}, {"rfld", "1"}}, {"+Inf", "9", ".0001"}},
        {2, {{"sd1fld", "3"}, {"sd2fld", "3"}, {"rfld", "1"}, {"m1fld", "8"}}, {"NaN", "9", "NaN"}},
    };
    for (const Case& c : cases) {
        Entries entries = c.test == 1 ? IndependentEntries() : RelatedEntries();
        for (const auto& [field, text] : c.changes) {
            entries[field] = text;
        }
        MapPanel panel;
        EXPECT_NO_THROW(panel = Press(c.test, entries));
        EXPECT_EQ(ShownBy(panel), c.shown);
        EXPECT_TRUE(panel.messages.empty());
    }
}

TEST_F(CalculateTest, AnyTextIsAnswered) {
    const std::vector<std::string> texts = {
        "\xff\xfe",
        "1e99999",
        "-",
        ".",
        "nan",
        "inf",
        "0x10",
        "1.2.3",
        "--1",
        "1/2",
        "\t",
        std::string(400, '9'),
        std::string("4\0"
                    "2",
                    3),
        "-1e-99999",
        "1e-400",
    };
    for (std::int64_t test : {1, 2}) {
        for (const std::string& text : texts) {
            for (const char* field : {"m1fld", "sd2fld", "n1fld", "n2fld", "rfld"}) {
                Entries entries = test == 1 ? IndependentEntries() : RelatedEntries();
                entries[field] = text;
                MapPanel panel;
                EXPECT_NO_THROW(panel = Press(test, entries)) << field << "=" << text;
                // Either one refusal or a complete result.
                EXPECT_TRUE(panel.Writes().size() == 2 || panel.Writes().size() == 14);
            }
        }
    }
}

}  // namespace
}  // namespace korvane
