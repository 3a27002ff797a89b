#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "stats/stats.h"

namespace korvane {
namespace {

// Worked values are given to ten places; within half a unit of the tenth place every shown
// digit is right.
constexpr double kTenPlaces = 5e-11;

TEST(TStatistics, IndependentWorkedValues) {
    struct Case {
        double m1, m2, sd1, sd2;
        std::int64_t n1, n2;
        double se, t;
        std::int64_t df;
    };
    const std::vector<Case> cases{
        {10, 8, 2, 3, 10, 12, 1.1124297731, 1.7978662999, 20},
        {8, 10, -2, 3, 10, 12, 1.1124297731, -1.7978662999, 20},  // the SD's sign squares away
        {100, 90, 15, 15, 30, 30, 3.8729833462, 2.5819888975, 58},
        {12, 9, 2, 2, 2, 2, 2.0, 1.5, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.t);
        const TStatistic result = IndependentT(c.m1, c.m2, c.sd1, c.sd2, c.n1, c.n2);
        EXPECT_NEAR(IndependentSE(c.sd1, c.sd2, c.n1, c.n2), c.se, kTenPlaces);
        EXPECT_NEAR(result.t, c.t, kTenPlaces);
        EXPECT_EQ(result.df, c.df);
    }
}

TEST(TStatistics, RelatedWorkedValues) {
    struct Case {
        double m1, m2, sd1, sd2, r;
        std::int64_t n;
        double se, t;
        std::int64_t df;
    };
    const std::vector<Case> cases{
        {10, 8, 2, 3, 0.5, 10, 0.8366600265, 2.3904572187, 9},
        {10, 8, 2, 3, -0.5, 10, 1.3784048752, 1.4509525002, 9},
        {10, 8, -2, 3, 0.5, 10, 1.3784048752, 1.4509525002, 9},  // here the sign counts
        {10, 8, 2, 3, 1, 10, 0.3162277660, 6.3245553203, 9},
        {50, 47, 10, 10, 0.8, 25, 1.2649110641, 2.3717082451, 24},
        {12, 9, 2, 2, 0, 2, 2.0, 1.5, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.t);
        const TStatistic result = RelatedT(c.m1, c.m2, c.sd1, c.sd2, c.r, c.n);
        EXPECT_NEAR(RelatedSE(c.sd1, c.sd2, c.r, c.n), c.se, kTenPlaces);
        EXPECT_NEAR(result.t, c.t, kTenPlaces);
        EXPECT_EQ(result.df, c.df);
    }
}

TEST(ToN, TruncatesTowardZeroAndValuesNoInt64HoldsGiveNoN) {
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<double, std::int64_t>> cases{
        {12.7, 12},
        {1.9, 1},
        {9999.9, 9999},
        {-1.5, -1},
        {std::nextafter(9223372036854775808.0, 0.0), 9223372036854774784},
        {-9223372036854775808.0, std::numeric_limits<std::int64_t>::min()},
        {9223372036854775808.0, kNoN},
        {-1e300, kNoN},
        {inf, kNoN},
        {std::numeric_limits<double>::quiet_NaN(), kNoN}};
    for (const auto& [value, n] : cases) {
        EXPECT_EQ(ToN(value), n) << value;
    }
}

}  // namespace
}  // namespace korvane
