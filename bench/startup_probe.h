// What the two start-up benchmarks share: the time since the process started and the resident
// memory, read the same way in both.
//
// A process cannot see its own start to the microsecond (the kernel keeps it in clock ticks), so
// each benchmark program starts itself once more: the first process notes the time in
// KORVANE_BENCH_T0 and execs the same program, whose start-up (loading Qt, making the
// application, the first window) is then timed from that note.
#pragma once

#include <unistd.h>
#include <QEvent>
#include <QObject>
#include <QWindow>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>

namespace bench {

inline long long NowNs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

// In the first process: notes the time and becomes the measured process. Returns in that one.
inline void StartTheClock(char** argv) {
    if (std::getenv("KORVANE_BENCH_T0") != nullptr) {
        return;
    }
    setenv("KORVANE_BENCH_T0", std::to_string(NowNs()).c_str(), 1);
    execv("/proc/self/exe", argv);
    std::perror("execv");
    std::exit(2);
}

inline double MillisecondsSinceStart() {
    return static_cast<double>(NowNs() - std::atoll(std::getenv("KORVANE_BENCH_T0"))) / 1e6;
}

// Resident memory in KiB, from /proc/self/statm.
inline long ResidentKiB() {
    long pages = 0;
    long resident = 0;
    if (FILE* statm = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) {
            resident = 0;
        }
        std::fclose(statm);
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// Calls `exposed` for each window of the application the first time the display server shows
// it (its first Expose with the window exposed), before the window paints.
class ExposeProbe : public QObject {
  public:
    explicit ExposeProbe(std::function<void(QWindow&)> exposed) : exposed_(std::move(exposed)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Expose) {
            auto* window = qobject_cast<QWindow*>(watched);
            if (window != nullptr && window->isExposed() &&
                !window->property("korvaneBenchSeen").toBool()) {
                window->setProperty("korvaneBenchSeen", true);
                exposed_(*window);
            }
        }
        return false;
    }

  private:
    std::function<void(QWindow&)> exposed_;
};

// The line the script reads.
inline void Report(double shownMs, long residentKiB, int width, int height) {
    std::printf("shown_ms=%.2f rss_kib=%ld window=%dx%d\n", shownMs, residentKiB, width, height);
    std::fflush(stdout);
}

}  // namespace bench
