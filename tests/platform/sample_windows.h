// Small windows written the way the program's windows are: a class derived from Window, layout
// records as constants, controls made by name and wired with delegates. They count what reaches
// them, so a test can see which event went where. Also the fixture every platform test uses and
// the helpers that press real keys and mouse buttons.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <string>
#include <vector>

#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "platform/core/recorder.h"
#include "platform/qt/controls.h"
#include "platform/qt/menu.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace sample {

using namespace platform::rec;

// A control made as the program makes one: __New, _AddControl, _ControlByName, the record.
template <class C, class R>
C& Make(platform::Window& window, const std::string& name, const R& record) {
    window._AddControl(name, window.__New<C>());
    C& control = platform::RuntimeCheckCast<C>(window._ControlByName(name));
    platform::ApplyRecord(control, record.view());
    return control;
}

template <class C>
C& Find(platform::Window& window, const std::string& name) {
    return platform::RuntimeCheckCast<C>(window._ControlByName(name));
}

inline constexpr auto kFormRecord = PLATFORM_RECORD(
    Int("Width", 400), Int("Height", 300), Int("MinimumWidth", 64), Int("MinimumHeight", 64),
    Int("MaximumWidth", 400), Int("MaximumHeight", 400), Int("Type", 0), Str("Title", "Form"),
    Bool("HasCloseButton", true), Bool("HasMaximizeButton", false), Bool("HasMinimizeButton", true),
    Bool("HasFullScreenButton", false), Bool("Resizeable", false), Bool("Composite", false),
    Int("MacProcID", 0), Bool("FullScreen", false), Int("DefaultLocation", 0),
    Bool("Visible", true), Bool("HasBackgroundColor", true), Color("BackgroundColor", 0xFFFFFF),
    Bool("MenuBarVisible", true), Bool("LiveResize", false));

// The frame of sample 1, with two fields and a label inside it.
inline constexpr auto kBoxRecord = PLATFORM_RECORD(
    Str("Name", "box"), Int("Left", 20), Int("Top", 100), Int("Width", 160), Int("Height", 150),
    Int("TabIndex", 3), Bool("TabStop", true), Str("Caption", "Sample 1"), Bool("Visible", true),
    Bool("Enabled", true), Str("InitialParent", ""));
inline constexpr auto kM1Record = PLATFORM_RECORD(
    Str("Name", "m1fld"), Int("Left", 40), Int("Top", 125), Int("Width", 80), Int("Height", 22),
    Int("TabIndex", 0), Bool("TabStop", true), Bool("Visible", true), Bool("Enabled", true),
    Int("TextAlignment", 2), Str("Value", ""), Str("InitialParent", "box"));
inline constexpr auto kN1Record =
    PLATFORM_RECORD(Str("Name", "n1fld"), Int("Left", 40), Int("Top", 175), Int("Width", 80),
                    Int("Height", 22), Int("TabIndex", 1), Bool("TabStop", true),
                    Bool("Visible", true), Bool("Enabled", true), Str("InitialParent", "box"));
inline constexpr auto kNoteRecord =
    PLATFORM_RECORD(Str("Name", "note"), Int("Left", 40), Int("Top", 150), Int("Width", 80),
                    Int("Height", 18), Int("TabIndex", 2), Bool("TabStop", false),
                    Str("Value", "Mean"), Bool("Visible", true), Color("TextColor", 0xCC0000),
                    Single("FontSize", 12), Int("TextAlignment", 2), Str("InitialParent", "box"));
// A window-level field that lies inside the frame's rectangle, as rfld does.
inline constexpr auto kRRecord = PLATFORM_RECORD(
    Str("Name", "rfld"), Int("Left", 210), Int("Top", 175), Int("Width", 80), Int("Height", 22),
    Int("TabIndex", 2), Bool("TabStop", true), Bool("Visible", true), Str("InitialParent", ""));
