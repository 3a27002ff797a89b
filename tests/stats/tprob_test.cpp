#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "platform/core/text.h"
#include "stats/stats.h"

namespace korvane {
namespace {

// The probability of tprob for t and df, and how many times its loop yielded.
struct Outcome {
    double p;
    std::uint64_t yields;
};

Outcome Probability(double t, std::int64_t df) {
    Globals::t = t;
    Globals::k1 = df;
    const std::uint64_t before = platform::gBackgroundTaskCount;
    ProbModule::tprob();
    return {Globals::p, platform::gBackgroundTaskCount - before};
}

struct WorkedCase {
    double t;
    std::int64_t df;
    double p;
    std::uint64_t iterations;
};

TEST(Tprob, WorkedValuesToTenPlaces) {
    const std::vector<WorkedCase> cases = {
        {1, 1, 0.5000000019, 0},
        {1, 2, 0.4226497308, 0},
        {1, 3, 0.3910022212, 0},
        {1, 4, 0.3739009663, 1},
        {1, 5, 0.3632174700, 1},
        {2, 7, 0.0856193320, 2},
        {2, 8, 0.0805162380, 3},
        {2, 9, 0.0765528272, 3},
        {2, 10, 0.0733880348, 4},
        {2.228, 10, 0.0500117718, 4},
        {1.7978662999, 20, 0.0873128276, 9},
        {-1.7978662999, 20, 0.0873128276, 9},
        {2.3904572187, 9, 0.0405270042, 3},
        {12.706, 1, 0.0500008059, 0},
        {1.96, 19996, 0.0500096578, 9997},
        {0.00009, 10, 0.9999299605, 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "t=" << c.t << " df=" << c.df);
        const Outcome outcome = Probability(c.t, c.df);
        EXPECT_NEAR(outcome.p, c.p, 5e-11);
        EXPECT_EQ(outcome.yields, c.iterations);
    }
}

TEST(Tprob, OneYieldPerSeriesTerm) {
    const std::vector<std::pair<std::int64_t, std::uint64_t>> iterations = {
        {1, 0}, {2, 0}, {3, 0}, {4, 1}, {5, 1}, {6, 2}, {7, 2}, {19995, 9996}, {19996, 9997},
    };
    for (const auto& [df, expected] : iterations) {
        SCOPED_TRACE(df);
        EXPECT_EQ(Probability(1.5, df).yields, expected);
        EXPECT_EQ(Probability(0.0, df).yields, expected);  // the threshold comes after the loop
    }
}

TEST(Tprob, SmallTGivesNearlyOne) {
    for (std::int64_t df : {1, 2, 3, 10, 19996}) {
        SCOPED_TRACE(df);
        EXPECT_EQ(Probability(0.0, df).p, 0.99999);
        EXPECT_EQ(Probability(0.00008, df).p, 0.99999);
        EXPECT_EQ(Probability(-0.00008, df).p, 0.99999);
        EXPECT_EQ(Probability(std::nextafter(9e-05, 0.0), df).p, 0.99999);
        // The threshold itself already gets the series.
        EXPECT_NE(Probability(9e-05, df).p, 0.99999);
    }
    EXPECT_EQ(Probability(0.00008, 10).p, 0.99999);
}

TEST(Tprob, SignOfTDoesNotMatterAndIsDroppedSoARepeatedCallAgrees) {
    for (std::int64_t df : {1, 4, 9, 20}) {
        SCOPED_TRACE(df);
        const double positive = Probability(2.5, df).p;
        EXPECT_EQ(Probability(-2.5, df).p, positive);
        EXPECT_EQ(Globals::t, 2.5);
        ProbModule::tprob();  // a repeated call on |t| agrees
        EXPECT_EQ(Globals::p, positive);
    }
}

TEST(Tprob, EvenDfAgreesWithItsClosedForm) {
    // df 2: p = 1 - t / sqrt(t^2 + 2); df 4: p = 1 - s (1 + c^2 / 2), s = t / sqrt(t^2 + 4).
    for (double t : {0.1, 0.5, 1.0, 2.0, 4.303, 10.0, 100.0}) {
        SCOPED_TRACE(t);
        EXPECT_NEAR(Probability(t, 2).p, 1.0 - t / std::sqrt(t * t + 2.0), 1e-13);
        const double s = t / std::sqrt(t * t + 4.0);
        const double c2 = 4.0 / (t * t + 4.0);
        EXPECT_NEAR(Probability(t, 4).p, 1.0 - s * (1.0 + c2 / 2.0), 1e-13);
    }
}

TEST(Tprob, OddDfLiesJustAboveTheExactValue) {
    // df 1 is the Cauchy case: exactly 1 - (2/pi) atan(t). The eight-place constant puts p
    // above it by a * 3.72e-9 at most.
    for (double t : {0.001, 0.5, 1.0, 6.314, 63.66, 1e4}) {
        SCOPED_TRACE(t);
        const double exact = 1.0 - 2.0 / std::numbers::pi * std::atan(t);
        const double excess = Probability(t, 1).p - exact;
        EXPECT_GT(excess, 0.0);
        EXPECT_LT(excess, 3.73e-9);
    }
}

TEST(Tprob, LargeTLevelsOutForOddDfAndReachesZeroForEvenAndNaNStaysNaN) {
    const double inf = std::numeric_limits<double>::infinity();
    for (double t : {1e300, inf}) {
        for (std::int64_t df : {1, 3, 5, 9999}) {
            SCOPED_TRACE(::testing::Message() << "t=" << t << " df=" << df);
            EXPECT_NEAR(Probability(t, df).p, 3.7189882e-9, 1e-16);
        }
        for (std::int64_t df : {2, 4, 20, 19996}) {
            SCOPED_TRACE(::testing::Message() << "t=" << t << " df=" << df);
            EXPECT_EQ(Probability(t, df).p, 0.0);
        }
    }
    for (std::int64_t df : {20, 9}) {
        EXPECT_TRUE(std::isnan(Probability(std::numeric_limits<double>::quiet_NaN(), df).p));
    }
}

}  // namespace
}  // namespace korvane
