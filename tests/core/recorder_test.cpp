#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/core/recorder.h"

namespace {

namespace recorder = platform::recorder;
using Lines = std::vector<std::string>;

TEST(Recorder, LogsInOrderOnlyWhileOn) {
    recorder::Stop();
    recorder::Note("before");
    recorder::Start();
    EXPECT_TRUE(recorder::On());
    EXPECT_EQ(recorder::Lines(), Lines{});  // Start clears, and nothing was noted while off

    recorder::Note("m1fld.Visible=1");
    recorder::Note("m1fld.SetFocus");
    recorder::Stop();
    recorder::Note("Beep");
    EXPECT_FALSE(recorder::On());
    EXPECT_EQ(recorder::Lines(), (Lines{"m1fld.Visible=1", "m1fld.SetFocus"}));

    recorder::Start();
    recorder::Note("Beep");
    EXPECT_EQ(recorder::Lines(), Lines{"Beep"});
    recorder::Stop();
}

}  // namespace