inline constexpr auto kIBtnRecord = PLATFORM_RECORD(
    Str("Name", "IBtn"), Int("Left", 30), Int("Top", 60), Int("Width", 130), Int("Height", 18),
    Int("TabIndex", 5), Bool("TabStop", true), Str("Caption", "Independent"), Bool("Visible", true),
    Bool("Value", false), Str("InitialParent", ""));
inline constexpr auto kRBtnRecord = PLATFORM_RECORD(
    Str("Name", "RBtn"), Int("Left", 170), Int("Top", 60), Int("Width", 120), Int("Height", 18),
    Int("TabIndex", 6), Bool("TabStop", true), Str("Caption", "Related"), Bool("Visible", true),
    Bool("Value", false), Str("InitialParent", ""));
// Made after the two radio buttons and drawn around them.
inline constexpr auto kTypeBoxRecord =
    PLATFORM_RECORD(Str("Name", "typeBox"), Int("Left", 20), Int("Top", 50), Int("Width", 290),
                    Int("Height", 36), Int("TabIndex", 14), Str("Caption", ""), Bool("Bold", true),
                    Bool("Visible", true), Str("InitialParent", ""));
inline constexpr auto kCalcRecord = PLATFORM_RECORD(
    Str("Name", "CalcBtn"), Int("Left", 20), Int("Top", 260), Int("Width", 80), Int("Height", 30),
    Int("TabIndex", 8), Bool("TabStop", false), Str("Caption", "Calculate"), Bool("Default", true),
    Bool("Visible", true), Bool("Enabled", true), Str("InitialParent", ""));
inline constexpr auto kHelpRecord = PLATFORM_RECORD(
    Str("Name", "HelpBtn"), Int("Left", 200), Int("Top", 260), Int("Width", 50), Int("Height", 30),
    Int("TabIndex", 7), Bool("TabStop", true), Str("Caption", "?"), Bool("Default", true),
    Single("FontSize", 14), Bool("Bold", true), Bool("Visible", true), Str("InitialParent", ""));
inline constexpr auto kTitleRecord =
    PLATFORM_RECORD(Str("Name", "title"), Int("Left", 5), Int("Top", 2), Int("Width", 390),
                    Int("Height", 40), Int("TabIndex", 4), Bool("TabStop", false),
                    Bool("AllowFocus", false), Bool("Visible", true), Str("InitialParent", ""));

// What every sample window shares: its class info under its kClassName, its registration and
// its accessor.
template <class W>
class SampleWindow : public platform::Window {
  public:
    static const platform::ClassInfo& StaticClass() {
        static const platform::ClassInfo info{W::kClassName, &Window::StaticClass(), {}};
        return info;
    }
    const platform::ClassInfo& Class() const override { return StaticClass(); }
    static void RegisterClass() {
        platform::RegisterWindowClass(W::kClassName, [] { return std::make_unique<W>(); });
    }
    static W& Instance() {
        return platform::RuntimeCheckCast<W>(&platform::ImplicitWindow(W::kClassName));
    }
};

// The control window in small: a frame with fields, radio buttons in a later frame, buttons, a
// title canvas. Every event that reaches it is counted.
class FormWnd : public SampleWindow<FormWnd> {
  public:
    static constexpr const char* kClassName = "FormWnd.FormWnd";

    void Layout() override { platform::ApplyRecord(*this, kFormRecord.view()); }

