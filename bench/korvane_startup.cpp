// Korvane's real start-up, timed: the program's own Main with an observer added once the Qt
// application exists. It prints the time from the process's start to the first window shown
// (the about window), and the resident memory once the control window is up and has painted;
// then it quits as the Quit item does. The about window is asked to give way at once, as a key
// press in it does, instead of after its four seconds.
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>

#include "app/startup.h"
#include "bench/startup_probe.h"
#include "control/control_wnd.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"
#include "windows/about_wnd.h"

namespace {

bool Is(QWindow& window, const char* className) {
    platform::Window* shown = platform::_GetImplicitWindow(className);
    return shown != nullptr && shown->Widget()->windowHandle() == &window;
}

}  // namespace

int main(int, char** argv) {
    bench::StartTheClock(argv);
    double firstShownMs = -1;
    bench::ExposeProbe probe([&](QWindow& window) {
        if (firstShownMs < 0) {
            firstShownMs = bench::MillisecondsSinceStart();
        }
        if (Is(window, korvane::AboutWnd::kClassName)) {
            QWidget* about = platform::_GetImplicitWindow(korvane::AboutWnd::kClassName)->Widget();
            QCoreApplication::postEvent(
                about, new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " "));
        } else if (Is(window, korvane::ControlWnd::kClassName)) {
            QTimer::singleShot(0, [&] {
                bench::Report(firstShownMs, bench::ResidentKiB(), window.width(), window.height());
                platform::Quit(0);
            });
        }
    });
    korvane::SetStepHook([&probe](std::string_view step) {
        if (step == "RuntimePerformInitializers") {  // the application exists from here on
            qApp->installEventFilter(&probe);
        }
    });
    return korvane::Main();
}
