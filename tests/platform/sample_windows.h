// A small window written the way the program's windows are, counting what reaches it; the fixture
// of every platform test; real mouse presses sent to the window, so Qt finds the widget there.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <string>
#include <vector>

#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "platform/qt/buttons.h"
#include "platform/qt/frames.h"
#include "platform/qt/runtime.h"
#include "platform/qt/text_controls.h"
#include "platform/qt/window.h"
#include "tests/common/run_fixture.h"

namespace sample {

using namespace platform::rec;

#define SAMPLE_PLACE(left, top, width, height) \
    Int("Left", left), Int("Top", top), Int("Width", width), Int("Height", height)

// A frame with two fields and a label; rfld lies in its rectangle but belongs to the window. Two
// radio buttons, and a frame drawn around them that is made after them.
inline constexpr auto kFormRecord = PLATFORM_RECORD(
    Int("Width", 400), Int("Height", 300), Str("Title", "Form"), Bool("HasCloseButton", true),
    Bool("HasMaximizeButton", false), Bool("Resizeable", false), Int("MacProcID", 0),
    Bool("Visible", true), Color("BackgroundColor", 0xFFFFFF));
inline constexpr auto kBox = PLATFORM_RECORD(SAMPLE_PLACE(20, 100, 160, 150), Int("TabIndex", 3));
inline constexpr auto kM1 =
    PLATFORM_RECORD(SAMPLE_PLACE(40, 125, 80, 22), Int("TabIndex", 0), Str("InitialParent", "box"));
inline constexpr auto kN1 =
    PLATFORM_RECORD(SAMPLE_PLACE(40, 175, 80, 22), Int("TabIndex", 1), Str("InitialParent", "box"));
inline constexpr auto kNote = PLATFORM_RECORD(SAMPLE_PLACE(40, 150, 80, 18), Str("Value", "Mean"),
                                              Str("InitialParent", "box"));
inline constexpr auto kR = PLATFORM_RECORD(SAMPLE_PLACE(210, 175, 80, 22), Int("TabIndex", 2));
inline constexpr auto kIBtn = PLATFORM_RECORD(SAMPLE_PLACE(30, 60, 130, 18), Int("TabIndex", 5),
                                              Str("Caption", "Independent"));
inline constexpr auto kRBtn =
    PLATFORM_RECORD(SAMPLE_PLACE(170, 60, 120, 18), Int("TabIndex", 6), Str("Caption", "Related"));
inline constexpr auto kTypeBox = PLATFORM_RECORD(SAMPLE_PLACE(20, 50, 290, 36), Int("TabIndex", 9));
inline constexpr auto kCalc = PLATFORM_RECORD(SAMPLE_PLACE(20, 260, 80, 30), Int("TabIndex", 8),
                                              Bool("TabStop", false), Bool("Default", true));
inline constexpr auto kHelp =
    PLATFORM_RECORD(SAMPLE_PLACE(200, 260, 50, 30), Int("TabIndex", 7), Bool("Default", true));

// A handler for any event that counts its calls and lets a press go on.
inline auto Counter(int& calls) {
    return [&calls](auto&&...) { return ++calls < 0; };
}

class FormWnd : public platform::WindowClass<FormWnd> {
  public:
    static constexpr const char* kClassName = "FormWnd.FormWnd";
    static constexpr platform::EventNames<7> kImplementedEvents{
        "Layout", "CreateControls", "Activate", "EnableMenuItems", "Close", "KeyDown", "MouseDown"};

