// What the proof tests share: the whole program run in this process as main runs it (start-up,
// the run loop, shut-down), with a driver that acts as the user from inside the loop, and the
// reset that lets the next run start from nothing again.
//
// The driver finds windows and controls without the platform's user-interface operations (the
// registry, the controls in creation order and their Qt widgets), so that it adds nothing to the
// operations a fault-injection test counts.
#pragma once

#include <QPoint>
#include <QWidget>
#include <functional>
#include <set>
#include <string>

#include "platform/qt/window.h"

namespace korvane::proof {

// Runs korvane::Main() once. `driver` runs in the loop's first turn after the about window was
// made (the platform's first call back), as the user's part of the run; the run then goes on
// until it quits. Afterwards everything the run left is taken down (ForgetRun). Returns Main's
// status.
int RunProgram(const std::function<void()>& driver);

// Takes down what a run leaves in the process: windows, the application object, the menu bar,
// the run's quit and failure state, deferred deletions.
void ForgetRun();

// The living window of that run-time class name, or nullptr.
platform::Window* LivingWindow(const char* className);
// The widget of the window's control of that name, or nullptr.
QWidget* ControlWidget(const platform::Window& window, const std::string& name);

// A left click at the centre of the widget, sent to its window as a user's click is.
void ClickCentre(QWidget& widget);
// A key press and release, sent to the window as the keyboard sends it (to its focus widget).
void PressKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
// Runs posted events until `done` holds or `turns` turns have gone; true if it held.
bool ProcessUntil(const std::function<bool()>& done, int turns = 200);

// Every message the program shows: the answers of the Calculate command to what was typed.
const std::set<std::string>& ProgramMessages();

}  // namespace korvane::proof