    void CreateControls() override {
        Make<platform::GroupBox>(*this, "box", kBoxRecord);
        Make<platform::TextField>(*this, "m1fld", kM1Record).KeyDown =
            platform::Delegate(*this, &FormWnd::m1fld_KeyDown);
        Make<platform::TextField>(*this, "n1fld", kN1Record);
        Make<platform::Label>(*this, "note", kNoteRecord);
        Make<platform::TextField>(*this, "rfld", kRRecord);
        Make<platform::RadioButton>(*this, "IBtn", kIBtnRecord).Action =
            platform::Delegate(*this, &FormWnd::IBtn_Action);
        Make<platform::RadioButton>(*this, "RBtn", kRBtnRecord).Action =
            platform::Delegate(*this, &FormWnd::RBtn_Action);
        Make<platform::GroupBox>(*this, "typeBox", kTypeBoxRecord).MouseDown =
            platform::Delegate(*this, &FormWnd::typeBox_MouseDown);
        Make<platform::PushButton>(*this, "CalcBtn", kCalcRecord).Action =
            platform::Delegate(*this, &FormWnd::CalcBtn_Action);
        auto& help = Make<platform::PushButton>(*this, "HelpBtn", kHelpRecord);
        help.MouseDown = platform::Delegate(*this, &FormWnd::HelpBtn_MouseDown);
        help.Action = platform::Delegate(*this, &FormWnd::HelpBtn_Action);
        auto& title = Make<platform::Canvas>(*this, "title", kTitleRecord);
        title.MouseEnter = platform::Delegate(*this, &FormWnd::title_MouseEnter);
        title.MouseExit = platform::Delegate(*this, &FormWnd::title_MouseExit);
    }

    platform::TextField& m1fld() { return Find<platform::TextField>(*this, "m1fld"); }
    platform::TextField& n1fld() { return Find<platform::TextField>(*this, "n1fld"); }
    platform::TextField& rfld() { return Find<platform::TextField>(*this, "rfld"); }
    platform::RadioButton& IBtn() { return Find<platform::RadioButton>(*this, "IBtn"); }
    platform::RadioButton& RBtn() { return Find<platform::RadioButton>(*this, "RBtn"); }
    platform::GroupBox& box() { return Find<platform::GroupBox>(*this, "box"); }
    platform::GroupBox& typeBox() { return Find<platform::GroupBox>(*this, "typeBox"); }
    platform::PushButton& CalcBtn() { return Find<platform::PushButton>(*this, "CalcBtn"); }
    platform::PushButton& HelpBtn() { return Find<platform::PushButton>(*this, "HelpBtn"); }
    platform::Canvas& title() { return Find<platform::Canvas>(*this, "title"); }

    // The key filter of the entry fields: what it saw, and whether it stops the key.
    bool m1fld_KeyDown(platform::TextField&, const std::string& key) {
        keys.push_back(key);
        return stopKeys;
    }
    void IBtn_Action(platform::RadioButton&) { ++iActions; }
    void RBtn_Action(platform::RadioButton&) { ++rActions; }
    bool typeBox_MouseDown(platform::GroupBox&, std::int64_t, std::int64_t) {
        ++typeBoxPresses;
        return false;
    }
    void CalcBtn_Action(platform::PushButton&) { ++calcActions; }
    bool HelpBtn_MouseDown(platform::PushButton&, std::int64_t, std::int64_t) {
        helpPressedBeforeAction = helpActions == 0;
        ++helpPresses;
        return false;
    }
    void HelpBtn_Action(platform::PushButton&) { ++helpActions; }
    void title_MouseEnter(platform::Canvas&) { ++enters; }
    void title_MouseExit(platform::Canvas&) { ++exits; }

    void Event_Activate() override { ++activations; }
    void Event_EnableMenuItems() override { ++menuUpdates; }
    bool Event_KeyDown(const std::string& key) override {
        windowKeys.push_back(key);
        return false;
    }
    bool Event_MouseDown(std::int64_t x, std::int64_t y) override {
        windowPresses.push_back({int(x), int(y)});
        return false;
    }

    std::vector<std::string> keys, windowKeys;
    std::vector<QPoint> windowPresses;
    bool stopKeys = false;
    bool helpPressedBeforeAction = false;
    int iActions = 0, rActions = 0, typeBoxPresses = 0, calcActions = 0, helpPresses = 0,
        helpActions = 0, enters = 0, exits = 0, activations = 0, menuUpdates = 0;
};

