// tprob at several df, the same series loop bare of its yield (the machine's limit for this
// chain of dependent multiplications and divisions), and the whole Calculate command at the
// largest df through the map-backed panel.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>

#include "stats/stats.h"
#include "tests/stats/map_panel.h"

namespace {

using namespace korvane;

constexpr double kT = 1.96;

void BM_tprob(benchmark::State& state) {
    const auto df = static_cast<std::int64_t>(state.range(0));
    for (auto _ : state) {
        Globals::t = kT;
        Globals::k1 = df;
        ProbModule::tprob();
        benchmark::DoNotOptimize(Globals::p);
    }
}
BENCHMARK(BM_tprob)->Arg(1)->Arg(2)->Arg(20)->Arg(1000)->Arg(19996);

// The even-df series of tprob, term for term, without RuntimeBackgroundTask.
double BareSeries(double s, double c, std::int64_t n) {
    double a = s;
    double b = s;
    std::int64_t i = -1;
    std::int64_t j = 0;
    for (std::int64_t turn = 1; turn <= n; ++turn) {
        i = i + 2;
        j = j + 2;
        b = (((b * c) * c) * static_cast<double>(i)) / static_cast<double>(j);
        a = b + a;
    }
    return a;
}

void BM_BareLoop(benchmark::State& state) {
    const auto df = static_cast<std::int64_t>(state.range(0));
    const double theta = std::atan(kT / std::sqrt(static_cast<double>(df)));
    const std::int64_t n = (df - 2) / 2;
    for (auto _ : state) {
        double s = std::sin(theta);
        double c = std::cos(theta);
        benchmark::DoNotOptimize(s);
        benchmark::DoNotOptimize(c);
        double a = BareSeries(s, c, n);
        benchmark::DoNotOptimize(a);
    }
}
BENCHMARK(BM_BareLoop)->Arg(19996);

void BM_Calculate(benchmark::State& state) {
    korvane::testing::MapPanel panel({{"m1fld", "3.2"},
                                      {"m2fld", "3.1"},
                                      {"sd1fld", ".4"},
                                      {"sd2fld", ".5"},
                                      {"n1fld", "9999"},
                                      {"n2fld", "9999"}});
    Globals::btn = 1;
    for (auto _ : state) {
        panel.calls.clear();
        CalcBtn_Action(panel);
    }
    if (panel.texts["dfFld"] != "19996") {
        state.SkipWithError("the command did not reach df 19996");
    }
}
BENCHMARK(BM_Calculate)->Unit(benchmark::kMicrosecond);

}  // namespace
