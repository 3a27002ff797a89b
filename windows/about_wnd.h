// The about window: the banner and an attribution line on white, in a frame without title or
// buttons. Start-up builds it and its record shows it. It gives way to the control window when
// Timer1 fires (once, 4000 ms after the window was built), or at once on a key or mouse press in
// it: it hides itself and shows the control window. The about items of the menu bring it back.
// It is hidden, never closed: one instance serves the whole run.
#pragma once

#include <cstdint>
#include <string>

#include "platform/qt/timer.h"
#include "platform/qt/window.h"

namespace platform {
class Label;
class Canvas;
}  // namespace platform

namespace korvane {

class AboutWnd : public platform::WindowClass<AboutWnd> {
  public:
    static constexpr const char* kClassName = "AboutWnd.AboutWnd";
    static constexpr const char* kAttribution = "\xC2\xA9 2026 The Korvane developers";

    // The timer as it stands among the window's controls: it knows its window only weakly, so it
    // does not keep the window alive.
    class _wrapper_Timer1 : public platform::Classed<_wrapper_Timer1, platform::Timer> {
      public:
        static const platform::ClassInfo& StaticClass();

        void _SetWindow(platform::Window* window);
        platform::Window* Window() const;  // nil once the window is gone
        std::int64_t _Index() const { return Index(); }
        void _SetIndex(std::int64_t index) { SetIndex(index); }

        void Attach(platform::Window& window, const std::string& name) override;

      private:
        platform::WeakRef ownerWindow;
    };

    // The accessor: the living instance, built on first use. Unlike the other windows it leaves
    // registering the class to the run's initialisers.
    static AboutWnd& Instance() { return Implicit(); }

    void Layout() override;
    void CreateControls() override;
    void AddMenuHandlers() override;
    bool Event_KeyDown(const std::string& key) override;            // every key; always false
    bool Event_MouseDown(std::int64_t x, std::int64_t y) override;  // anywhere; always false
    // The events overridden here, for IsEventImplemented.
    static constexpr platform::EventNames<5> kImplementedEvents{
        "Layout", "CreateControls", "AddMenuHandlers", "KeyDown", "MouseDown"};

    platform::Label& StaticText5();
    platform::Canvas& Canvas1();
    platform::Timer& Timer1();
    void Timer1_Action(platform::Timer& timer);
    bool _AboutMenuItem_Action();  // shows the window again; false
};

}  // namespace korvane
