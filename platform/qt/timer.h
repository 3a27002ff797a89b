// The one control without a place on the window: a timer.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/qt/control.h"

class QTimer;

namespace platform {

// A non-visual control. RunMode 0 is off, 1 fires once Period ms after it is started, 2 fires
// every Period ms. Setting RunMode to 1 or 2 starts it; Reset starts the count again.
class Timer : public Classed<Timer, Control> {
  public:
    Timer();
    ~Timer() override;
    // Period, RunMode (alias Mode).
    static const ClassInfo& StaticClass();
    void Mode(std::int64_t mode);
    std::int64_t Mode() const;
    void Period(std::int64_t milliseconds);
    std::int64_t Period() const;
    void Reset();
    bool Armed() const;  // a firing is pending
    std::function<void(Timer&)> Action;

    void SetMode(std::int64_t v) { Mode(v); }
    void SetPeriod(std::int64_t v) { Period(v); }

  private:
    std::unique_ptr<QTimer> timer_;
    std::int64_t mode_ = 0;
};

}  // namespace platform
