// Text and number functions of the platform: arithmetic on doubles, the conversions between
// text and numbers (Val, Format, Str, Asc), and the yield of a long loop.
//
// The arithmetic functions are thin, inline stand-ins for the standard library, so the
// statistics read like their formulas and cost nothing extra. The conversions never consult
// the process locale: the decimal separator is always a point.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

inline double Abs(double x) {
    return std::fabs(x);
}
inline double Sqrt(double x) {
    return std::sqrt(x);
}  // NaN below zero
inline double Floor(double x) {
    return std::floor(x);
}
inline double Sin(double x) {
    return std::sin(x);
}
inline double Cos(double x) {
    return std::cos(x);
}
inline double ATan(double x) {
    return std::atan(x);
}
inline double RuntimePow(double base, double exponent) {
    return std::pow(base, exponent);
}

// The number at the start of `text`; never fails.
//   Read: leading blanks and tabs, an optional sign ('+' or '-'), digits with at most one point
//   (at least one digit), and an optional exponent ('e' or 'E', optional sign, digits).
//   Reading stops at the first character that does not fit, so "1.2.3" is 1.2, "12abc" is 12,
//   "1/2" is 1 and "1e" is 1.
//   Text with no number ("", "abc", "-", ".") gives 0.0, which fails any check that an N be
//   at least 2. A number too large for a double gives an infinity with its sign, one too small
//   gives zero with its sign.
double Val(std::string_view text);

// `value` rendered by a pattern of the form  [+] {# | 0}... [. 0...]
//   '+'  a sign always: "+" for positive values and zero (also -0.0), "-" for negative ones.
//        Without it only negative values carry a sign ("-").
//   '#'  an integer place shown only when needed: a zero integer part shows no digit (.0873).
//   '0'  an integer place always shown, filling with zeros.
//   '.0' the point and one fraction digit per '0'.
// The value is rounded at the last fraction place from its exact binary value; an exact tie
// (as 1.0625 at three places) rounds away from zero. An integer part wider than the pattern
// is shown in full, so ".0000" gives "1.0000" for 0.99995 and above, and "+####.000" gives
// "+12345.678". A value that rounds to zero keeps the sign of the value: -0.0004 gives "-.000".
// Infinities give "Inf" with their sign ("+Inf", "-Inf"), NaN gives "NaN" with no sign.
// Any other pattern is a fault of the program: UnsupportedFormatException.
std::string Format(double value, std::string_view pattern);

// The plain decimal digits of `value`: no grouping, no fill, "-" only when negative.
std::string Str(std::int64_t value);

// The code of the first character of UTF-8 `text`. An empty text gives -1 and a malformed
// sequence gives 0xFFFD (the replacement character); neither is the code of a key.
std::int64_t Asc(std::string_view text);

// How often RuntimeBackgroundTask has run in this process; tests count a loop's yields by it.
inline std::uint64_t gBackgroundTaskCount = 0;

// The yield of a long loop. There is one thread and this processes no events, so no second
// command can start while the loop runs; it only counts, which costs nearly nothing.
inline void RuntimeBackgroundTask() {
    ++gBackgroundTaskCount;
}

}  // namespace platform
