// A platform operation that fails, at every step of a whole run: start-up, the about window
// giving way, a refused and a good calculation, the information window, the close. The run is
// counted once without a fault (C user-interface operations); then for every N from 1 to C it
// is run again with the Nth operation failing. Each time the failure is reported once, nothing
// after the Nth operation runs before the report, what was done before stays done (the log is
// the fault-free log up to there, the widgets show its last writes), and the run ends with
// status 1, leaving no window behind.
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "control/control_wnd.h"
#include "platform/core/recorder.h"
#include "platform/qt/fault_injection.h"
#include "platform/qt/runtime.h"
#include "stats/messages.h"
#include "tests/proof/program_run.h"
#include "windows/about_wnd.h"

namespace korvane::proof {
namespace {

using Lines = std::vector<std::string>;

struct Outcome {
    int status = -1;
    Lines reports, messages;  // reports: "Class: message"
    Lines log;                // the writes done when the failure came, or in the whole run
    Lines lostWrites;         // writes done at the report that the widgets no longer show
    std::uint64_t operations = 0, operationsAtReport = 0;
    long windowsLeft = -1;
};

// The last writes of the log ("tfld.Text=+1.798", "n2fld.Visible=1") that the control window's
// widgets do not show; a write to a property no widget has is taken as shown.
Lines LostWrites(const Lines& log) {
    std::map<std::string, std::string> last;  // "tfld.Text" -> "+1.798"
    for (const std::string& line : log) {
        if (!line.starts_with("MsgBox:") && line.find('=') != std::string::npos) {
            last[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
        }
    }
    Lines lost;
    platform::Window* form = LivingWindow(ControlWnd::kClassName);
    for (const auto& [key, value] : last) {
        const std::string property = key.substr(key.find('.') + 1);
        QWidget* widget =
            form != nullptr ? ControlWidget(*form, key.substr(0, key.find('.'))) : nullptr;
        auto* edit = qobject_cast<QLineEdit*>(widget);
        std::string shown = value;
        if (widget != nullptr && (property == "Visible" || property == "Enabled")) {
            const bool off = property == "Visible" ? widget->isHidden()
                                                   : widget->testAttribute(Qt::WA_ForceDisabled);
            shown = std::string(1, off ? '0' : '1');
        } else if (property == "Text" && edit != nullptr) {
            shown = edit->text().toStdString();
        }
        if (shown != value) {
            lost.push_back(key + "=" + value);
        }
    }
    return lost;
}

// The user's part of the run. Once the platform has reported a failure the run is ending, and a
// user has nothing left to press; should the about window not give way, the run is ended here.
void UseTheCalculator(Outcome& outcome) {
    const auto failed = [&] { return !outcome.reports.empty(); };
    platform::Window* about = LivingWindow(AboutWnd::kClassName);
    if (failed() || about == nullptr) {
        return;
    }
    QTest::keyClick(about->Widget()->windowHandle(), Qt::Key_Space);
    platform::Window* form = LivingWindow(ControlWnd::kClassName);
    if (!failed() && (form == nullptr || about->Widget()->isVisible())) {
        outcome.reports.push_back("a key press left the about window up");
        return platform::Quit(2);
    }
    for (int turn = 0; turn < 200 && !failed() && QApplication::activeWindow() != form->Widget();
         ++turn) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    // No test chosen yet: a message. Then the independent test, its entries, the calculation,
    // the information window and the close button, which ends the run with status 0.
    const std::pair<const char*, QString> kSteps[] = {
        {"CalcBtn", ""}, {"IBtn", ""},    {"m1fld", "10"}, {"m2fld", "8"},  {"sd1fld", "2"},
        {"sd2fld", "3"}, {"n1fld", "10"}, {"n2fld", "12"}, {"CalcBtn", ""}, {"PushButton1", ""}};
    for (const auto& [control, keys] : kSteps) {
        if (!failed()) {
            ClickCentre(*ControlWidget(*form, control));
        }
        for (QChar key : keys) {
            if (!failed()) {
                QTest::keyClick(form->Widget()->windowHandle(), key.toLatin1());
            }
        }
    }
    if (!failed()) {
        form->Widget()->close();
    }
}

Outcome RunWithFaultAt(std::uint64_t n) {
    Outcome outcome;
    const auto windowsBefore = QApplication::topLevelWidgets().size();
    platform::recorder::Start();
    platform::InjectFaultAtCall(n);
    outcome.status =
        RunProgram([&outcome] { UseTheCalculator(outcome); },
                   [&outcome](const std::string& text) { outcome.messages.push_back(text); },
                   [&outcome](const std::string& failure) {
                       outcome.reports.push_back(failure);
                       outcome.operationsAtReport = platform::UITrapCallCount();
                       outcome.log = platform::recorder::Lines();
                       outcome.lostWrites = LostWrites(outcome.log);
                   });
    outcome.operations = platform::UITrapCallCount();
    platform::InjectFaultAtCall(0);
    platform::recorder::Stop();
    outcome.log = outcome.reports.empty() ? platform::recorder::Lines() : outcome.log;
    outcome.windowsLeft = QApplication::topLevelWidgets().size() - windowsBefore;
    return outcome;
}

// The report comes as soon as the failure has passed up through its callers, so the count of
// operations at the report tells whether anything of the failing handler ran after the fault.
TEST(FaultInjection, AFaultAtAnyOperationStopsThereKeepsWhatWasDoneAndIsReportedOnce) {
    RunWithFaultAt(0);  // the first run sets up what lives for the whole process: not compared
    const Outcome clean = RunWithFaultAt(0);
    ASSERT_EQ(clean.reports, Lines{});
    ASSERT_EQ(clean.status, 0);
    EXPECT_NE(std::ranges::find(clean.log, "pfld.Text=.0873"), clean.log.end());
    EXPECT_EQ(clean.messages, Lines{messages::kChooseTest});
    EXPECT_EQ(clean.windowsLeft, 0);
    std::size_t previousLog = 0;
    for (std::uint64_t n = 1; n <= clean.operations && !HasFailure(); ++n) {
        const Outcome run = RunWithFaultAt(n);
        SCOPED_TRACE("fault at operation " + std::to_string(n) + " of " +
                     std::to_string(clean.operations));
        EXPECT_EQ(run.reports, Lines{"InjectedFault: fault injected at user-interface operation " +
                                     std::to_string(n)});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.operationsAtReport, n) << "the failing handler went on after the fault";
        ASSERT_LE(run.log.size(), clean.log.size());
        EXPECT_EQ(run.log, Lines(clean.log.begin(), clean.log.begin() + run.log.size()));
        EXPECT_LE(run.log.size() - previousLog, 1u) << "each operation writes at most one line";
        previousLog = run.log.size();
        EXPECT_EQ(run.lostWrites, Lines{});
        EXPECT_EQ(run.windowsLeft, 0);
    }
    EXPECT_EQ(previousLog, clean.log.size());  // the last operation, the close, writes nothing
}

}  // namespace
}  // namespace korvane::proof
