// The run, from the process's entry to its exit status.
//
// Main is the whole life of the process in five steps: the runtime comes up, the initialisers set
// the statics and class tables, _Main runs the application, the finalisers run, and the runtime's
// exit status is returned. _Main registers the protected-call helper with the platform, builds
// what must exist before the platform starts (_EarlyStartup: file types, application object,
// menu bar), hands _LateStartup to the platform and runs the loop until the application quits.
// A failure on the way ends the sequence at that step and goes to the platform's report; the loop
// is then never entered, and Main still runs the finalisers and returns the exit status.
#pragma once

#include <exception>
#include <functional>
#include <span>
#include <string_view>

#include "platform/qt/runtime.h"

namespace korvane {

int Main();
void _Main();
void _EarlyStartup();
void _InitFileTypes();
void _ApplicationAddMenuHandlers();
void _LateStartup();  // the platform's first call back, once it is up: the first window

// Runs function(argument) for the platform; gives back a RuntimeException that escaped it, or
// nullptr. Any other exception passes on.
std::exception_ptr _CallFunctionWithExceptionHandling(void (*function)(void*), void* argument);

// The application's own entries of the initialiser table, in the order they run.
std::span<const platform::Initializer> Initializers();

// Every step of the sequence reports its name here just before it runs ("RuntimeInit",
// "_EarlyStartup", "_NewAppInstance", ...), so a test can follow the order, or make a step fail
// by throwing from the hook. A normal run sets none. An empty hook removes it.
using StepHook = std::function<void(std::string_view step)>;
void SetStepHook(StepHook hook);

}  // namespace korvane
