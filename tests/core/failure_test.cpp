#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/core/failure.h"
#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "tests/core/fake_objects.h"

namespace {

using platform::NilObjectException;
using platform::RuntimeException;

TEST(Failure, RaiseNilObjectExceptionAndNotNilOfNil) {
    try {
        platform::RaiseNilObjectException();
        ADD_FAILURE() << "nothing was raised";
    } catch (const RuntimeException& e) {
        EXPECT_STREQ(e.ClassName(), "NilObjectException");
        EXPECT_NE(dynamic_cast<const NilObjectException*>(&e), nullptr);
        EXPECT_EQ(e.Message(), "A nil object was used.");
    }
    int value = 3;
    EXPECT_EQ(&platform::NotNil(&value), &value);
    EXPECT_THROW(platform::NotNil(static_cast<int*>(nullptr)), NilObjectException);
}

// Counts what is held, so a test sees every hold released on a failure's way out.
struct HoldGuard {
    explicit HoldGuard(int& held) : held_(held) { ++held_; }
    ~HoldGuard() { --held_; }
    HoldGuard(const HoldGuard&) = delete;
    HoldGuard& operator=(const HoldGuard&) = delete;

  private:
    int& held_;
};

// Five steps; the third dereferences a nil reference.
struct FiveSteps {
    std::vector<int> done;
    int held = 0;
    fake::FakeControl* control = nullptr;  // a reference that turned out nil

    void Step(int step) {
        HoldGuard guard(held);
        if (step == 3) {
            platform::NotNil(control).SetLeft(3);
        }
        done.push_back(step);
    }
    void Run() {
        HoldGuard guard(held);
        for (int step = 1; step <= 5; ++step) {
            Step(step);
        }
    }
};

TEST(FailurePropagation, FirstFailureEndsTheOperationAndKeepsWhatWasDone) {
    FiveSteps operation;
    {
        HoldGuard outer(operation.held);
        EXPECT_THROW(operation.Run(), NilObjectException);
        EXPECT_EQ(operation.held, 1);  // only the caller's own hold is left
    }
    EXPECT_EQ(operation.done, (std::vector<int>{1, 2}));
    EXPECT_EQ(operation.held, 0);
}

// A failure that knows which object it is, and counts copies of itself.
class TrackedFailure : public RuntimeException {
  public:
    TrackedFailure() : RuntimeException("tracked") { last = this; }
    TrackedFailure(const TrackedFailure& other) : RuntimeException(other) { ++copies; }
    static inline const TrackedFailure* last = nullptr;
    static inline int copies = 0;
};

// A control whose third property's setter fails.
class FailingControl : public fake::FakeControl {
  public:
    static const platform::ClassInfo& StaticClass() {
        static const platform::ClassInfo info{
            "FailingControl",
            &FakeControl::StaticClass(),
            {platform::Property<&FailingControl::SetFuse>("Fuse")}};
        return info;
    }
    const platform::ClassInfo& Class() const override { return StaticClass(); }

    void SetFuse(std::int64_t) {
        HoldGuard guard(held);
        throw TrackedFailure();
    }
    int held = 0;
};

TEST(FailurePropagation, SameFailureObjectPassesThroughTheRecordReader) {
    using namespace platform::rec;
    constexpr auto record = PLATFORM_RECORD(Int("Left", 1), Int("Top", 2), Int("Fuse", 3),
                                            Int("Index", 4), Str("Text", "five"));
    FailingControl control;
    TrackedFailure::copies = 0;
    try {
        platform::ApplyRecord(control, record.view());
        ADD_FAILURE() << "the failure was lost";
    } catch (const RuntimeException& e) {
        EXPECT_EQ(&e, TrackedFailure::last);
        EXPECT_EQ(TrackedFailure::copies, 0);
    }
    EXPECT_EQ(control.applied, (std::vector<std::string>{"Left", "Top"}));
    EXPECT_EQ(control.state.left, 1);
    EXPECT_EQ(control.state.top, 2);
    EXPECT_EQ(control.state.index, 0);
    EXPECT_EQ(control.state.text, "");
    EXPECT_EQ(control.held, 0);
}

}  // namespace