inline constexpr auto kPlainRecord =
    PLATFORM_RECORD(Int("Width", 300), Int("Height", 200), Int("Type", 0), Str("Title", "Plain"),
                    Bool("Resizeable", true), Int("MinimumWidth", 100), Int("MinimumHeight", 80),
                    Int("MaximumWidth", 800), Int("MaximumHeight", 600),
                    Bool("HasMaximizeButton", true), Bool("Visible", true));

// A window that never overrides Event_Close: its close button closes it.
class PlainWnd : public SampleWindow<PlainWnd> {
  public:
    static constexpr const char* kClassName = "PlainWnd.PlainWnd";
    void Layout() override { platform::ApplyRecord(*this, kPlainRecord.view()); }
    void Event_Activate() override { ++activations; }
    int activations = 0;
};

// Like the information window: its close button hides it, through its own accessor.
class HidingWnd : public SampleWindow<HidingWnd> {
  public:
    static constexpr const char* kClassName = "HidingWnd.HidingWnd";
    void Layout() override { platform::ApplyRecord(*this, kPlainRecord.view()); }
    void Event_Close() override { Instance().Hide(); }
};

// Every platform test starts from no windows, no pending quit, hooks that collect failures and
// messages instead of reporting them, and the recorder off.
class PlatformTest : public testing::Test {
  protected:
    void SetUp() override {
        platform::_RuntimeResetRun();
        platform::SetUnhandledExceptionHook(
            [this](std::exception_ptr failure) { failures.push_back(failure); });
        platform::SetMessageBoxHook([this](const std::string& text) { messages.push_back(text); });
        platform::recorder::Stop();
        FormWnd::RegisterClass();
        PlainWnd::RegisterClass();
        HidingWnd::RegisterClass();
    }
    void TearDown() override {
        platform::DestroyAllWindows();
        platform::SetUnhandledExceptionHook({});
        platform::SetMessageBoxHook({});
        platform::recorder::Stop();
        platform::_RuntimeResetRun();
        platform::SetResourceDirectory({});
    }

    // The class name of the first failure that reached the hook, or "" for none.
    std::string FirstFailureClass() const {
        if (failures.empty()) {
            return {};
        }
        try {
            std::rethrow_exception(failures.front());
        } catch (const platform::RuntimeException& e) {
            return e.ClassName();
        } catch (...) {
            return "not a RuntimeException";
        }
    }

    std::vector<std::exception_ptr> failures;
    std::vector<std::string> messages;
};

// Shows the window and waits until it is the active one.
inline bool ShowActive(platform::Window& window) {
    window.Show();
    return QTest::qWaitForWindowActive(window.Widget());
}

// Where a control stands, in the window's content coordinates.
inline QRect WindowRect(const platform::RectControl& control, const platform::Window& window) {
    QWidget* widget = control.Widget();
    return QRect(widget->mapTo(window.ContentWidget(), QPoint(0, 0)), widget->size());
}

// Real presses go to the window's QWindow at a point of the content, so Qt finds the widget
// under the mouse as it does for a user.
inline QPoint FramePoint(const platform::Window& window, QPoint contentPoint) {
    return window.ContentWidget()->mapTo(window.Widget(), contentPoint);
}

inline void ClickAt(platform::Window& window, QPoint contentPoint) {
    QTest::mouseClick(window.Widget()->windowHandle(), Qt::LeftButton, {},
                      FramePoint(window, contentPoint));
}

inline void PressAt(platform::Window& window, QPoint contentPoint) {
    QTest::mousePress(window.Widget()->windowHandle(), Qt::LeftButton, {},
                      FramePoint(window, contentPoint));
}

inline void ReleaseAt(platform::Window& window, QPoint contentPoint) {
    QTest::mouseRelease(window.Widget()->windowHandle(), Qt::LeftButton, {},
                        FramePoint(window, contentPoint));
}

inline QPoint CentreOf(const platform::RectControl& control, const platform::Window& window) {
    return WindowRect(control, window).center();
}

}  // namespace sample
