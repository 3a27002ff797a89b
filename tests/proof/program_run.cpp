#include "tests/proof/program_run.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <string_view>

#include "app/startup.h"
#include "platform/qt/application.h"
#include "platform/qt/controls.h"
#include "platform/qt/runtime.h"
#include "windows/menu.h"

namespace korvane::proof {

int RunProgram(const std::function<void()>& driver) {
    // A timer of the test's own, stopped after the run: a turn that never came (the run failed
    // before it) must not come in the next run's loop.
    QTimer turn;
    turn.setSingleShot(true);
    turn.setInterval(0);
    QObject::connect(&turn, &QTimer::timeout, driver);
    korvane::SetStepHook([&turn](std::string_view step) {
        if (step == "_MakeDefaultView") {
            turn.start();
        }
    });
    const int status = korvane::Main();
    korvane::SetStepHook({});
    turn.stop();
    ForgetRun();
    return status;
}

void ForgetRun() {
    platform::DestroyAllWindows();
    platform::DestroyAppObject();
    Menu::ResetForTests();
    platform::_RuntimeResetRun();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

platform::Window* LivingWindow(const char* className) {
    return platform::_GetImplicitWindow(className);
}

QWidget* ControlWidget(const platform::Window& window, const std::string& name) {
    for (std::size_t i = 0; i < window.ControlCount(); ++i) {
        auto* control = dynamic_cast<platform::RectControl*>(window.ControlAt(i));
        if (control != nullptr && control->Name() == name) {
            return control->Widget();
        }
    }
    return nullptr;
}

void ClickCentre(QWidget& widget) {
    QWidget* top = widget.window();
    QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {},
                      widget.mapTo(top, widget.rect().center()));
}

void PressKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

bool ProcessUntil(const std::function<bool()>& done, int turns) {
    for (int i = 0; i < turns; ++i) {
        if (done()) {
            return true;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return done();
}

const std::set<std::string>& ProgramMessages() {
    static const std::set<std::string> messages{
        "Select Independent or Related t-test and then enter appropriate data",
        "Please enter the mean of the 1st sample",
        "Please enter the mean of the 2nd sample",
        "Please enter the standard deviation of the 1st sample",
        "Please enter the standard deviation of the 2nd sample",
        "Please enter the N of the 1st sample",
        "Please enter the N of the 2nd sample",
        "Please enter the correlation between Sample 1 and Sample 2",
        "N for each sample must range from 2-9999",
        "N of paired samples must range from 2-9999",
        "Correlation must range from -1.00 thru +1.00",
    };
    return messages;
}

}  // namespace korvane::proof
