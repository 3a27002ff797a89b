// The information window: the formula picture and the citation of the probability algorithm.
// "?" on the control window brings it up; its close button hides it, so one instance serves the
// whole run and what the user typed into its text stays.
#pragma once

#include <cstdint>
#include <string>

#include "platform/qt/window.h"

namespace platform {
class TextArea;
class Canvas;
}  // namespace platform

namespace korvane {

class Qwindow : public platform::WindowClass<Qwindow> {
  public:
    static constexpr const char* kClassName = "Qwindow.Qwindow";

    void Layout() override;
    void CreateControls() override;
    void Event_Close() override;
    bool Event_MouseDown(std::int64_t x, std::int64_t y) override;
    bool Event_KeyDown(const std::string& key) override;
    // The events overridden here, for IsEventImplemented.
    static constexpr platform::EventNames<5> kImplementedEvents{"Layout", "CreateControls", "Close",
                                                                "MouseDown", "KeyDown"};

    platform::TextArea& StaticText1();
    platform::Canvas& Canvas1();

    // The text of StaticText1: the citation, two carriage returns, the attribution and a blank.
    static const std::string& InformationText();
};

}  // namespace korvane
