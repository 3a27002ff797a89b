// Checks shared by the fuzz targets of the text conversions and the Calculate command.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz/require.h"
#include "platform/core/text.h"

namespace fuzz {

// Bitwise equality of two doubles, so that 0.0 and -0.0 differ.
inline bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

inline bool IsDigits(std::string_view part) {
    return std::ranges::all_of(part, [](char c) { return c >= '0' && c <= '9'; });
}

// `text` shows `value` with `places` decimals: `sign` (a sign always, or only when negative),
// the integer digits without a leading zero, a point and the decimals; NaN and Inf as such. A
// failure names the caller's line.
inline void RequireFixed(const std::string& text, double value, bool alwaysSign, int places,
                         const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    const std::string sign = value < 0.0 ? "-" : (alwaysSign ? "+" : "");
    if (std::isnan(value) || std::isinf(value)) {
        Require(text == (std::isnan(value) ? "NaN" : sign + "Inf"), "NaN and Inf show as such",
                file, line);
        return;
    }
    const std::size_t point = text.find('.');
    Require(text.starts_with(sign) && point != std::string::npos &&
                IsDigits(text.substr(sign.size(), point - sign.size())) &&
                text.substr(sign.size()).find('0') != 0 &&
                text.size() == point + 1 + static_cast<std::size_t>(places) &&
                IsDigits(text.substr(point + 1)),
            "a number shows as sign, integer digits, point and decimals", file, line);
    // Read back, the text is `value` rounded at its last place: half a unit of that place, and
    // the rounding of the read-back double, apart at most.
    const double ulp = std::nextafter(std::fabs(value), INFINITY) - std::fabs(value);
    Require(std::fabs(value) >= 1e15 ||
                std::fabs(platform::Val(text) - value) <= 0.5 * std::pow(10.0, -places) + 2.0 * ulp,
            "a number round-trips through Val", file, line);
}

}  // namespace fuzz
