// A platform operation that fails, at every step of a whole run: start-up, the about window
// giving way, a refused and a good calculation, the information window, the close. The run is
// counted once without a fault (C user-interface operations); then for every N from 1 to C it is
// run again with the Nth operation failing, and each time:
//   - the failure reaches the platform's report once, and as raised;
//   - the failing operation ends there: nothing after the Nth operation runs before the report,
//     and the run ends with status 1;
//   - what was done before stays done: the log of writes is the fault-free log up to that point,
//     and the widgets show the last write the log holds for each of them;
//   - the run leaves no window behind (the sanitizer run checks every allocation besides).
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "app/startup.h"
#include "control/control_wnd.h"
#include "platform/core/recorder.h"
#include "platform/qt/fault_injection.h"
#include "platform/qt/runtime.h"
#include "tests/proof/program_run.h"
#include "windows/about_wnd.h"

namespace korvane::proof {
namespace {

struct Report {
    std::string className;
    std::string message;
};

Report Describe(std::exception_ptr failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const platform::RuntimeException& e) {
        return {e.ClassName(), e.Message()};
    } catch (const std::exception& e) {
        return {"std::exception", e.what()};
    }
}

// The widgets of the control window that disagree with the last write the log holds for them
// ("tfld.Text=+1.798", "n2fld.Visible=1", "rfld.Enabled=0").
std::vector<std::string> Disagreements(const std::vector<std::string>& log) {
    std::map<std::string, std::string> last;  // "tfld.Text" -> "+1.798"
    for (const std::string& line : log) {
        const auto equals = line.find('=');
        if (!line.starts_with("MsgBox:") && equals != std::string::npos) {
            last[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    std::vector<std::string> found;
    platform::Window* form = LivingWindow(ControlWnd::kClassName);
    for (const auto& [key, value] : last) {
        const auto dot = key.find('.');
        QWidget* widget = form != nullptr && dot != std::string::npos
                              ? ControlWidget(*form, key.substr(0, dot))
                              : nullptr;
        if (widget == nullptr) {
            continue;  // not a control of the control window
        }
        const std::string property = key.substr(dot + 1);
        bool agrees = true;
        if (property == "Visible") {
            agrees = widget->isHidden() == (value == "0");
        } else if (property == "Enabled") {
            agrees = widget->testAttribute(Qt::WA_ForceDisabled) == (value == "0");
        } else if (property == "Text") {
            auto* edit = qobject_cast<QLineEdit*>(widget);
            agrees = edit == nullptr || edit->text().toStdString() == value;
        }
        if (!agrees) {
            found.push_back(key + "=" + value);
        }
    }
    return found;
}

struct Outcome {
    int status = -1;
    std::vector<Report> reports;
    std::vector<std::string> log;            // the whole run's writes
    std::vector<std::string> logAtReport;    // the writes done when the failure was reported
    std::vector<std::string> disagreements;  // at the moment of the report
    std::uint64_t operations = 0;            // user-interface operations the run made
    std::uint64_t operationsAtReport = 0;
    std::vector<std::string> messages;
    std::string results;   // t, df and p as the fault-free run shows them
    int windowsLeft = -1;  // top-level widgets left after the run, beyond those before it
};

bool Failed(const Outcome& outcome) {
    return !outcome.reports.empty();
}

// The user's part of the run. Each step first looks whether the run has already failed: once
// the platform has reported a failure the run is ending, and a user has nothing left to press.
void UseTheCalculator(Outcome& outcome) {
    platform::Window* about = LivingWindow(AboutWnd::kClassName);
    if (Failed(outcome) || about == nullptr) {
        return;
    }
    PressKey(*about->Widget(), Qt::Key_Space);  // the about window gives way
    platform::Window* form = LivingWindow(ControlWnd::kClassName);
    if (Failed(outcome) || form == nullptr) {
        return;
    }
    ProcessUntil([&] { return Failed(outcome) || QApplication::activeWindow() == form->Widget(); });
    const auto press = [&](const char* control) {
        if (!Failed(outcome)) {
            ClickCentre(*ControlWidget(*form, control));
        }
    };
    const auto type = [&](const char* field, const char* text) {
        press(field);
        for (const char* key = text; *key != '\0' && !Failed(outcome); ++key) {
            QTest::keyClick(form->Widget()->windowHandle(), *key);
        }
    };
    press("CalcBtn");  // no test chosen yet: a message
    press("IBtn");
    type("m1fld", "10");
    type("m2fld", "8");
    type("sd1fld", "2");
    type("sd2fld", "3");
    type("n1fld", "10");
    type("n2fld", "12");
    press("CalcBtn");
    if (Failed(outcome)) {
        return;
    }
    const auto text = [&](const char* field) {
        return qobject_cast<QLineEdit*>(ControlWidget(*form, field))->text().toStdString();
    };
    outcome.results = text("tfld") + " " + text("dfFld") + " " + text("pfld");
    press("PushButton1");  // the information window comes up on the press
    if (!Failed(outcome)) {
        form->Widget()->close();  // the close button: the run ends with status 0
    }
}

Outcome RunWithFaultAt(std::uint64_t n) {
    Outcome outcome;
    const auto windowsBefore = static_cast<int>(QApplication::topLevelWidgets().size());
    platform::SetMessageBoxHook(
        [&outcome](const std::string& text) { outcome.messages.push_back(text); });
    platform::SetUnhandledExceptionHook([&outcome](std::exception_ptr failure) {
        outcome.reports.push_back(Describe(failure));
        outcome.operationsAtReport = platform::UITrapCallCount();
        outcome.logAtReport = platform::recorder::Lines();
        outcome.disagreements = Disagreements(outcome.logAtReport);
    });
    platform::recorder::Start();
    platform::InjectFaultAtCall(n);
    outcome.status = RunProgram([&outcome] { UseTheCalculator(outcome); });
    outcome.operations = platform::UITrapCallCount();
    platform::InjectFaultAtCall(0);
    platform::recorder::Stop();
    outcome.log = platform::recorder::Lines();
    platform::SetUnhandledExceptionHook({});
    platform::SetMessageBoxHook({});
    outcome.windowsLeft = static_cast<int>(QApplication::topLevelWidgets().size()) - windowsBefore;
    return outcome;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines) {
        all += "\n  " + line;
    }
    return all;
}

class FaultInjectionTest : public testing::Test {
  protected:
    // The first run of a process sets up what lives for the whole process (the appearance
    // observer, the pictures), so the runs compared here all come after one.
    static void SetUpTestSuite() { firstRunOperations = RunWithFaultAt(0).operations; }
    static inline std::uint64_t firstRunOperations = 0;
};

TEST_F(FaultInjectionTest, AFaultFreeRunCalculatesAndEndsWithStatusZeroTheSameWayEachTime) {
    const Outcome first = RunWithFaultAt(0);
    const Outcome second = RunWithFaultAt(0);
    EXPECT_EQ(first.status, 0);
    EXPECT_TRUE(first.reports.empty());
    EXPECT_EQ(first.results, "+1.798 20 .0873");
    EXPECT_EQ(first.messages,
              std::vector<std::string>{
                  "Select Independent or Related t-test and then enter appropriate data"});
    EXPECT_GT(first.operations, 300u);  // three windows, a menu bar, two calculations
    EXPECT_EQ(second.operations, first.operations);
    // Only the two operations of the observer's set-up are the first run's own; the test of a
    // fresh process below covers them.
    EXPECT_EQ(firstRunOperations, first.operations + 2);
    EXPECT_EQ(second.log, first.log);
    EXPECT_EQ(first.windowsLeft, 0);
}

// The failure is reported as soon as it has passed up through its callers, so the count of
// operations at the report tells whether anything of the failing handler ran after the fault.
// Once reported, the run is ending: the platform still delivers what is already queued until the
// loop ends, and those deliveries may do their own work, so only the report's moment is compared.
TEST_F(FaultInjectionTest, AFaultAtAnyOperationStopsThereKeepsWhatWasDoneAndIsReportedOnce) {
    const Outcome clean = RunWithFaultAt(0);
    ASSERT_EQ(clean.status, 0);
    std::size_t previousLog = 0;
    for (std::uint64_t n = 1; n <= clean.operations; ++n) {
        const Outcome run = RunWithFaultAt(n);
        SCOPED_TRACE("fault at user-interface operation " + std::to_string(n) + " of " +
                     std::to_string(clean.operations) +
                     "; writes before it:" + Joined(run.logAtReport));
        ASSERT_EQ(run.reports.size(), 1u);
        EXPECT_EQ(run.reports[0].className, "InjectedFault");
        EXPECT_EQ(run.reports[0].message,
                  "fault injected at user-interface operation " + std::to_string(n));
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.operationsAtReport, n) << "the failing handler went on after the fault";
        // Each operation writes at most one line, so the fault-free log up to here is exactly
        // what was done before the fault.
        ASSERT_LE(run.logAtReport.size(), clean.log.size());
        EXPECT_TRUE(std::equal(run.logAtReport.begin(), run.logAtReport.end(), clean.log.begin()));
        EXPECT_TRUE(run.logAtReport.size() == previousLog ||
                    run.logAtReport.size() == previousLog + 1)
            << "from " << previousLog << " lines to " << run.logAtReport.size();
        previousLog = run.logAtReport.size();
        EXPECT_TRUE(run.disagreements.empty())
            << "widgets that lost a write:" << Joined(run.disagreements);
        EXPECT_EQ(run.windowsLeft, 0);
        if (HasFailure()) {
            return;  // the first faulty N tells the story; the rest would repeat it
        }
    }
    // The last operation of the run writes nothing (the close), so every write was seen.
    EXPECT_EQ(previousLog, clean.log.size());
}

// The appearance observer is set up by the first application object of the process, during
// _NewAppInstance: faults there can happen only in a fresh process, so each runs in a child.
[[noreturn]] void FreshRunFailingInTheObserverSetUp(std::uint64_t n) {
    int reports = 0;
    platform::SetUnhandledExceptionHook([&reports](std::exception_ptr failure) {
        ++reports;
        const Report report = Describe(failure);
        std::fprintf(stderr, "reported: %s: %s\n", report.className.c_str(),
                     report.message.c_str());
    });
    korvane::SetStepHook([n](std::string_view step) {
        if (step == "_NewAppInstance") {
            platform::InjectFaultAtCall(n);
        }
    });
    const int status = korvane::Main();
    std::fprintf(stderr, "reports: %d, operations: %llu, status: %d\n", reports,
                 static_cast<unsigned long long>(platform::UITrapCallCount()), status);
    std::exit(status);
}

TEST(FaultInjectionFreshProcess, AFaultWhileTheFirstApplicationObjectIsMadeIsReportedOnce) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (std::uint64_t n : {1, 2}) {
        EXPECT_EXIT(FreshRunFailingInTheObserverSetUp(n), testing::ExitedWithCode(1),
                    "reported: InjectedFault: fault injected at user-interface operation " +
                        std::to_string(n) + "\nreports: 1, operations: " + std::to_string(n) +
                        ", status: 1")
            << "fault at operation " << n << " of _NewAppInstance";
    }
}

}  // namespace
}  // namespace korvane::proof
