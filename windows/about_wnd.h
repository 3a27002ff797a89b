// The about window: the banner and an attribution line, shown by its record at start-up. It gives
// way to the control window after 4000 ms (Timer1), or at once on a key or mouse press in it, and
// comes back from the about items of the menu. It is hidden, never closed.
#pragma once

#include "platform/qt/controls.h"
#include "platform/qt/window.h"

namespace korvane {

class AboutWnd : public platform::Window {
public:
    static constexpr const char* kClassName = "AboutWnd.AboutWnd";
    static AboutWnd& Instance();  // the accessor: the living instance, built on first use
    static void RegisterClass();  // the class table (an initialiser of the run)

    static const platform::ClassInfo& StaticClass();
    const platform::ClassInfo& Class() const override { return StaticClass(); }

    void Layout() override;
    void CreateControls() override;
    void AddMenuHandlers() override;
    bool Event_KeyDown(const std::string& key) override;
    bool Event_MouseDown(std::int64_t x, std::int64_t y) override;

    platform::Label& StaticText5();
    platform::Canvas& Canvas1();
    platform::Timer& Timer1();
    void Timer1_Action(platform::Timer& timer);
    bool _AboutMenuItem_Action();

private:
    void _CreateControls0();
};

}  // namespace korvane
