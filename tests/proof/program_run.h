// What the proof tests share, besides their main: the whole program run in this process as main
// runs it, with a driver that acts as the user from inside the loop, and the reset that lets the
// next run start from nothing again. The driver finds windows and controls without the
// platform's user-interface operations (the registry, the controls in creation order, their Qt
// widgets), so that it adds nothing to the operations a fault-injection test counts.
#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "platform/qt/window.h"

namespace korvane::proof {

// Runs korvane::Main() once; `driver` runs in the loop's first turn, after the about window was
// made. The program's messages go to `message` and the failures the platform reports, described
// ("InjectedFault: ..."), to `failure`. Everything the run left is taken down afterwards.
// Returns Main's status.
int RunProgram(const std::function<void()>& driver,
               const std::function<void(const std::string&)>& message,
               const std::function<void(const std::string&)>& failure);

// The living window of that run-time class name, or nullptr.
platform::Window* LivingWindow(const char* className);
// The widget of the window's control of that name, or nullptr.
QWidget* ControlWidget(const platform::Window& window, const std::string& name);
// A left click at the centre of the widget, sent to its window as a user's click is.
void ClickCentre(QWidget& widget);

}  // namespace korvane::proof
