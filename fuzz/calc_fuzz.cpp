// Drives the Calculate command with arbitrary entries and checks what it did to the window.
//   byte 0     the test: its value mod 4 gives btn 0, 1 or 2; 3 takes btn from the next
//              eight bytes, any int64
//   next byte  a separator
//   the rest   the texts of m1fld, m2fld, sd1fld, sd2fld, n1fld, n2fld and rfld, split at the
//              separator; any byte but the separator, valid UTF-8 or not. Missing ones are empty.
// The command must answer with exactly the message its first failing check gives and the focus
// on that check's field, or with the three results and nothing else.
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/text_checks.h"
#include "platform/core/text.h"
#include "stats/stats.h"
#include "tests/stats/map_panel.h"

namespace {

using fuzz::Require;
using korvane::testing::MapPanel;
using platform::Val;

constexpr std::array<const char*, 7> kFields{"m1fld", "m2fld", "sd1fld", "sd2fld",
                                             "n1fld", "n2fld", "rfld"};

// The program's own messages, one blank check per field in the order above.
constexpr std::array<const char*, 7> kBlankMessages{
    "Please enter the mean of the 1st sample",
    "Please enter the mean of the 2nd sample",
    "Please enter the standard deviation of the 1st sample",
    "Please enter the standard deviation of the 2nd sample",
    "Please enter the N of the 1st sample",
    "Please enter the N of the 2nd sample",
    "Please enter the correlation between Sample 1 and Sample 2",
};
constexpr const char* kChooseTest =
    "Select Independent or Related t-test and then enter appropriate data";
constexpr const char* kIndependentN = "N for each sample must range from 2-9999";
constexpr const char* kPairedN = "N of paired samples must range from 2-9999";
constexpr const char* kCorrelation = "Correlation must range from -1.00 thru +1.00";

struct Input {
    std::int64_t btn = 0;
    std::array<std::string, 7> texts;  // in the order of kFields
};

Input Decode(const std::uint8_t* data, std::size_t size) {
    Input input;
    std::size_t pos = 0;
    if (pos < size) {
        const int choice = data[pos++] % 4;
        if (choice < 3) {
            input.btn = choice;
        } else {
            unsigned char raw[8] = {};
            const std::size_t n = size - pos < sizeof raw ? size - pos : sizeof raw;
            if (n > 0) {
                std::memcpy(raw, data + pos, n);
            }
            pos += n;
            std::memcpy(&input.btn, raw, sizeof input.btn);
        }
    }
    if (pos >= size) {
        return input;
    }
    const char separator = static_cast<char>(data[pos++]);
    std::string_view rest(reinterpret_cast<const char*>(data) + pos, size - pos);
    for (std::string& text : input.texts) {
        const std::size_t end = rest.find(separator);
        text = rest.substr(0, end);
        if (end == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(end + 1);
    }
    return input;
}

const std::string& TextOf(const Input& input, std::string_view field) {
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if (field == kFields[i]) {
            return input.texts[i];
        }
    }
    __builtin_trap();
}

// An N field holds a valid N when its value, truncated toward zero, lies in 2 to 9999.
bool IsValidN(const std::string& text) {
    const double value = Val(text);
    return value >= 2.0 && value < 10000.0;
}

// The first check that fails for these entries, worked out from the rules; no message when
// every check passes.
struct Refusal {
    const char* message = nullptr;
    const char* focus = "";  // "" when the focus stays
};

Refusal FirstRefusal(const Input& input) {
    if (input.btn != 1 && input.btn != 2) {
        return {kChooseTest, ""};
    }
    const bool related = input.btn == 2;
    // Blank checks: the five fields both tests share, then n2fld or rfld.
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        const bool skipped = (related && i == 5) || (!related && i == 6);
        if (!skipped && input.texts[i].empty()) {
            return {kBlankMessages[i], kFields[i]};
        }
    }
    if (!IsValidN(TextOf(input, "n1fld"))) {
        return {related ? kPairedN : kIndependentN, "n1fld"};
    }
    if (related && std::fabs(Val(TextOf(input, "rfld"))) > 1.0) {
        return {kCorrelation, "rfld"};
    }
    if (!related && !IsValidN(TextOf(input, "n2fld"))) {
        return {kIndependentN, "n2fld"};
    }
    return {};
}

