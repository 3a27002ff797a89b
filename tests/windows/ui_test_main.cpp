// The main of the window test programs: one QApplication for the whole run, in the C locale,
// with the three window classes registered as the run's initialisers register them, and ended as
// a run ends.
#include <QLocale>

#include <gtest/gtest.h>

#include "control/control_wnd.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"
#include "windows/about_wnd.h"
#include "windows/qwindow.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    platform::RuntimeInit();
    QLocale::setDefault(QLocale::c());
    korvane::AboutWnd::RegisterClass();
    korvane::ControlWnd::RegisterClass();
    korvane::Qwindow::RegisterClass();
    const int status = RUN_ALL_TESTS();
    // As a run ends: the static menu bar's Qt menus, shown as popups by the tests that open
    // them by key, go while Qt is still up.
    platform::RuntimePerformFinalizers();
    return status;
}
