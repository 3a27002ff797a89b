#include "app/startup.h"

#include <cstdio>
#include <utility>

#include "app/file_types.h"
#include "app/korvane.h"
#include "control/control_wnd.h"
#include "stats/stats.h"
#include "windows/about_wnd.h"
#include "windows/menu.h"
#include "windows/qwindow.h"

namespace korvane {

namespace {

StepHook& Hook() {
    static StepHook hook;
    return hook;
}

template <class Step>
decltype(auto) Run(std::string_view name, Step&& step) {
    if (Hook()) {
        Hook()(name);
    }
    return std::forward<Step>(step)();
}

constexpr platform::Initializer kInitializers[] = {
    [] { FileTypes::pAllFileTypes.clear(); },
    [] { FileTypes::pText = nullptr; },
    [] { FileTypes::pUntitledType = nullptr; },
    ControlWnd::RegisterClass,
    Menu::ResetImplicitInstance,
    [] { static_cast<void>(Menu::StaticClass()); },
    [] { static_cast<void>(AboutWnd::_wrapper_Timer1::StaticClass()); },
    AboutWnd::RegisterClass,
    Qwindow::RegisterClass,
    [] { static_cast<void>(Korvane::StaticClass()); },
    [] { Globals::btn = 0; },
    [] { Globals::k1 = 0; },
    [] { Globals::p = 0; },
    [] { Globals::t = 0; },
};

// The last word on a failure that escaped _Main. Should the report fail as well, there is no one
// left to tell but the terminal; Main goes on to the finalisers and the exit status regardless.
void ReportEscapedFailure(std::exception_ptr failure) {
    try {
        Run("_UnhandledException", [&] { platform::_UnhandledException(failure); });
    } catch (const std::exception& second) {
        std::fprintf(stderr, "Korvane: reporting a failure failed: %s\n", second.what());
    } catch (...) {
        std::fputs("Korvane: reporting a failure failed.\n", stderr);
    }
}

}  // namespace

int Main() {
    Run("RuntimeInit", platform::RuntimeInit);
    Run("RuntimePerformInitializers", [] { platform::RuntimePerformInitializers(kInitializers); });
    Run("_Main", _Main);
    Run("RuntimePerformFinalizers", platform::RuntimePerformFinalizers);
    return Run("RuntimeExit", platform::RuntimeExit);
}

void _Main() {
    // With _CallFunctionWithExceptionHandling, the one place that catches.
    try {
        Run("_RuntimeSetExceptionHelper",
            [] { platform::_RuntimeSetExceptionHelper(&_CallFunctionWithExceptionHandling); });
        Run("RuntimeVersion", [] { platform::RuntimeVersion(2019.031); });
        Run("_EarlyStartup", _EarlyStartup);
        Run("_RunFrameworkInitialization",
            [] { platform::_RunFrameworkInitialization(&_LateStartup); });
        Run("_RuntimeRun", platform::_RuntimeRun);
    } catch (...) {
        ReportEscapedFailure(std::current_exception());
    }
}

void _EarlyStartup() {
    Run("_SetSupportsHiDPI", [] { platform::_SetSupportsHiDPI(true); });
    Run("_RuntimeInitExternalClasses", platform::_RuntimeInitExternalClasses);
    Run("_InitPluginEntrypoints", platform::_InitPluginEntrypoints);
    Run("_InitFileTypes", _InitFileTypes);
    Run("_NewAppInstance", _NewAppInstance);
    Run("_ApplicationAddMenuHandlers", _ApplicationAddMenuHandlers);
}

void _InitFileTypes() {
    FileTypes::_Initialize();
}

void _ApplicationAddMenuHandlers() {
    // Menu handlers that work whatever window is in front would be added here. The application
    // has none: each of its handlers belongs to a window.
}

void _LateStartup() {
    Run("_MakeDefaultView", _MakeDefaultView);
}

std::exception_ptr _CallFunctionWithExceptionHandling(void (*function)(void*), void* argument) {
    try {
        function(argument);
    } catch (const platform::RuntimeException&) {
        return std::current_exception();
    }
    return nullptr;
}

std::span<const platform::Initializer> Initializers() {
    return kInitializers;
}

void SetStepHook(StepHook hook) {
    Hook() = std::move(hook);
}

}  // namespace korvane
