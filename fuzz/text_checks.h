// Checks shared by the fuzz targets of the text conversions and the Calculate command. A failed
// check names itself on stderr and traps, so libFuzzer reports it together with the input.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace fuzz {

inline void Require(bool ok, const char* what) {
    if (!ok) {
        std::fprintf(stderr, "check failed: %s\n", what);
        __builtin_trap();
    }
}

inline bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

inline bool AllDigits(std::string_view text) {
    for (const char c : text) {
        if (!IsDigit(c)) {
            return false;
        }
    }
    return true;
}

// `text` is the shape Format gives a finite value: `sign`, the integer digits (at least
// `integerPlaces`, and no leading zero beyond them), then a point and exactly `places` digits,
// or no point at all when `places` is 0.
inline bool IsFixedText(std::string_view text, std::string_view sign, std::size_t integerPlaces,
                        std::size_t places) {
    if (!text.starts_with(sign)) {
        return false;
    }
    text.remove_prefix(sign.size());
    const std::size_t point = text.find('.');
    if ((point == std::string_view::npos) != (places == 0)) {
        return false;
    }
    const std::string_view integer = text.substr(0, point);
    const std::string_view fraction = places == 0 ? "" : text.substr(point + 1);
    const bool padding = integer.size() > integerPlaces && integer.starts_with('0');
    return AllDigits(integer) && integer.size() >= integerPlaces && !padding &&
           fraction.size() == places && AllDigits(fraction);
}

// What ".0000" must give for a probability from .0001 to 1: ^(\.[0-9]{4}|1\.0000)$
inline bool IsProbabilityText(std::string_view text) {
    return text == "1.0000" || IsFixedText(text, "", 0, 4);
}

// `shown`, read back from a text with `places` decimals, is `value` rounded at that place:
// half a unit of the last place, and the rounding of the read-back double, apart at most.
inline bool IsRoundedFrom(double shown, double value, int places) {
    const double halfUnit = 0.5 * std::pow(10.0, -places);
    const double ulp = std::nextafter(std::fabs(value), INFINITY) - std::fabs(value);
    return std::fabs(shown - value) <= halfUnit + 2.0 * ulp;
}

// Bitwise equality of two doubles, so that 0.0 and -0.0 differ.
inline bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace fuzz
