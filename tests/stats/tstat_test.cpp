#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "stats/stats.h"

namespace korvane {
namespace {

// Worked values are given to ten places; within half a unit of the tenth place every
// shown digit is right.
constexpr double kTenPlaces = 5e-11;

struct IndependentCase {
    double m1, m2, sd1, sd2;
    std::int64_t n1, n2;
    double se, t;
    std::int64_t df;
};

TEST(IndependentT, WorkedValues) {
    const std::vector<IndependentCase> cases = {
        {10, 8, 2, 3, 10, 12, 1.1124297731, 1.7978662999, 20},
        {8, 10, 2, 3, 10, 12, 1.1124297731, -1.7978662999, 20},
        {100, 90, 15, 15, 30, 30, 3.8729833462, 2.5819888975, 58},
        {12, 9, 2, 2, 2, 2, 2.0, 1.5, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.t);
        const TStatistic result = IndependentT(c.m1, c.m2, c.sd1, c.sd2, c.n1, c.n2);
        EXPECT_NEAR(IndependentSE(c.sd1, c.sd2, c.n1, c.n2), c.se, kTenPlaces);
        EXPECT_NEAR(result.t, c.t, kTenPlaces);
        EXPECT_EQ(result.df, c.df);
    }
}

struct RelatedCase {
    double m1, m2, sd1, sd2, r;
    std::int64_t n1;
    double se, t;
    std::int64_t df;
};

TEST(RelatedT, WorkedValues) {
    const std::vector<RelatedCase> cases = {
        {10, 8, 2, 3, 0.5, 10, 0.8366600265, 2.3904572187, 9},
        {10, 8, 2, 3, -0.5, 10, 1.3784048752, 1.4509525002, 9},
        {10, 8, 2, 3, 1, 10, 0.3162277660, 6.3245553203, 9},
        {50, 47, 10, 10, 0.8, 25, 1.2649110641, 2.3717082451, 24},
        {12, 9, 2, 2, 0, 2, 2.0, 1.5, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.t);
        const TStatistic result = RelatedT(c.m1, c.m2, c.sd1, c.sd2, c.r, c.n1);
        EXPECT_NEAR(RelatedSE(c.sd1, c.sd2, c.r, c.n1), c.se, kTenPlaces);
        EXPECT_NEAR(result.t, c.t, kTenPlaces);
        EXPECT_EQ(result.df, c.df);
    }
}

TEST(TStatistics, DfAtTheEndsOfTheNRangeAndEqualMeansGivePositiveZero) {
    EXPECT_EQ(IndependentT(1, 0, 1, 1, 2, 2).df, 2);
    EXPECT_EQ(IndependentT(1, 0, 1, 1, 9999, 9999).df, 19996);
    EXPECT_EQ(RelatedT(1, 0, 1, 1, 0, 2).df, 1);
    EXPECT_EQ(RelatedT(1, 0, 1, 1, 0, 9999).df, 9998);
    for (double t : {IndependentT(5, 5, 2, 3, 10, 12).t, RelatedT(-5, -5, 2, 3, 0.5, 10).t}) {
        EXPECT_EQ(t, 0.0);
        EXPECT_FALSE(std::signbit(t));
    }
}

TEST(TStatistics, ZeroStandardErrorDividesAsIEEE) {
    EXPECT_TRUE(std::isfinite(IndependentT(10, 8, 0, 3, 10, 12).t));  // one zero SD is ordinary
    EXPECT_EQ(IndependentT(10, 8, 0, 0, 10, 12).t, HUGE_VAL);
    EXPECT_EQ(IndependentT(8, 10, 0, 0, 10, 12).t, -HUGE_VAL);
    EXPECT_TRUE(std::isnan(IndependentT(8, 8, 0, 0, 10, 12).t));
    EXPECT_EQ(RelatedT(10, 8, 3, 3, 1, 10).t, HUGE_VAL);
    EXPECT_TRUE(std::isnan(RelatedT(8, 8, 3, 3, 1, 10).t));
}

TEST(TStatistics, SignOfAStandardDeviation) {
    // Squared away in the independent test; in the related test it enters through r.
    EXPECT_EQ(IndependentT(10, 8, -2, 3, 10, 12).t, IndependentT(10, 8, 2, 3, 10, 12).t);
    EXPECT_NEAR(RelatedT(10, 8, -2, 3, 0.5, 10).t, 1.4509525002, kTenPlaces);
}

TEST(TStatistics, CorrelationOrdersTheRelatedStandardError) {
    const double lowest = RelatedSE(2, 3, 1, 10);
    const double middle = RelatedSE(2, 3, 0, 10);
    const double highest = RelatedSE(2, 3, -1, 10);
    EXPECT_LT(lowest, middle);
    EXPECT_LT(middle, highest);
    EXPECT_NEAR(highest, std::sqrt(25.0 / 10.0), 1e-15);  // (sd1 + sd2)^2 / N
}

TEST(ToN, TruncatesTowardZeroAndValuesNoInt64HoldsComeOutBelowEveryN) {
    // clang-format off
    const std::vector<std::pair<double, std::int64_t>> cases = {
        {12.7, 12}, {2.9, 2}, {1.9, 1}, {9999.9, 9999}, {-1.5, -1}, {-0.0, 0},
        {std::nextafter(9223372036854775808.0, 0.0), 9223372036854774784},
        {-9223372036854775808.0, std::numeric_limits<std::int64_t>::min()}};
    // clang-format on
    for (const auto& [value, n] : cases) {
        EXPECT_EQ(ToN(value), n) << value;
    }
    for (double value : {9223372036854775808.0, 1e300, -1e300, HUGE_VAL, -HUGE_VAL,
                         std::numeric_limits<double>::quiet_NaN()}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(ToN(value), kNoN);
        EXPECT_LT(ToN(value), 2);
    }
}

}  // namespace
}  // namespace korvane
