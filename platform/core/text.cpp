#include "platform/core/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include "platform/core/failure.h"

namespace platform {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Where a run of digits starting at `pos` ends.
std::size_t SkipDigits(std::string_view text, std::size_t pos) {
    while (pos < text.size() && IsDigit(text[pos])) {
        ++pos;
    }
    return pos;
}

// The decimal exponent of the leading significant digit of the mantissa "int.fraction" scaled
// by 10^exponent. Only its sign matters: it tells a number too large for a double from one too
// small, once the parser has said the number is out of range.
std::int64_t LeadingExponent(std::string_view integer, std::string_view fraction,
                             std::int64_t exponent) {
    const auto significant = integer.find_first_not_of('0');
    if (significant != std::string_view::npos) {
        return static_cast<std::int64_t>(integer.size() - significant) - 1 + exponent;
    }
    const auto zeros = std::min(fraction.find_first_not_of('0'), fraction.size());
    return exponent - static_cast<std::int64_t>(zeros) - 1;
}

// The value of the exponent's digits, saturated far beyond any double's range.
std::int64_t ReadExponent(std::string_view digits) {
    constexpr std::int64_t kSaturated = 1'000'000;
    std::int64_t value = 0;
    for (char c : digits) {
        value = std::min(value * 10 + (c - '0'), kSaturated);
    }
    return value;
}

}  // namespace

double Val(std::string_view text) {
    std::size_t pos = text.find_first_not_of(" \t");
    if (pos == std::string_view::npos) {
        return 0.0;
    }
    bool negative = false;
    if (text[pos] == '+' || text[pos] == '-') {
        negative = text[pos] == '-';
        ++pos;
    }
    const std::size_t start = pos;
    const std::size_t integerEnd = SkipDigits(text, start);
    std::size_t end = integerEnd;
    std::size_t fractionEnd = integerEnd;
    if (end < text.size() && text[end] == '.') {
        fractionEnd = SkipDigits(text, end + 1);
        end = fractionEnd;
    }
    const std::string_view integer = text.substr(start, integerEnd - start);
    const std::string_view fraction =
        fractionEnd > integerEnd ? text.substr(integerEnd + 1, fractionEnd - integerEnd - 1)
                                 : std::string_view{};
    if (integer.empty() && fraction.empty()) {
        return 0.0;
    }

    std::int64_t exponent = 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t digits = end + 1;
        const bool signedExponent =
            digits < text.size() && (text[digits] == '+' || text[digits] == '-');
        if (signedExponent) {
            ++digits;
        }
        const std::size_t exponentEnd = SkipDigits(text, digits);
        if (exponentEnd > digits) {
            exponent = ReadExponent(text.substr(digits, exponentEnd - digits));
            if (signedExponent && text[digits - 1] == '-') {
                exponent = -exponent;
            }
            end = exponentEnd;
        }
    }

    double magnitude = 0.0;
    const auto parsed = std::from_chars(text.data() + start, text.data() + end, magnitude);
    if (parsed.ec == std::errc::result_out_of_range) {
        const bool tooLarge = LeadingExponent(integer, fraction, exponent) >= 0;
        magnitude = tooLarge ? HUGE_VAL : 0.0;
    }
    return negative ? -magnitude : magnitude;
}

namespace {

struct Pattern {
    bool alwaysSign = false;
    std::size_t integerZeros = 0;  // integer places that are always shown
    int fractionPlaces = 0;
};

Pattern ParsePattern(std::string_view text) {
    Pattern pattern;
    std::size_t pos = 0;
    if (pos < text.size() && text[pos] == '+') {
        pattern.alwaysSign = true;
        ++pos;
    }
    for (; pos < text.size() && (text[pos] == '#' || text[pos] == '0'); ++pos) {
        pattern.integerZeros += text[pos] == '0' ? 1 : 0;
    }
    if (pos < text.size() && text[pos] == '.') {
        for (++pos; pos < text.size() && text[pos] == '0'; ++pos) {
            ++pattern.fractionPlaces;
        }
    }
    if (pos != text.size()) {
        throw UnsupportedFormatException("Format pattern not supported: \"" + std::string(text) +
                                         "\"");
    }
    return pattern;
}

// True when `magnitude` lies exactly halfway between two neighbours of `places` decimals:
// its lowest set bit is then 2^-(places+1), which is the last decimal digit 5 at place
// places+1 and nothing after it.
bool IsExactTie(double magnitude, int places) {
    const double twice = std::ldexp(magnitude, places + 1);
    const double once = std::ldexp(magnitude, places);
    return std::floor(twice) == twice && std::floor(once) != once;
}

std::string FixedDigits(double magnitude, int places) {
    constexpr int kMostIntegerDigits = 309;  // DBL_MAX has 309
    std::string out(kMostIntegerDigits + 3 + places, '\0');
    char* const first = out.data();
    char* const last = first + out.size();
    out.resize(std::to_chars(first, last, magnitude, std::chars_format::fixed, places).ptr - first);
    return out;
}

// `magnitude` at `places` decimals, an exact tie rounded away from zero.
std::string RoundedDigits(double magnitude, int places) {
    if (!IsExactTie(magnitude, places)) {
        return FixedDigits(magnitude, places);
    }
    std::string digits = FixedDigits(magnitude, places + 1);  // exact, ends in the 5
    digits.pop_back();
    if (digits.back() == '.') {
        digits.pop_back();
    }
    for (auto it = digits.rbegin(); it != digits.rend(); ++it) {
        if (*it == '.') {
            continue;
        }
        if (*it != '9') {
            ++*it;
            return digits;
        }
        *it = '0';
    }
    return '1' + digits;
}

}  // namespace

std::string Format(double value, std::string_view patternText) {
    const Pattern pattern = ParsePattern(patternText);
    const bool negative = value < 0.0;
    const std::string sign = negative ? "-" : (pattern.alwaysSign ? "+" : "");
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return sign + "Inf";
    }

    const std::string digits = RoundedDigits(std::fabs(value), pattern.fractionPlaces);
    const auto point = std::min(digits.find('.'), digits.size());
    std::string integer = digits.substr(0, point);
    integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size()));
    if (integer.size() < pattern.integerZeros) {
        integer.insert(0, pattern.integerZeros - integer.size(), '0');
    }
    return sign + integer + digits.substr(point);
}

std::string Str(std::int64_t value) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::int64_t Asc(std::string_view text) {
    constexpr std::int64_t kEmpty = -1;
    constexpr std::int64_t kReplacement = 0xFFFD;
    if (text.empty()) {
        return kEmpty;
    }
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        return lead;
    }
    // The lead byte tells the length of the sequence and the payload bits it carries;
    // a code below `smallest` would be an overlong form.
    struct Sequence {
        std::size_t length;
        std::uint32_t code;
        std::uint32_t smallest;
    };
    Sequence sequence{};
    if ((lead & 0xE0) == 0xC0) {
        sequence = {2, lead & 0x1Fu, 0x80};
    } else if ((lead & 0xF0) == 0xE0) {
        sequence = {3, lead & 0x0Fu, 0x800};
    } else if ((lead & 0xF8) == 0xF0) {
        sequence = {4, lead & 0x07u, 0x10000};
    } else {
        return kReplacement;
    }
    const std::size_t length = sequence.length;
    std::uint32_t code = sequence.code;
    if (text.size() < length) {
        return kReplacement;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            return kReplacement;
        }
        code = (code << 6) | (next & 0x3F);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < sequence.smallest || code > 0x10FFFF || surrogate) {
        return kReplacement;
    }
    return code;
}

}  // namespace platform
