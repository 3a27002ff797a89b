// The window tests' fixture: the real windows on Qt's offscreen platform, MsgBox answered by a
// hook, the platform's log, and key and mouse events sent through the window as a user's are.
#pragma once

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPoint>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "control/control_wnd.h"
#include "platform/core/recorder.h"
#include "platform/qt/runtime.h"
#include "platform/qt/text_controls.h"
#include "stats/stats.h"
#include "tests/common/run_fixture.h"
#include "windows/about_wnd.h"

namespace korvane::testing {

class UiTest : public testing_support::RunFixture {
  protected:
    void SetUp() override {
        RunFixture::SetUp();
        Globals::btn = 0;
        platform::recorder::Start();
    }

    void TearDown() override {
        platform::recorder::Stop();
        RunFixture::TearDown();
        EXPECT_TRUE(failures.empty()) << "a failure escaped a handler: " << failures.front();
    }

    static QPoint CentreInWindow(const platform::RectControl& control) {
        const QWidget* widget = control.Widget();
        return widget->mapTo(widget->window(), widget->rect().center());
    }

    static QWindow* Handle(const platform::RectControl& control) {
        return control.Widget()->window()->windowHandle();
    }

    // A click at the control's centre, or one half of it, delivered to the window as a user's is.
    static void Click(const platform::RectControl& control,
                      QTest::MouseAction action = QTest::MouseClick) {
        QTest::mouseEvent(action, Handle(control), Qt::LeftButton, {}, CentreInWindow(control));
    }

    // Clicks into the field and types `text` key by key.
    static void Type(const platform::TextField& field, const std::string& text) {
        Click(field);
        QTest::keyClicks(field.Widget(), QString::fromStdString(text));
    }

    // A key pressed in the window as a user presses it; Qt takes it to an open menu, if any.
    static void Press(const QWidget& inWindow, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(inWindow.window()->windowHandle(), key, modifiers);
    }
    static void Press(const platform::Window& window, Qt::Key key,
                      Qt::KeyboardModifiers modifiers = {}) {
        Press(*window.Widget(), key, modifiers);
    }

    // The title of the open menu ("&Edit"), empty when none is open.
    static std::string OpenMenuTitle() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr ? menu->title().toStdString() : "";
    }

    // Alt pressed and let go with no key between, which gives the keyboard to the menu bar.
    static void TapAlt(const platform::Window& window) {
        QTest::keyPress(window.Widget()->windowHandle(), Qt::Key_Alt, Qt::AltModifier);
        QTest::keyRelease(window.Widget()->windowHandle(), Qt::Key_Alt);
    }

    // The items of the open menu as they stand: "-" for a line, a title in brackets when the item
    // is disabled.
    static std::vector<std::string> OpenMenuItems() {
        std::vector<std::string> items;
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            for (QAction* item : menu->actions()) {
                const std::string title = item->isSeparator() ? "-" : item->text().toStdString();
                if (item->isVisible())
                    items.push_back(item->isEnabled() ? title : "(" + title + ")");
            }
        }
        return items;
    }

    // Escape closes an open menu; the bar, which keeps the keyboard after a menu opened by key,
    // gives it back on a second one.
    static void CloseMenus(const platform::Window& window) {
        for (int i = 0; i < 2 && (QApplication::activePopupWidget() != nullptr ||
                                  qobject_cast<QMenuBar*>(QApplication::focusWidget()) != nullptr);
             ++i)
            Press(window, Qt::Key_Escape);
    }

    static bool HasFocus(const platform::RectControl& control) {
        return QApplication::focusWidget() == control.Widget();
    }

    static std::vector<std::string> Log() { return platform::recorder::Lines(); }

    static long Beeps() { return std::ranges::count(Log(), std::string("Beep")); }
};

// The window tests that start on the control window as the user first sees it: built, shown and
// active, after the about window has opened the run and given way. That window's timer is
// stopped, so that it does not give way once more in mid-test.
class FormFixture : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        AboutWnd& about = AboutWnd::Instance();
        about.Timer1().Mode(0);
        about.Hide();
        form = &ControlWnd::Instance();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
    }
    ControlWnd* form = nullptr;
};

}  // namespace korvane::testing
