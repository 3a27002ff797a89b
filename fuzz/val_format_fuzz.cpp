// Feeds arbitrary bytes to the text conversions and checks what each of them promises.
//   bytes 0-7  a double of any bit pattern (NaN, infinities, denormals) for Format, and the
//              same eight bytes as an int64 for Str; a shorter input is padded with zeros
//   the rest   a text for Val and Asc, and a pattern for Format
// A broken promise traps; an exception other than the one an unsupported pattern raises ends
// the run as an uncaught exception. libFuzzer reports both, like a crash or a sanitizer report.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz/text_checks.h"
#include "platform/core/failure.h"
#include "platform/core/text.h"

namespace {

using fuzz::Require;
using platform::Format;
using platform::Val;

void CheckVal(std::string_view text) {
    const double value = Val(text);
    Require(!std::isnan(value), "Val never gives NaN");
    if (text.find_first_of("0123456789") == std::string_view::npos) {
        // Such text in an N field must fail the range check, which 0 does.
        Require(fuzz::SameBits(value, 0.0), "Val of text without a digit is 0");
    }
    // 'x' fits nowhere in a number, so reading must stop before it.
    Require(fuzz::SameBits(Val(std::string(text) + 'x'), value), "Val stops at the number's end");
}

// The UTF-8 bytes of `code`, a scalar value.
std::string Utf8(std::int64_t code) {
    const auto c = static_cast<std::uint32_t>(code);
    std::string out;
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
    return out;
}

void CheckAsc(std::string_view text) {
    constexpr std::int64_t kReplacement = 0xFFFD;
    const std::int64_t code = platform::Asc(text);
    if (text.empty()) {
        Require(code == -1, "Asc of empty text is -1");
        return;
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    Require(code >= 0 && code <= 0x10FFFF && !surrogate, "Asc gives a scalar value");
    // A decoded character is exactly the bytes it came from, so an overlong form or a stray
    // continuation byte can only give the replacement character.
    if (code != kReplacement) {
        Require(text.starts_with(Utf8(code)), "Asc decodes the leading character");
    }
}

// `text` = Format(value, pattern) with `places` decimals, a sign always or only when negative,
// and `integerPlaces` integer digits always shown.
void CheckFormatted(double value, const std::string& text, bool alwaysSign,
                    std::size_t integerPlaces, int places) {
    if (std::isnan(value)) {
        Require(text == "NaN", "NaN shows as NaN");
        return;
    }
    const std::string_view sign = value < 0.0 ? "-" : (alwaysSign ? "+" : "");
    if (std::isinf(value)) {
        Require(text == std::string(sign) + "Inf", "an infinity shows as Inf with its sign");
        return;
    }
    Require(fuzz::IsFixedText(text, sign, integerPlaces, static_cast<std::size_t>(places)),
            "Format gives sign, integer digits, point and the pattern's decimals");
    if (std::fabs(value) < 1e15) {
        Require(fuzz::IsRoundedFrom(Val(text), value, places), "Format round-trips through Val");
    }
}

void CheckProbability(double p) {
    const std::string text = Format(p, ".0000");
    Require(fuzz::IsProbabilityText(text), "a probability shows as .dddd or 1.0000");
    Require(fuzz::IsRoundedFrom(Val(text), p, 4), "a probability round-trips through Val");
}

void CheckFormat(double value, std::uint64_t bits) {
    CheckFormatted(value, Format(value, "+####.000"), true, 0, 3);
    CheckFormatted(value, Format(value, ".0000"), false, 0, 4);
    if (value >= 0.0001 && value <= 1.0) {
        CheckProbability(value);
    }
    // Raw bit patterns seldom fall in the probability range; this spreads the same bits
    // evenly over it, so every input checks one probability.
    const double unit = static_cast<double>(bits >> 11) * 0x1p-53;
    CheckProbability(0.0001 + unit * 0.9999);
}

void CheckStr(std::int64_t n) {
    const std::string text = platform::Str(n);
    const std::string_view digits = std::string_view(text).substr(n < 0 ? 1 : 0);
    Require(text.starts_with('-') == (n < 0), "Str gives '-' exactly for negative numbers");
    Require(!digits.empty() && fuzz::AllDigits(digits) && (digits == "0" || digits[0] != '0'),
            "Str gives plain digits");
    std::int64_t back = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), back);
    Require(parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() && back == n,
            "Str round-trips as an integer");
    constexpr std::int64_t kExact = std::int64_t{1} << 53;  // every int64 below is a double
    if (n > -kExact && n < kExact) {
        Require(Val(text) == static_cast<double>(n), "Str round-trips through Val");
    }
}

// Any pattern: one that Format supports ([+] {# | 0}... [. 0...]) keeps the promises above,
// with the sign, the places and the integer zeros it asks for; any other is a fault of the
// program, reported as UnsupportedFormatException and as nothing else.
void CheckAnyPattern(double value, std::string_view pattern) {
    std::string text;
    try {
        text = Format(value, pattern);
    } catch (const platform::UnsupportedFormatException&) {
        return;
    }
    const std::size_t point = pattern.find('.');
    const std::string_view integer = pattern.substr(0, point);
    const auto integerZeros =
        static_cast<std::size_t>(std::count(integer.begin(), integer.end(), '0'));
    const auto places =
        point == std::string_view::npos ? 0 : static_cast<int>(pattern.size() - point - 1);
    CheckFormatted(value, text, pattern.starts_with('+'), integerZeros, places);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    unsigned char head[8] = {};
    const std::size_t headSize = size < sizeof head ? size : sizeof head;
    if (headSize > 0) {
        std::memcpy(head, data, headSize);
    }
    double value = 0.0;
    std::uint64_t bits = 0;
    std::memcpy(&value, head, sizeof value);
    std::memcpy(&bits, head, sizeof bits);
    const std::string_view text(reinterpret_cast<const char*>(data) + headSize, size - headSize);

    CheckVal(text);
    CheckAsc(text);
    CheckFormat(value, bits);
    CheckStr(static_cast<std::int64_t>(bits));
    CheckStr(static_cast<std::int64_t>(bits) >> 11);  // always within Val's exact range
    CheckAnyPattern(value, text);
    return 0;
}
