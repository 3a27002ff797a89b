// The Calculate command on a MapPanel: what the fields hold in, the three result texts or one
// message with its focus out.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "stats/messages.h"
#include "stats/stats.h"
#include "tests/stats/map_panel.h"

namespace korvane {
namespace {

using testing::MapPanel;
namespace msg = messages;

// m1, m2, sd1, sd2, n1, then n2 for the independent test (btn 1) or r for the related one.
using Entries = std::array<std::string, 6>;
const Entries kIndependent{"10", "8", "2", "3", "10", "12"};
const Entries kRelated{"10", "8", "2", "3", "10", ".5"};

std::vector<std::string> Fields(std::int64_t btn) {
    return {"m1fld", "m2fld", "sd1fld", "sd2fld", "n1fld", btn == 2 ? "rfld" : "n2fld"};
}

// What the user sees: "t df p" after a result, else the writes of the refusal in order.
std::string Answer(const MapPanel& panel) {
    if (panel.messages.empty()) {
        return panel.texts.at("tfld") + " " + panel.texts.at("dfFld") + " " +
               panel.texts.at("pfld");
    }
    std::string writes;
    for (const std::string& write : panel.Writes()) {
        writes += (writes.empty() ? "" : " | ") + write;
    }
    return writes;
}

std::string Refusal(const char* message, const std::string& field) {
    return std::string("MsgBox:") + message + " | " + field + ".SetFocus";
}

// Presses Calculate with test `btn`. The field only the other test uses holds a value that
// test would refuse; the command must not even read it.
std::string Press(std::int64_t btn, const Entries& entries) {
    Globals::btn = btn;
    MapPanel panel;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        panel.texts[Fields(btn)[i]] = entries[i];
    }
    const std::string other = btn == 2 ? "n2fld" : "rfld";
    panel.texts.insert_or_assign(other, "7");
    CalcBtn_Action(panel);
    EXPECT_FALSE(panel.WasRead(other));
    return Answer(panel);
}

Entries With(Entries entries, std::size_t field, const char* text) {
    entries[field] = text;
    return entries;
}

TEST(MessagesTest, TheCommandsMessagesReadAsWritten) {
    EXPECT_EQ(
        std::vector<std::string>(msg::kAll.begin(), msg::kAll.end()),
        (std::vector<std::string>{
            "Select Independent or Related t-test and then enter appropriate data",
            "Please enter the mean of the 1st sample", "Please enter the mean of the 2nd sample",
            "Please enter the standard deviation of the 1st sample",
            "Please enter the standard deviation of the 2nd sample",
            "Please enter the N of the 1st sample", "Please enter the N of the 2nd sample",
            "Please enter the correlation between Sample 1 and Sample 2",
            "N for each sample must range from 2-9999",
            "N of paired samples must range from 2-9999",
            "Correlation must range from -1.00 thru +1.00"}));
}

TEST(CalculateTest, EntriesGiveTheirResultsOrTheFirstRefusal) {
    const std::string choose = std::string("MsgBox:") + msg::kChooseTest;  // no focus moves
    // clang-format off
    const std::vector<std::tuple<std::int64_t, Entries, std::string>> cases{
        {0, kIndependent, choose}, {3, kIndependent, choose}, {-1, kRelated, choose},
        {1, kIndependent, "+1.798 20 .0873"},
        {1, {"8", "10", "2", "3", "10", "12"}, "-1.798 20 .0873"},
        {1, {"100", "90", "15", "15", "30", "30"}, "+2.582 58 .0124"},
        {1, {"3.2", "3.1", ".4", ".5", "9999", "9999"}, "+15.617 19996 .0001"},
        {1, {"10", "7.7", "1", "1", "10", "12"}, "+5.372 20 .0001"},  // p = .0000294
        {1, With(kIndependent, 1, "10"), "+.000 20 1.0000"},  // .99999 rounds up
        {1, With(kIndependent, 0, " "), "-7.191 20 .0001"},  // a blank is no empty field
        // An N is truncated toward zero and must then lie in 2 to 9999.
        {1, With(kIndependent, 4, "12.7"), "+1.922 22 .0677"},
        {1, With(kIndependent, 4, "2.9"), "+.894 12 .3890"},
        {1, With(kIndependent, 5, "9999.9"), "+2.108 10007 .0351"},
        {2, With(kRelated, 4, "9999"), "+75.589 9998 .0001"},
        {2, With(kRelated, 4, "2e0"), "+1.069 1 .4788"},
        {1, With(kIndependent, 4, "1.9"), Refusal(msg::kIndependentN, "n1fld")},
        {1, With(kIndependent, 5, "10000"), Refusal(msg::kIndependentN, "n2fld")},
        {1, With(kIndependent, 5, "abc"), Refusal(msg::kIndependentN, "n2fld")},
        {1, With(kIndependent, 4, "-5"), Refusal(msg::kIndependentN, "n1fld")},
        {1, With(kIndependent, 4, "1e30"), Refusal(msg::kIndependentN, "n1fld")},
        {2, With(kRelated, 4, "9223372036854775808"), Refusal(msg::kPairedN, "n1fld")},
        {2, With(kRelated, 4, "-1e999"), Refusal(msg::kPairedN, "n1fld")},
        {2, kRelated, "+2.390 9 .0405"},
        {2, {"50", "47", "10", "10", "25", ".8"}, "+2.372 24 .0261"},
        {2, With(kRelated, 5, "1"), "+6.325 9 .0001"},
        {2, With(kRelated, 5, "-1"), "+1.265 9 .2377"},
        {2, {"12", "9", "2", "2", "2", "0"}, "+1.500 1 .3743"},
        // A zero standard error divides as IEEE does and is no failure.
        {1, {"10", "8", "0", "0", "10", "12"}, "+Inf 20 .0001"},
        {1, {"6", "8", "0", "0", "10", "12"}, "-Inf 20 .0001"},
        {1, {"8", "8", "0", "0", "10", "12"}, "NaN 20 NaN"},
        {2, {"10", "8", "3", "3", "10", "1"}, "+Inf 9 .0001"},
        {2, {"8", "8", "3", "3", "10", "1"}, "NaN 9 NaN"},
        // The blank checks come before the range checks, N before r, n1 before n2.
        {1, {"10", "8", "2", "3", "1", ""}, Refusal(msg::kN2, "n2fld")},
        {2, {"10", "8", "2", "3", "1", ""}, Refusal(msg::kCorrelationBlank, "rfld")},
        {1, {"10", "8", "2", "3", "1", "10000"}, Refusal(msg::kIndependentN, "n1fld")},
        {2, {"10", "8", "2", "3", "1", "2"}, Refusal(msg::kPairedN, "n1fld")},
        {2, With(kRelated, 5, "1.0001"), Refusal(msg::kCorrelation, "rfld")},
        {2, With(kRelated, 5, "-1.0001"), Refusal(msg::kCorrelation, "rfld")},
        {2, With(kRelated, 5, "1e999"), Refusal(msg::kCorrelation, "rfld")},
    };
    // clang-format on
    for (const auto& [btn, entries, answer] : cases) {
        EXPECT_EQ(Press(btn, entries), answer)
            << btn << ": " << entries[0] << " " << entries[4] << " " << entries[5];
    }
}

TEST(CalculateTest, TheFirstBlankFieldIsAskedForWhateverFollows) {
    const std::vector<const char*> asked{msg::kMean1, msg::kMean2, msg::kSd1,
                                         msg::kSd2,   msg::kN1,    msg::kN2};
    for (std::int64_t btn : {1, 2}) {
        for (std::size_t k = 0; k < 6; ++k) {
            SCOPED_TRACE(Fields(btn)[k]);
            Entries blankFromK = btn == 1 ? kIndependent : kRelated;
            const Entries blankOnlyK = With(blankFromK, k, "");
            for (std::size_t later = k; later < 6; ++later) {
                blankFromK[later] = "";
            }
            const char* message = btn == 2 && k == 5 ? msg::kCorrelationBlank : asked[k];
            EXPECT_EQ(Press(btn, blankOnlyK), Refusal(message, Fields(btn)[k]));
            EXPECT_EQ(Press(btn, blankFromK), Refusal(message, Fields(btn)[k]));
        }
    }
}

}  // namespace
}  // namespace korvane
