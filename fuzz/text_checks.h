// Checks shared by the fuzz targets of the text conversions and the Calculate command. A failed
// check names itself on stderr and traps, so libFuzzer reports it together with the input.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
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

// `text` is the shape Format gives a finite value: `sign`, the integer digits (at least
// `integerPlaces`, and no leading zero beyond them), then a point and exactly `places` digits,
// or no point at all when `places` is 0.
inline bool IsFixedText(std::string_view text, std::string_view sign, std::size_t integerPlaces,
                        std::size_t places) {
    const auto digits = [](std::string_view part) {
        return std::ranges::all_of(part, [](char c) { return c >= '0' && c <= '9'; });
    };
    if (!text.starts_with(sign)) {
        return false;
    }
    text.remove_prefix(sign.size());
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view integer = text.substr(0, point);
    const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
    return (point == text.size()) == (places == 0) && digits(integer) && digits(fraction) &&
           integer.size() >= integerPlaces && fraction.size() == places &&
           !(integer.size() > integerPlaces && integer.starts_with('0'));
}

// What ".0000" must give for a probability from .0001 to 1: ^(\.[0-9]{4}|1\.0000)$
inline bool IsProbabilityText(std::string_view text) {
    return text == "1.0000" || IsFixedText(text, "", 0, 4);
}

// `shown`, read back from a text with `places` decimals, is `value` rounded at that place:
// half a unit of the last place, and the rounding of the read-back double, apart at most.
inline bool IsRoundedFrom(double shown, double value, int places) {
    const double ulp = std::nextafter(std::fabs(value), INFINITY) - std::fabs(value);
    return std::fabs(shown - value) <= 0.5 * std::pow(10.0, -places) + 2.0 * ulp;
}

// Bitwise equality of two doubles, so that 0.0 and -0.0 differ.
inline bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace fuzz
