// The arithmetic of the engine: the two t statistics and the two-tailed probability of t.
// Worked values are given to ten places; within half a unit of the tenth place every shown
// digit is right.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

#include "platform/core/text.h"
#include "stats/stats.h"

namespace korvane {
namespace {

constexpr double kTenPlaces = 5e-11;

TEST(TStatistics, WorkedValues) {
    constexpr bool kRelated = true, kIndependent = false;
    struct Case {
        bool related;
        double m1, m2, sd1, sd2, n2OrR;
        std::int64_t n1;
        double se, t;
        std::int64_t df;
    };
    // clang-format off
    const std::vector<Case> cases{
        {kIndependent, 10, 8, 2, 3, 12, 10, 1.1124297731, 1.7978662999, 20},
        {kIndependent, 8, 10, -2, 3, 12, 10, 1.1124297731, -1.7978662999, 20},  // -2 squares away
        {kIndependent, 100, 90, 15, 15, 30, 30, 3.8729833462, 2.5819888975, 58},
        {kIndependent, 12, 9, 2, 2, 2, 2, 2.0, 1.5, 2},
        {kRelated, 10, 8, 2, 3, 0.5, 10, 0.8366600265, 2.3904572187, 9},
        {kRelated, 10, 8, 2, 3, -0.5, 10, 1.3784048752, 1.4509525002, 9},
        {kRelated, 10, 8, -2, 3, 0.5, 10, 1.3784048752, 1.4509525002, 9},  // here the sign counts
        {kRelated, 10, 8, 2, 3, 1, 10, 0.3162277660, 6.3245553203, 9},
        {kRelated, 50, 47, 10, 10, 0.8, 25, 1.2649110641, 2.3717082451, 24},
        {kRelated, 12, 9, 2, 2, 0, 2, 2.0, 1.5, 1}};
    // clang-format on
    for (const Case& c : cases) {
        const auto n2 = static_cast<std::int64_t>(c.n2OrR);
        const TStatistic result = c.related ? RelatedT(c.m1, c.m2, c.sd1, c.sd2, c.n2OrR, c.n1)
                                            : IndependentT(c.m1, c.m2, c.sd1, c.sd2, c.n1, n2);
        const double se = c.related ? RelatedSE(c.sd1, c.sd2, c.n2OrR, c.n1)
                                    : IndependentSE(c.sd1, c.sd2, c.n1, n2);
        EXPECT_NEAR(se, c.se, kTenPlaces) << c.t;
        EXPECT_NEAR(result.t, c.t, kTenPlaces);
        EXPECT_EQ(result.df, c.df) << c.t;
    }
}

// tprob takes t and df through Globals and yields once per term of its series.
double Probability(double t, std::int64_t df, std::uint64_t& yields) {
    Globals::t = t;
    Globals::k1 = df;
    const std::uint64_t before = platform::gBackgroundTaskCount;
    ProbModule::tprob();
    yields = platform::gBackgroundTaskCount - before;
    return Globals::p;
}

TEST(Tprob, WorkedValuesWithOneYieldPerSeriesTerm) {
    // clang-format off
    const std::tuple<double, std::int64_t, double, std::uint64_t> cases[] = {
        {1, 1, 0.5000000019, 0}, {1, 2, 0.4226497308, 0}, {1, 3, 0.3910022212, 0},
        {1, 4, 0.3739009663, 1}, {1, 5, 0.3632174700, 1}, {2, 7, 0.0856193320, 2},
        {2, 8, 0.0805162380, 3}, {2.228, 10, 0.0500117718, 4}, {12.706, 1, 0.0500008059, 0},
        {-1.7978662999, 20, 0.0873128276, 9}, {1.96, 19996, 0.0500096578, 9997},
        {0.00009, 10, 0.9999299605, 4}, {-0.00009, 19996, 0.9999281913, 9997},
        // Below |t| = .00009 the series is skipped after its loop ran: p is .99999.
        {0.0, 1, 0.99999, 0}, {0.00008, 10, 0.99999, 4}, {-0.0000899, 19996, 0.99999, 9997}};
    // clang-format on
    for (const auto& [t, df, p, wantedYields] : cases) {
        std::uint64_t yields = 0;
        EXPECT_NEAR(Probability(t, df, yields), p, kTenPlaces) << t << " df " << df;
        EXPECT_EQ(yields, wantedYields) << t << " df " << df;
        EXPECT_EQ(Globals::t, std::abs(t));  // tprob leaves |t|
    }
}

}  // namespace
}  // namespace korvane
