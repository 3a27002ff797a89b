// The handlers of the control window: test choice, Calculate, Clear, the key filter of the four
// fields of means and standard deviations, and the window's own events. Each handler sets each
// control by itself, found by name at each use, and relies on no parent hiding its children.
#include <cstdint>

#include "control/control_wnd.h"
#include "control/window_panel.h"
#include "platform/core/delegate.h"
#include "platform/core/text.h"
#include "platform/qt/buttons.h"
#include "platform/qt/canvas.h"
#include "platform/qt/frames.h"
#include "platform/qt/runtime.h"
#include "platform/qt/text_controls.h"
#include "stats/stats.h"
#include "windows/about_wnd.h"
#include "windows/qwindow.h"

namespace korvane {

namespace {

// Digits, minus, point, slash, backspace and tab go on to the field; every other key beeps and
// stops there. The rule looks at the key alone, not at where it would land in the text.
bool RefuseEntryKey(const std::string& key) {
    const std::int64_t c = platform::Asc(key);
    if ((c > 44 && c < 58) || c == 8 || c == 9) {
        return false;
    }
    platform::Beep();
    return true;
}

}  // namespace

bool ControlWnd::m2fld_KeyDown(platform::TextField&, const std::string& key) {
    return RefuseEntryKey(key);
}

bool ControlWnd::sd2fld_KeyDown(platform::TextField&, const std::string& key) {
    return RefuseEntryKey(key);
}

bool ControlWnd::m1fld_KeyDown(platform::TextField&, const std::string& key) {
    return RefuseEntryKey(key);
}

bool ControlWnd::sd1fld_KeyDown(platform::TextField&, const std::string& key) {
    return RefuseEntryKey(key);
}

void ControlWnd::HalbrineTitle_MouseExit(platform::Canvas&) {
    copyright().Visible(false);
}

void ControlWnd::HalbrineTitle_MouseEnter(platform::Canvas&) {
    copyright().Visible(true);
}

void ControlWnd::CalcBtn_Action(platform::PushButton&) {
    WindowPanel panel(*this);
    korvane::CalcBtn_Action(panel);
}

// The form as after start, but btn keeps its value, rfld stays disabled and tfld and pfld keep
// their last text, hidden.
void ControlWnd::ClearBtn_Action(platform::PushButton&) {
    rfld().Visible(false);
    rfld().Enabled(false);
    tfld().Enabled(false);
    tfld().Visible(false);
    pfld().Enabled(false);
    pfld().Visible(false);
    dtail().Visible(false);
    rtext().Visible(false);
    ttext().Visible(false);
    RBtn().Value(false);
    IBtn().Value(false);
    dfFld().Visible(false);
    dfFld().Enabled(false);
    dfText().Visible(false);
    dfText().Enabled(false);
    dfFld().Text("");
    m1fld().Text("");
    m2fld().Text("");
    sd1fld().Text("");
    sd2fld().Text("");
    n1fld().Text("");
    n2fld().Text("");
    rfld().Text("");
    GroupBox1().Visible(false);
    GroupBox2().Visible(false);
    m1fld().Visible(false);
    StaticText1().Visible(false);
    sd1fld().Visible(false);
    StaticText2().Visible(false);
    n1fld().Visible(false);
    StaticText7().Visible(false);
    m2fld().Visible(false);
    StaticText3().Visible(false);
    sd2fld().Visible(false);
    StaticText4().Visible(false);
    n2fld().Visible(false);
    n2text().Visible(false);
    Sep1().Visible(false);
    Sep2().Visible(false);
    typeBox().SetFocus();
}

// The twelve entry controls both tests share, in the order both handlers show them.
void ControlWnd::ShowCommonEntryControls() {
    GroupBox1().Visible(true);
    GroupBox2().Visible(true);
    m1fld().Visible(true);
    StaticText1().Visible(true);
    sd1fld().Visible(true);
    StaticText2().Visible(true);
    n1fld().Visible(true);
    StaticText7().Visible(true);
    m2fld().Visible(true);
    StaticText3().Visible(true);
    sd2fld().Visible(true);
    StaticText4().Visible(true);
}

// Independent means: N of sample 2 in the right panel's last row. rfld is only hidden here;
// Clear alone disables it.
void ControlWnd::IBtn_Action(platform::RadioButton&) {
    Globals::btn = 1;
    rfld().Visible(false);
    rtext().Visible(false);
    n2fld().Visible(true);
    n2text().Visible(true);
    ShowCommonEntryControls();
    Sep1().Visible(false);
    Sep2().Visible(false);
    m1fld().SetFocus();
}

// Related means: the correlation takes the place of N of sample 2.
void ControlWnd::RBtn_Action(platform::RadioButton&) {
    Globals::btn = 2;
    rfld().Enabled(true);
    rfld().Visible(true);
    rtext().Visible(true);
    n2fld().Visible(false);
    n2text().Visible(false);
    ShowCommonEntryControls();
    Sep1().Visible(true);
    Sep2().Visible(true);
    m1fld().SetFocus();
}

bool ControlWnd::typeBox_MouseDown(platform::GroupBox&, std::int64_t, std::int64_t) {
    return false;
}

// The information window comes up on the press, not on the release; "?" has no Action.
bool ControlWnd::PushButton1_MouseDown(platform::PushButton&, std::int64_t, std::int64_t) {
    Qwindow::Instance().Show();
    return false;
}

void ControlWnd::AddMenuHandlers() {
    ControlWnd& window = platform::RuntimeCheckCast<ControlWnd>(this);
    window._AddMenuHandler("AboutMenuItem",
                           platform::Delegate(window, &ControlWnd::_AboutMenuItem_Action));
    window._AddMenuHandler("AboutHalbrine",
                           platform::Delegate(window, &ControlWnd::_AboutHalbrine_Action));
}

void ControlWnd::Event_Close() {
    platform::Quit(0);
}

// Every activation forgets the chosen test, whatever the radio buttons show, so the user
// chooses again before Calculate works.
void ControlWnd::Event_Activate() {
    AboutWnd::Instance().Hide();
    Globals::btn = 0;
}

void ControlWnd::Event_EnableMenuItems() {
    ControlMenuItem().Enabled(false);
    AboutMenuItem().Enabled(true);
    AboutHalbrine().Enabled(true);
}

bool ControlWnd::_AboutMenuItem_Action() {
    AboutWnd::Instance().Show();
    return false;
}

bool ControlWnd::_AboutHalbrine_Action() {
    AboutWnd::Instance().Show();
    return false;
}

}  // namespace korvane
