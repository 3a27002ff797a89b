#include "platform/qt/timer.h"

#include <QTimer>
#include <algorithm>

#include "platform/qt/runtime.h"

namespace platform {

Timer::Timer() : timer_(std::make_unique<QTimer>()) {
    timer_->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] {
        if (mode_ == 1) {
            mode_ = 0;  // a single firing is spent
            timer_->stop();
        }
        if (Action) {
            ProtectedCall([this] { Action(*this); });
        }
    });
}

Timer::~Timer() = default;

const ClassInfo& Timer::StaticClass() {
    static const ClassInfo info{"Timer",
                                &Control::StaticClass(),
                                {
                                    Property<&Timer::SetPeriod>("Period"),
                                    Property<&Timer::SetMode>("RunMode"),
                                    Property<&Timer::SetMode>("Mode"),
                                }};
    return info;
}

// Setting another mode starts the count anew (or stops it); setting the same mode changes nothing.
void Timer::Mode(std::int64_t mode) {
    _UITrap();
    mode = std::clamp<std::int64_t>(mode, 0, 2);
    if (mode == mode_) {
        return;
    }
    mode_ = mode;
    if (mode_ == 0) {
        timer_->stop();
        return;
    }
    timer_->setSingleShot(mode_ == 1);
    timer_->start();
}

std::int64_t Timer::Mode() const {
    return mode_;
}

// A running timer starts its count again with the new period.
void Timer::Period(std::int64_t milliseconds) {
    _UITrap();
    timer_->setInterval(static_cast<int>(std::clamp<std::int64_t>(milliseconds, 0, INT32_MAX)));
}

std::int64_t Timer::Period() const {
    return timer_->interval();
}

void Timer::Reset() {
    _UITrap();
    if (mode_ != 0) {
        timer_->start();
    }
}

bool Timer::Armed() const {
    return timer_->isActive();
}

}  // namespace platform
