#include "platform/core/text.h"
#include "stats/stats.h"

namespace korvane {

using platform::RuntimePow;
using platform::Sqrt;

// The order of operations below is part of the result: every step rounds, and the displayed
// digits depend on it. Integer sums are taken in integers and converted once, where used.

double IndependentSE(double sd1, double sd2, std::int64_t n1, std::int64_t n2) {
    const double ss1 = static_cast<double>(n1 - 1) * RuntimePow(sd1, 2.0);
    const double ss2 = static_cast<double>(n2 - 1) * RuntimePow(sd2, 2.0);
    const double pooled = (ss1 + ss2) / static_cast<double>(n1 + n2 - 2);
    const double w = 1.0 / static_cast<double>(n1) + 1.0 / static_cast<double>(n2);
    return Sqrt(pooled * w);
}

TStatistic IndependentT(double m1, double m2, double sd1, double sd2, std::int64_t n1,
                        std::int64_t n2) {
    const double diff = m1 - m2;
    return {diff / IndependentSE(sd1, sd2, n1, n2), n1 + n2 - 2};
}

// Squares by multiplying, unlike IndependentSE. With |r| = 1 and nearly equal standard
// deviations rounding can leave q a little below zero; Sqrt then gives NaN.
double RelatedSE(double sd1, double sd2, double r, std::int64_t n1) {
    const double q = (sd1 * sd1 + sd2 * sd2) - ((2.0 * r) * sd1) * sd2;
    return Sqrt(q / static_cast<double>(n1));
}

TStatistic RelatedT(double m1, double m2, double sd1, double sd2, double r, std::int64_t n1) {
    const double diff = m1 - m2;
    return {diff / RelatedSE(sd1, sd2, r, n1), n1 - 1};
}

}  // namespace korvane