    void Layout() override { platform::ApplyRecord(*this, kFormRecord.view()); }
    void CreateControls() override {
        using namespace platform;
        Make<GroupBox>("box", kBox);
        Make<TextField>("m1fld", kM1).KeyDown = Delegate(*this, &FormWnd::KeyDown);
        Make<TextField>("n1fld", kN1);
        Make<Label>("note", kNote);
        Make<TextField>("rfld", kR);
        Make<RadioButton>("IBtn", kIBtn).Action = Counter(iActions);
        Make<RadioButton>("RBtn", kRBtn).Action = Counter(rActions);
        Make<GroupBox>("typeBox", kTypeBox).MouseDown = Counter(typeBoxPresses);
        Make<PushButton>("CalcBtn", kCalc).Action = Counter(calcs);
        Make<PushButton>("HelpBtn", kHelp).MouseDown = Counter(helpPresses);
        Get<PushButton>("HelpBtn").Action = Counter(helps);
    }

    // A control made as the program makes one: created, found by name, given its record.
    template <class C, class R>
    C& Make(const std::string& name, const R& record) {
        C& control = Create<C>(name);
        platform::ApplyRecord(control, record.view());
        return control;
    }
    template <class C = platform::TextField>
    C& Get(const std::string& name) {
        return Named<C>(name);
    }
    platform::TextField& m1fld() { return Get("m1fld"); }
    platform::TextField& rfld() { return Get("rfld"); }
    platform::RadioButton& IBtn() { return Get<platform::RadioButton>("IBtn"); }
    platform::RadioButton& RBtn() { return Get<platform::RadioButton>("RBtn"); }
    platform::PushButton& HelpBtn() { return Get<platform::PushButton>("HelpBtn"); }

    // The key filter of the entry field: what it saw, and whether it stops the key.
    bool KeyDown(platform::TextField&, const std::string& key) {
        keys.push_back(key);
        return stopKeys;
    }
    void Event_Activate() override { events.push_back("Activate"); }
    void Event_EnableMenuItems() override { events.push_back("EnableMenuItems"); }
    void Event_Close() override {
        if (hideOnClose) {
            Hide();
        }
    }
    bool Event_KeyDown(const std::string& key) override {
        windowKeys.push_back(key);
        return false;
    }
    bool Event_MouseDown(std::int64_t x, std::int64_t y) override {
        windowPresses.push_back({int(x), int(y)});
        return false;
    }

    std::vector<std::string> keys, windowKeys, events;
    std::vector<QPoint> windowPresses;
    bool stopKeys = false, hideOnClose = false;
    int iActions = 0, rActions = 0, typeBoxPresses = 0, calcs = 0, helpPresses = 0, helps = 0;
};

// Every platform test starts from no windows, no pending quit and hooks that collect failures
// and messages (testing_support::RunFixture).
class PlatformTest : public testing_support::RunFixture {
  protected:
    static QWidget* Focused() { return QApplication::focusWidget(); }
    // The form, shown and active.
    static FormWnd& Form() {
        FormWnd& form = FormWnd::Instance();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
        return form;
    }
};

// Where a control stands, in the window's content coordinates.
inline QRect WindowRect(const platform::RectControl& control, const platform::Window& window) {
    QWidget* widget = control.Widget();
    return QRect(widget->mapTo(window.ContentWidget(), QPoint(0, 0)), widget->size());
}

// A press, release or click at a point of the window's content, sent to its QWindow.
inline void Mouse(platform::Window& window, QPoint at,
                  QTest::MouseAction action = QTest::MouseClick) {
    QTest::mouseEvent(action, window.Widget()->windowHandle(), Qt::LeftButton, {},
                      window.ContentWidget()->mapTo(window.Widget(), at));
}

inline void Mouse(platform::Window& window, const platform::RectControl& control,
                  QTest::MouseAction action = QTest::MouseClick) {
    Mouse(window, WindowRect(control, window).center(), action);
}

// Gives the control the keyboard; a field's text is then all selected, as after a Tab.
inline bool Focus(platform::RectControl& control) {
    control.SetFocus();
    if (auto* line = qobject_cast<QLineEdit*>(control.Widget())) {
        line->selectAll();
    }
    return QTest::qWaitFor([&] { return QApplication::focusWidget() == control.Widget(); });
}

}  // namespace sample
