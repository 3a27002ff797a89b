#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <tuple>
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

// The entries of a test in field order: m1, m2, sd1, sd2, n1, then n2 or r.
Entries Of(std::int64_t test, std::vector<const char*> texts) {
    const char* fields[] = {"m1fld",  "m2fld", "sd1fld",
                            "sd2fld", "n1fld", test == 1 ? "n2fld" : "rfld"};
    Entries entries;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        entries[fields[i]] = texts[i];
    }
    return entries;
}

Entries IndependentEntries() {
    return Of(1, {"10", "8", "2", "3", "10", "12"});
}
Entries RelatedEntries() {
    return Of(2, {"10", "8", "2", "3", "10", ".5"});
}
Entries ValidEntries(std::int64_t test) {
    return test == 1 ? IndependentEntries() : RelatedEntries();
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

TEST_F(CalculateTest, BlankChecksComeInOrderWithTheirFocusAndBeforeRangeChecks) {
    ExpectBlankChecks(1, IndependentEntries(), kIndependentBlanks);
    ExpectBlankChecks(2, RelatedEntries(), kRelatedBlanks);

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

TEST_F(CalculateTest, NIsTruncatedAndMustLieIn2To9999) {
    // Related reads only n1fld; its df is N - 1. Independent df is n1 + n2 - 2.
    const std::vector<std::tuple<std::int64_t, const char*, const char*, std::int64_t>> fields = {
        {1, "n1fld", kIndependentN, 12 - 2},
        {1, "n2fld", kIndependentN, 10 - 2},
        {2, "n1fld", kPairedN, -1}};
    for (const auto& [test, field, refusal, offset] : fields) {
        for (const NCase& c : kNCases) {
            SCOPED_TRACE(std::string(field) + "=\"" + c.text + "\" test " + std::to_string(test));
            Entries entries = ValidEntries(test);
            entries[field] = c.text;
            const MapPanel panel = Press(test, entries);
            if (c.n == 0) {
                EXPECT_EQ(panel.Writes(), Refusal(refusal, field));
            } else {
                EXPECT_TRUE(panel.messages.empty());
                EXPECT_EQ(ShownBy(panel).df, std::to_string(c.n + offset));
            }
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

TEST_F(CalculateTest, EachTestNeverReadsTheOtherTestsField) {
    const std::vector<std::tuple<std::int64_t, const char*, std::vector<const char*>, Shown>>
        cases = {{2, "n2fld", {"", "1", "abc", "99999", "7"}, {"+2.390", "9", ".0405"}},
                 {1, "rfld", {"", "5", "-1.5", "abc", ".5"}, {"+1.798", "20", ".0873"}}};
    for (const auto& [test, field, texts, expected] : cases) {
        for (const char* text : texts) {
            SCOPED_TRACE(std::string(field) + "=" + text);
            Entries entries = ValidEntries(test);
            entries[field] = text;
            const MapPanel panel = Press(test, entries);
            EXPECT_EQ(ShownBy(panel), expected);
            EXPECT_FALSE(panel.WasRead(field));
        }
    }
}

TEST_F(CalculateTest, CorrelationMustLieWithinPlusMinusOneAndBadNComesFirst) {
    for (const auto& [r, accepted] : std::vector<std::pair<const char*, bool>>{{"1", true},
                                                                               {"-1", true},
                                                                               {"0", true},
                                                                               {"1.0", true},
                                                                               {"-1.00", true},
                                                                               {".999", true},
                                                                               {"1.0001", false},
                                                                               {"-1.0001", false},
                                                                               {"2", false},
                                                                               {"1e999", false},
                                                                               {"-1e999", false}}) {
        SCOPED_TRACE(r);
        Entries entries = RelatedEntries();
        entries["rfld"] = r;
        const MapPanel panel = Press(2, entries);
        if (accepted) {
            EXPECT_TRUE(panel.messages.empty());
        } else {
            EXPECT_EQ(panel.Writes(), Refusal(kCorrelation, "rfld"));
        }
    }
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

TEST_F(CalculateTest, ExamplesShowTheirResults) {
    struct Example {
        std::int64_t test;
        std::vector<const char*> texts;
        Shown shown;
    };
    const std::vector<Example> examples = {
        {1, {"10", "8", "2", "3", "10", "12"}, {"+1.798", "20", ".0873"}},
        {1, {"8", "10", "2", "3", "10", "12"}, {"-1.798", "20", ".0873"}},
        {1, {"100", "90", "15", "15", "30", "30"}, {"+2.582", "58", ".0124"}},
        {1, {"3.2", "3.1", ".4", ".5", "9999", "9999"}, {"+15.617", "19996", ".0001"}},
        {2, {"10", "8", "2", "3", "10", ".5"}, {"+2.390", "9", ".0405"}},
        {2, {"50", "47", "10", "10", "25", ".8"}, {"+2.372", "24", ".0261"}},
        {2, {"10", "8", "2", "3", "10", "1"}, {"+6.325", "9", ".0001"}},
        {2, {"12", "9", "2", "2", "2", "0"}, {"+1.500", "1", ".3743"}},
    };
    for (const Example& example : examples) {
        const MapPanel panel = Press(example.test, Of(example.test, example.texts));
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
        Entries entries = ValidEntries(c.test);
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
    // clang-format off
    const std::vector<std::string> texts = {
        "\xff\xfe", "1e99999", "-", ".", "nan", "inf", "0x10", "1.2.3", "--1", "1/2", "\t",
        std::string(400, '9'), std::string("4\0" "2", 3), "-1e-99999", "1e-400"};
    // clang-format on
    for (std::int64_t test : {1, 2}) {
        for (const std::string& text : texts) {
            for (const char* field : {"m1fld", "sd2fld", "n1fld", "n2fld", "rfld"}) {
                Entries entries = ValidEntries(test);
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
