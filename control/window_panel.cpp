#include "control/window_panel.h"

#include "platform/qt/runtime.h"
#include "platform/qt/text_controls.h"

namespace korvane {

namespace {

template <class C>
C& Named(platform::Window& window, const std::string& name) {
    return platform::RuntimeCheckCast<C>(window._ControlByName(name));
}

}  // namespace

std::string WindowPanel::Text(const std::string& field) {
    return Named<platform::TextField>(window_, field).Text();
}

void WindowPanel::Text(const std::string& field, const std::string& text) {
    Named<platform::TextField>(window_, field).Text(text);
}

void WindowPanel::Enabled(const std::string& control, bool value) {
    Named<platform::RectControl>(window_, control).Enabled(value);
}

void WindowPanel::Visible(const std::string& control, bool value) {
    Named<platform::RectControl>(window_, control).Visible(value);
}

void WindowPanel::SetFocus(const std::string& field) {
    Named<platform::RectControl>(window_, field).SetFocus();
}

void WindowPanel::MsgBox(const std::string& text) {
    platform::MsgBox(text);
}

}  // namespace korvane
