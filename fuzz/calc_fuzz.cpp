// Drives the Calculate command with arbitrary entries and checks what it did to the window.
//   byte 0     the test: its value mod 4 gives btn 0, 1 or 2; 3 takes btn from the next
//              eight bytes, any int64
//   next byte  a separator
//   the rest   the texts of m1fld, m2fld, sd1fld, sd2fld, n1fld, n2fld and rfld, split at the
//              separator; any byte but the separator, valid UTF-8 or not. Missing ones are empty.
// The command must answer with exactly the message of its first failing check and the focus on
// that check's field, or with the three results and nothing else.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/text_checks.h"
#include "platform/core/text.h"
#include "stats/messages.h"
#include "stats/stats.h"
#include "tests/stats/map_panel.h"

namespace {

namespace messages = korvane::messages;
using fuzz::Require;
using platform::Val;

// The fields the command reads, in the order of their blank checks, with the message a blank
// one gets.
struct Entry {
    const char* field;
    const char* blankMessage;
};
enum Field { kM1, kM2, kSd1, kSd2, kN1, kN2, kR };
constexpr Entry kEntries[] = {
    {"m1fld", messages::kMean1},          {"m2fld", messages::kMean2}, {"sd1fld", messages::kSd1},
    {"sd2fld", messages::kSd2},           {"n1fld", messages::kN1},    {"n2fld", messages::kN2},
    {"rfld", messages::kCorrelationBlank}};
static_assert(std::size(kEntries) == kR + 1, "one entry for each field of the enumeration");

struct Input {
    std::int64_t btn = 0;
    std::array<std::string, std::size(kEntries)> texts;  // in the order of kEntries
};

Input Decode(std::string_view bytes) {
    const auto take = [&bytes](std::size_t n) {
        const std::string_view part = bytes.substr(0, n);
        bytes.remove_prefix(part.size());
        return part;
    };
    Input input;
    const std::string_view choice = take(1);
    input.btn = choice.empty() ? 0 : static_cast<unsigned char>(choice[0]) % 4;
    if (input.btn == 3) {
        input.btn = 0;
        take(sizeof input.btn).copy(reinterpret_cast<char*>(&input.btn), sizeof input.btn);
    }
    const std::string_view separator = take(1);
    for (std::string& text : input.texts) {
        text = take(separator.empty() ? 0 : bytes.find(separator[0]));
        take(1);
    }
    return input;
}

// An N field holds a valid N when its value, truncated toward zero, lies in 2 to 9999.
bool IsValidN(const std::string& text) {
    return Val(text) >= 2.0 && Val(text) < 10000.0;
}

// The message and focus of the first check that fails, worked out from the rules; none when
// every check passes.
std::vector<std::string> Refusal(const Input& in) {
    const bool related = in.btn == 2;
    if (in.btn != 1 && in.btn != 2) {
        return {std::string("MsgBox:") + messages::kChooseTest};
    }
    for (int i = kM1; i <= kR; ++i) {
        if (i != (related ? kN2 : kR) && in.texts[i].empty()) {
            return {std::string("MsgBox:") + kEntries[i].blankMessage,
                    kEntries[i].field + std::string(".SetFocus")};
        }
    }
    const char* nMessage = related ? messages::kPairedN : messages::kIndependentN;
    if (!IsValidN(in.texts[kN1])) {
        return {std::string("MsgBox:") + nMessage, "n1fld.SetFocus"};
    }
    if (related && std::fabs(Val(in.texts[kR])) > 1.0) {
        return {std::string("MsgBox:") + messages::kCorrelation, "rfld.SetFocus"};
    }
    if (!related && !IsValidN(in.texts[kN2])) {
        return {std::string("MsgBox:") + nMessage, "n2fld.SetFocus"};
    }
    return {};
}

// Names on stderr the first write that differs from what was expected, then checks they agree.
void RequireWrites(const std::vector<std::string>& writes, const std::vector<std::string>& expected,
                   const char* what) {
    const auto [got, want] = std::ranges::mismatch(writes, expected);
    if (got != writes.end() || want != expected.end()) {
        std::fprintf(stderr, "write %zu is \"%s\", expected \"%s\"\n",
                     static_cast<std::size_t>(got - writes.begin()) + 1,
                     got == writes.end() ? "(none)" : got->c_str(),
                     want == expected.end() ? "(none)" : want->c_str());
    }
    Require(got == writes.end() && want == expected.end(), what);
}

void CheckResult(const Input& in, const std::string& p, const std::string& t,
                 const std::string& df) {
    // p: .0001 stands for every smaller probability.
    fuzz::RequireFixed(p, std::max(korvane::Globals::p, 0.0001), false, 4);
    // t: tprob leaves |t|; the sign comes from the difference of the means.
    const double magnitude = korvane::Globals::t;
    const bool negative = magnitude > 0.0 && Val(in.texts[kM1]) < Val(in.texts[kM2]);
    fuzz::RequireFixed(t, negative ? -magnitude : magnitude, true, 3);
    // df: N1 + N2 - 2, or the pairs less one.
    const auto n1 = static_cast<std::int64_t>(Val(in.texts[kN1]));
    const std::int64_t expected =
        in.btn == 2 ? n1 - 1 : n1 + static_cast<std::int64_t>(Val(in.texts[kN2])) - 2;
    Require(df == std::to_string(expected) && korvane::Globals::k1 == expected,
            "dfFld shows df in plain digits");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = Decode({reinterpret_cast<const char*>(data), size});
    korvane::testing::MapPanel panel;
    for (std::size_t i = 0; i < std::size(kEntries); ++i) {
        panel.texts[kEntries[i].field] = input.texts[i];
    }
    korvane::Globals::btn = input.btn;
    try {
        korvane::CalcBtn_Action(panel);
    } catch (...) {
        Require(false, "the Calculate command never throws");
    }
    Require(korvane::Globals::btn == input.btn, "the command leaves btn alone");
    if (!panel.messages.empty()) {
        RequireWrites(
            panel.Writes(), Refusal(input),
            "a refusal shows the first failing check's message and moves the focus, no more");
        return 0;
    }
    Require(Refusal(input).empty(), "every check passed");
    const std::string& p = panel.texts.at("pfld");
    const std::string& t = panel.texts.at("tfld");
    const std::string& df = panel.texts.at("dfFld");
    RequireWrites(panel.Writes(),
                  std::vector<std::string>{"pfld.Enabled=1", "pfld.Visible=1", "pfld.Text=" + p,
                                           "dtail.Visible=1", "tfld.Enabled=1", "tfld.Visible=1",
                                           "tfld.Text=" + t, "ttext.Enabled=1", "ttext.Visible=1",
                                           "dfFld.Enabled=1", "dfFld.Visible=1", "dfFld.Text=" + df,
                                           "dfText.Enabled=1", "dfText.Visible=1"},
                  "the result step writes the three results and labels only");
    CheckResult(input, p, t, df);
    return 0;
}
