// The Calculate command's view of the control window: the six operations of CalcPanel over the
// window's real controls, each found by name at each use.
#pragma once

#include <string>

#include "platform/qt/window.h"
#include "stats/stats.h"

namespace korvane {

class WindowPanel : public CalcPanel {
  public:
    explicit WindowPanel(platform::Window& window) : window_(window) {}

    std::string Text(const std::string& field) override;
    void Text(const std::string& field, const std::string& text) override;
    void Enabled(const std::string& control, bool value) override;
    void Visible(const std::string& control, bool value) override;
    void SetFocus(const std::string& field) override;
    void MsgBox(const std::string& text) override;

  private:
    platform::Window& window_;
};

}  // namespace korvane
