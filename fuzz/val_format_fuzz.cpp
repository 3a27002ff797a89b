// Feeds arbitrary bytes to the text conversions and checks what each of them promises.
//   bytes 0-7  a double of any bit pattern (NaN, infinities, denormals) for Format, and the
//              same eight bytes as an int64 for Str; a shorter input is padded with zeros
//   the rest   a text for Val and Asc
// A broken promise traps and an exception ends the run uncaught; libFuzzer reports both, like a
// crash or a sanitizer report.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/text_checks.h"
#include "platform/core/text.h"

namespace {

using fuzz::Require;
using platform::Format;
using platform::Val;

void CheckVal(std::string_view text) {
    const double value = Val(text);
    Require(!std::isnan(value), "Val never gives NaN");
    // Such text in an N field must fail the range check, which 0 does.
    Require(
        text.find_first_of("0123456789") != std::string_view::npos || fuzz::SameBits(value, 0.0),
        "Val of text without a digit is 0");
    // 'x' fits nowhere in a number, so reading must stop before it.
    Require(fuzz::SameBits(Val(std::string(text) + 'x'), value), "Val stops at the number's end");
}

// The UTF-8 bytes of `c`, a scalar value.
std::string Utf8(std::uint32_t c) {
    const int extra = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    std::string out(1, static_cast<char>(
                           extra == 0 ? c : ((0xFFu << (7 - extra)) & 0xFF) | (c >> (6 * extra))));
    for (int i = extra - 1; i >= 0; --i) {
        out += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
    }
    return out;
}

// A decoded character is exactly the bytes it came from, so an overlong form or a stray
// continuation byte can only give the replacement character.
void CheckAsc(std::string_view text) {
    const std::int64_t code = platform::Asc(text);
    Require(!text.empty() || code == -1, "Asc of empty text is -1");
    Require(text.empty() || (code >= 0 && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF)),
            "Asc gives a scalar value");
    Require(text.empty() || code == 0xFFFD || text.starts_with(Utf8(code)),
            "Asc decodes the leading character");
}

void CheckStr(std::int64_t n) {
    const std::string text = platform::Str(n);
    Require(text == std::to_string(n), "Str gives plain digits, '-' for negative numbers");
    constexpr std::int64_t kExact = std::int64_t{1} << 53;  // every int64 below is a double
    Require(n <= -kExact || n >= kExact || Val(text) == static_cast<double>(n),
            "Str round-trips through Val");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::uint64_t bits = 0;
    const std::size_t headSize = std::min(size, sizeof bits);
    std::copy_n(data, headSize, reinterpret_cast<std::uint8_t*>(&bits));
    const double value = std::bit_cast<double>(bits);
    const std::string_view text(reinterpret_cast<const char*>(data) + headSize, size - headSize);

    CheckVal(text);
    CheckAsc(text);
    fuzz::RequireFixed(Format(value, "+####.000"), value, true, 3);
    fuzz::RequireFixed(Format(value, ".0000"), value, false, 4);
    // Raw bit patterns seldom fall in the probability range; the same bits spread evenly over
    // it, so every input checks one probability.
    const double p = 0.0001 + static_cast<double>(bits >> 11) * 0x1p-53 * 0.9999;
    fuzz::RequireFixed(Format(p, ".0000"), p, false, 4);
    CheckStr(static_cast<std::int64_t>(bits));
    CheckStr(static_cast<std::int64_t>(bits) >> 11);  // always within Val's exact range
    return 0;
}
