// The start of every window test: no windows and no pending quit, failures that escape a handler
// collected (a platform exception by its class name, another by its text), message boxes
// answered by collecting their text; and the same again at the end, so that no test sees
// another's windows or hooks.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/core/failure.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace testing_support {

class RunFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::_RuntimeResetRun();
        platform::SetUnhandledExceptionHook(
            [this](std::exception_ptr failure) { failures.push_back(FailureText(failure)); });
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
    static std::string FailureText(std::exception_ptr failure) {
        try {
            std::rethrow_exception(failure);
        } catch (const platform::RuntimeException& e) {
            return e.ClassName();
        } catch (const std::exception& e) {
            return e.what();
        } catch (...) {
            return "other";
        }
    }
};

}  // namespace testing_support