bool IsOwnMessage(const std::string& message) {
    for (const char* own : kBlankMessages) {
        if (message == own) {
            return true;
        }
    }
    return message == kChooseTest || message == kIndependentN || message == kPairedN ||
           message == kCorrelation;
}

void CheckRefusal(const Input& input, const MapPanel& panel) {
    const std::string& message = panel.messages.front();
    Require(IsOwnMessage(message), "the message is one of the program's own");
    const Refusal expected = FirstRefusal(input);
    Require(expected.message != nullptr && message == expected.message,
            "the message is that of the first failing check");
    std::vector<std::string> writes{"MsgBox:" + message};
    if (*expected.focus != '\0') {
        writes.push_back(std::string(expected.focus) + ".SetFocus");
    }
    Require(panel.Writes() == writes, "a refusal writes its message and moves the focus, no more");
}

std::int64_t Truncated(const std::string& text) {
    return static_cast<std::int64_t>(Val(text));  // in range: the N checks passed
}

void CheckResult(const Input& input, const MapPanel& panel) {
    Require(FirstRefusal(input).message == nullptr, "every check passed");
    const std::string& p = panel.texts.at("pfld");
    const std::string& t = panel.texts.at("tfld");
    const std::string& df = panel.texts.at("dfFld");
    const std::vector<std::string> writes{
        "pfld.Enabled=1",   "pfld.Visible=1",   "pfld.Text=" + p,  "dtail.Visible=1",
        "tfld.Enabled=1",   "tfld.Visible=1",   "tfld.Text=" + t,  "ttext.Enabled=1",
        "ttext.Visible=1",  "dfFld.Enabled=1",  "dfFld.Visible=1", "dfFld.Text=" + df,
        "dfText.Enabled=1", "dfText.Visible=1",
    };
    Require(panel.Writes() == writes, "the result step writes the three results and labels only");

    // p: .0001 stands for every smaller probability.
    const double probability = korvane::Globals::p;
    if (std::isnan(probability)) {
        Require(p == "NaN", "a NaN probability shows as NaN");
    } else {
        Require(fuzz::IsProbabilityText(p), "pfld shows .dddd or 1.0000");
        Require(fuzz::IsRoundedFrom(Val(p), probability < 0.0001 ? 0.0001 : probability, 4),
                "pfld shows the probability");
    }

    // t: tprob leaves |t|; the sign comes from the difference of the means.
    const double magnitude = korvane::Globals::t;
    const bool negative =
        magnitude > 0.0 && Val(TextOf(input, "m1fld")) < Val(TextOf(input, "m2fld"));
    const std::string sign = negative ? "-" : "+";
    if (std::isnan(magnitude)) {
        Require(t == "NaN", "a NaN t shows as NaN");
    } else if (std::isinf(magnitude)) {
        Require(t == sign + "Inf", "an infinite t shows as Inf with its sign");
    } else {
        Require(fuzz::IsFixedText(t, sign, 0, 3), "tfld shows a sign, digits, point, 3 decimals");
        if (magnitude < 1e15) {
            Require(fuzz::IsRoundedFrom(std::fabs(Val(t)), magnitude, 3), "tfld shows t");
        }
    }

    // df: N1 + N2 - 2, or the pairs less one.
    const std::int64_t n1 = Truncated(TextOf(input, "n1fld"));
    const std::int64_t expectedDf =
        input.btn == 2 ? n1 - 1 : n1 + Truncated(TextOf(input, "n2fld")) - 2;
    std::int64_t shownDf = 0;
    const auto parsed = std::from_chars(df.data(), df.data() + df.size(), shownDf);
    Require(fuzz::AllDigits(df) && parsed.ptr == df.data() + df.size() && shownDf == expectedDf &&
                korvane::Globals::k1 == expectedDf,
            "dfFld shows df in plain digits");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = Decode(data, size);
    MapPanel panel;
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        panel.texts[kFields[i]] = input.texts[i];
    }
    korvane::Globals::btn = input.btn;
    try {
        korvane::CalcBtn_Action(panel);
    } catch (...) {
        Require(false, "the Calculate command never throws");
    }
    Require(korvane::Globals::btn == input.btn, "the command leaves btn alone");
    Require(panel.messages.size() <= 1, "at most one message");
    if (panel.messages.empty()) {
        CheckResult(input, panel);
    } else {
        CheckRefusal(input, panel);
    }
    return 0;
}
