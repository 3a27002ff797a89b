#include "stats/stats.h"

namespace korvane {

namespace Globals {
std::int64_t btn = 0;
std::int64_t k1 = 0;
double t = 0.0;
double p = 0.0;
}  // namespace Globals

std::int64_t ToN(double value) {
    // [-2^63, 2^63) is exactly what an int64 holds after truncation; NaN fails both tests.
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (!(value >= -kLimit && value < kLimit)) {
        return kNoN;
    }
    return static_cast<std::int64_t>(value);
}

}  // namespace korvane
