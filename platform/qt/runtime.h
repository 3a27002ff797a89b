// The run of the program on Qt.
//
// Process: RuntimeInit makes the one QApplication; the run loop (_RuntimeRun) delivers every
// event on the main thread, one handler at a time. Every handler the platform calls goes through
// ProtectedCall, so no exception ever crosses a Qt frame: a failure that escapes a handler gets
// the default treatment (reported plainly on stderr and in a message box, then the run ends with
// status 1). MsgBox and Beep are the two ways the system talks to the user outside its windows.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <span>
#include <string>

#include "platform/core/failure.h"

namespace platform {

// --- Process, in the order main calls them ---
// Creates the QApplication, unless the host (a test) made one already; the very first call.
void RuntimeInit();
using Initializer = void (*)();
void RuntimePerformInitializers(std::span<const Initializer> table);  // runs them in table order
// Takes down the windows, the application object, the Qt menus, and the QApplication that
// RuntimeInit made.
void RuntimePerformFinalizers();
int RuntimeExit();  // the exit status: Quit's code, or 1 once a failure went unhandled
void RuntimeVersion(double stamp);  // the runtime version call; the stamp is kept and not used
void _SetSupportsHiDPI(bool supported);
void _RuntimeInitExternalClasses();                       // nothing to bind on this platform
void _InitPluginEntrypoints();                            // no plug-ins on this platform
void _RunFrameworkInitialization(void (*lateStartup)());  // calls it once, in the loop's first turn
void _RuntimeRun();                                       // returns when the application quits
void Quit(std::int64_t code);  // ends the run loop; code becomes the exit status
// Forgets a Quit and an unhandled failure, so that another run can start: for tests.
void _RuntimeResetRun();

// --- Failures ---
// _CallFunctionWithExceptionHandling: runs function(argument); returns the RuntimeException that
// escaped it, or nullptr. Any other exception passes through.
using ExceptionHelper = std::exception_ptr (*)(void (*function)(void*), void* argument);
void _RuntimeSetExceptionHelper(ExceptionHelper helper);
// Runs a handler under the registered helper; an escaped failure goes to _UnhandledException.
void ProtectedCall(const std::function<void()>& handler);
// The default treatment of an escaped failure: report it plainly and end the run with status 1.
void _UnhandledException(std::exception_ptr failure);
// Tests replace the report of the default treatment (an empty hook restores it); the run still
// ends with status 1.
using FailureHook = std::function<void(std::exception_ptr)>;
void SetUnhandledExceptionHook(FailureHook hook);
// Raises ThreadAccessingUIException when called off the main thread. Every operation on a window,
// control or menu item, and MsgBox, starts with it.
void _UITrap();

// --- The user ---
// Modal, titled "Korvane"; returns once the user has dismissed it, and gives the keyboard back to
// the window that was active (which is no Activate of it).
void MsgBox(const std::string& text);
void Beep();
// Tests answer MsgBox through a hook instead of a modal dialog (an empty hook restores it).
using MessageHook = std::function<void(const std::string&)>;
void SetMessageBoxHook(MessageHook hook);

}  // namespace platform
