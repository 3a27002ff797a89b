#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/core/object.h"
#include "platform/core/recorder.h"
#include "tests/core/fake_objects.h"

namespace {

using fake::FakeControl;
using fake::FakeLabel;

TEST(RuntimeCheckCast, NilWrongClassAndRightClass) {
    EXPECT_THROW(platform::RuntimeCheckCast<FakeLabel>(nullptr), platform::NilObjectException);
    fake::FakeRadio radio;
    try {
        platform::RuntimeCheckCast<FakeLabel>(&radio);
        ADD_FAILURE() << "a radio was cast to a label";
    } catch (const platform::IllegalCastException& e) {
        EXPECT_EQ(std::string(e.what()), "FakeRadio is no FakeLabel");
    }
    FakeLabel label;
    platform::Object* asObject = &label;
    EXPECT_EQ(&platform::RuntimeCheckCast<FakeControl>(asObject), &label);  // a base class too
}

TEST(NotNil, GivesTheObjectOrRaisesTheNilFailure) {
    int value = 3;
    EXPECT_EQ(&platform::NotNil(&value), &value);
    try {
        platform::NotNil(static_cast<int*>(nullptr));
        ADD_FAILURE() << "nothing was raised";
    } catch (const platform::NilObjectException& e) {
        EXPECT_STREQ(e.ClassName(), "NilObjectException");
        EXPECT_EQ(e.Message(), "A nil object was used.");
    }
}

TEST(WeakRef, ReadsNilOnceTheObjectIsGone) {
    EXPECT_EQ(platform::WeakRef().Value(), nullptr);
    auto label = std::make_unique<FakeLabel>();
    const platform::WeakRef ref(label.get());
    const platform::WeakRef copy = ref;
    EXPECT_EQ(ref.Value(), label.get());
    label.reset();
    EXPECT_EQ(ref.Value(), nullptr);
    EXPECT_EQ(copy.Value(), nullptr);
}

TEST(Recorder, LogsInOrderOnlyWhileOn) {
    namespace recorder = platform::recorder;
    using Lines = std::vector<std::string>;
    recorder::Stop();
    recorder::Note("before");
    recorder::Start();
    EXPECT_EQ(recorder::Lines(), Lines{});  // nothing was noted while off
    recorder::Note("m1fld.Visible=1");
    recorder::Note("m1fld.SetFocus");
    recorder::Stop();
    recorder::Note("Beep");
    EXPECT_EQ(recorder::Lines(), (Lines{"m1fld.Visible=1", "m1fld.SetFocus"}));
    recorder::Start();
    EXPECT_EQ(recorder::Lines(), Lines{});  // Start clears
    recorder::Stop();
}

}  // namespace
