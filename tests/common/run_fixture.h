// The start of every window test: no windows and no pending quit, failures that escape a handler
// collected (as the test program describes them), message boxes answered by collecting their
// text; and the same again at the end, so that no test sees another's windows or hooks.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace testing_support {

class RunFixture : public ::testing::Test {
  protected:
    using DescribeFailure = std::string (*)(std::exception_ptr failure);
    explicit RunFixture(DescribeFailure describe) : describe_(describe) {}

    void SetUp() override {
        platform::_RuntimeResetRun();
        platform::SetUnhandledExceptionHook(
            [this](std::exception_ptr failure) { failures.push_back(describe_(failure)); });
        platform::SetMessageBoxHook([this](const std::string& text) { messages.push_back(text); });
    }

    void TearDown() override {
        platform::DestroyAllWindows();
        platform::SetMessageBoxHook({});
        platform::SetUnhandledExceptionHook({});
        platform::_RuntimeResetRun();
    }

    std::vector<std::string> failures;
    std::vector<std::string> messages;

  private:
    DescribeFailure describe_;
};

}  // namespace testing_support
