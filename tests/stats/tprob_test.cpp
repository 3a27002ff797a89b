#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "platform/core/text.h"
#include "stats/stats.h"

namespace korvane {
namespace {

struct Outcome {
    double p;
    std::uint64_t yields;  // how many times the series loop yielded
};

Outcome Probability(double t, std::int64_t df) {
    Globals::t = t;
    Globals::k1 = df;
    const std::uint64_t before = platform::gBackgroundTaskCount;
    ProbModule::tprob();
    return {Globals::p, platform::gBackgroundTaskCount - before};
}

TEST(Tprob, WorkedValuesToTenPlacesWithOneYieldPerSeriesTerm) {
    struct Case {
        double t;
        std::int64_t df;
        double p;
        std::uint64_t yields;
    };
    const std::vector<Case> cases{
        {1, 1, 0.5000000019, 0},
        {1, 2, 0.4226497308, 0},
        {1, 3, 0.3910022212, 0},
        {1, 4, 0.3739009663, 1},
        {1, 5, 0.3632174700, 1},
        {2, 7, 0.0856193320, 2},
        {2, 8, 0.0805162380, 3},
        {2.228, 10, 0.0500117718, 4},
        {-1.7978662999, 20, 0.0873128276, 9},
        {12.706, 1, 0.0500008059, 0},
        {1.96, 19996, 0.0500096578, 9997},
        {0.00009, 10, 0.9999299605, 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << "t=" << c.t << " df=" << c.df);
        const Outcome outcome = Probability(c.t, c.df);
        EXPECT_NEAR(outcome.p, c.p, 5e-11);
        EXPECT_EQ(outcome.yields, c.yields);
        EXPECT_EQ(Globals::t, std::abs(c.t));  // tprob leaves |t|
    }
}

// Below |t| = .00009 the series is skipped (after its loop ran) and p is .99999.
TEST(Tprob, SmallTGivesNearlyOne) {
    for (std::int64_t df : {1, 2, 10, 19996}) {
        for (double t : {0.0, 0.00008, -0.00008, std::nextafter(9e-05, 0.0)}) {
            EXPECT_EQ(Probability(t, df).p, 0.99999) << t << " df " << df;
        }
        EXPECT_NE(Probability(9e-05, df).p, 0.99999) << df;
    }
}

// df 2 and 4 have closed forms; df 1 is exactly 1 - (2/pi) atan(t), which the eight-place
// constant of the series overshoots by less than 3.72e-9.
TEST(Tprob, AgreesWithTheClosedForms) {
    for (double t : {0.1, 1.0, 4.303, 100.0}) {
        SCOPED_TRACE(t);
        EXPECT_NEAR(Probability(t, 2).p, 1.0 - t / std::sqrt(t * t + 2.0), 1e-13);
        const double s = t / std::sqrt(t * t + 4.0);
        EXPECT_NEAR(Probability(t, 4).p, 1.0 - s * (1.0 + 2.0 / (t * t + 4.0)), 1e-13);
        const double excess = Probability(t, 1).p - (1.0 - 2.0 / std::numbers::pi * std::atan(t));
        EXPECT_GT(excess, 0.0);
        EXPECT_LT(excess, 3.72e-9);
    }
}

TEST(Tprob, HugeTLevelsOutForOddDfAndReachesZeroForEven) {
    for (double t : {1e300, std::numeric_limits<double>::infinity()}) {
        for (std::int64_t df : {1, 3, 9999}) {
            EXPECT_NEAR(Probability(t, df).p, 3.7189882e-9, 1e-16) << df;
        }
        for (std::int64_t df : {2, 20, 19996}) {
            EXPECT_EQ(Probability(t, df).p, 0.0) << df;
        }
    }
    EXPECT_TRUE(std::isnan(Probability(std::numeric_limits<double>::quiet_NaN(), 9).p));
}

}  // namespace
}  // namespace korvane
