#include "platform/core/text.h"
#include "stats/stats.h"

namespace korvane::ProbModule {

namespace {

// 1 - 0.36338023 = 0.63661977, 2/pi to eight places. Kept in this form: an exact 2/pi would
// move p for odd df by up to 3.72e-9.
constexpr double kOddScale = 0.36338023;
// Below this |t| the probability is taken as kNearOne without the series.
constexpr double kSmallT = 9e-05;
constexpr double kNearOne = 0.99999;

}  // namespace

// The closed trigonometric series for Student's t with whole df. With theta = atan(t/sqrt(df)):
//   even df:  a = sin(theta) * (1 + 1/2 c^2 + 1*3/(2*4) c^4 + ...), last power c^(df-2)
//   odd df:   a = (2/pi) * (theta + s*c * (1 + 2/3 c^2 + 2*4/(3*5) c^4 + ...)), last c^(df-3)
// and p = 1 - a. Each step is kept in the order written; the digits depend on it.
void tprob() {
    using namespace platform;

    Globals::p = 0.0;
    Globals::t = Abs(Globals::t);
    const double t = Globals::t;
    const std::int64_t df = Globals::k1;

    const double theta = ATan(t / Sqrt(static_cast<double>(df)));
    const double s = Sin(theta);
    const double c = Cos(theta);
    const auto parity = static_cast<std::int64_t>(static_cast<double>(df) -
                                                  2.0 * Floor(static_cast<double>(df) / 2.0));

    double a = 0.0;
    double b = 0.0;
    std::int64_t i = 0;
    std::int64_t j = 0;
    std::int64_t n = 0;
    if (parity == 0) {
        a = s;
        if (df != 2) {
            b = s;
            i = -1;
            j = 0;
            n = static_cast<std::int64_t>(static_cast<double>(df - 2) / 2.0);
        }
    } else {
        a = theta;
        if (df != 1) {
            b = s * c;
            a = b + a;
            if (df != 3) {
                i = 0;
                j = 1;
                n = static_cast<std::int64_t>(static_cast<double>(df - 3) / 2.0);
            }
        }
    }

    for (std::int64_t turn = 1; turn <= n; ++turn) {
        i = i + 2;
        j = j + 2;
        b = (((b * c) * c) * static_cast<double>(i)) / static_cast<double>(j);
        a = b + a;
        RuntimeBackgroundTask();
    }

    // Even df leaves a as it is; skipping this for df 2 would change nothing.
    a = (1.0 - static_cast<double>(parity) * kOddScale) * a;

    Globals::p = 0.5 * (1.0 + a);
    Globals::p = (1.0 - Globals::p) * 2.0;
    if (kSmallT > t) {
        Globals::p = kNearOne;
    }
}

}  // namespace korvane::ProbModule
