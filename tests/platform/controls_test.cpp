// Controls on a real window: what a click reaches, radio and push buttons, the Tab chain, and the
// keys a field's and a window's KeyDown receive.
#include <QClipboard>
#include <QKeyEvent>
#include <QRadioButton>

#include "platform/qt/buttons.h"
#include "platform/qt/text_controls.h"
#include "sample_windows.h"

namespace {

using namespace sample;
using Keys = std::vector<std::string>;

class ControlsTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        form = &Form();
    }
    // Presses Tab, or Shift+Tab, `times` times and names the fields and buttons it visits.
    Keys TabWalk(int times, bool backwards = false) {
        Keys visited;
        for (int i = 0; i < times; ++i) {
            QTest::keyClick(Focused(), backwards ? Qt::Key_Backtab : Qt::Key_Tab,
                            backwards ? Qt::ShiftModifier : Qt::NoModifier);
            for (const char* name : {"m1fld", "n1fld", "rfld", "IBtn", "RBtn", "HelpBtn"}) {
                if (form->Get<platform::RectControl>(name).Widget() == Focused()) {
                    visited.push_back(name);
                }
            }
        }
        return visited;
    }
    FormWnd* form = nullptr;
};

TEST_F(ControlsTest, AClickReachesTheControlUnderThePointerAndPassivePartsPassItToTheWindow) {
    Mouse(*form, form->IBtn());
    EXPECT_EQ(form->iActions, 1);
    Mouse(*form, form->rfld());  // inside the earlier frame's rectangle
    EXPECT_EQ(Focused(), form->rfld().Widget());
    Mouse(*form, QPoint(300, 80));  // typeBox, right of RBtn
    const QPoint onLabel = WindowRect(form->Get<platform::Label>("note"), *form).center();
    Mouse(*form, onLabel);
    EXPECT_EQ(form->typeBoxPresses, 1);
    EXPECT_EQ(form->windowPresses, (std::vector<QPoint>{{300, 80}, onLabel}));

    Mouse(*form, form->RBtn());
    Mouse(*form, form->RBtn());  // a click on the chosen button acts again
    EXPECT_FALSE(form->IBtn().Value());
    EXPECT_TRUE(form->RBtn().Value());
    EXPECT_EQ(form->rActions, 2);
    // Set or cleared by code, a radio button is really so and raises no action.
    form->IBtn().Value(true);  // clears its sibling
    form->IBtn().Value(false);
    EXPECT_FALSE(static_cast<QRadioButton*>(form->IBtn().Widget())->isChecked());
    EXPECT_FALSE(form->RBtn().Value());
    form->IBtn().Visible(false);
    Mouse(*form, form->IBtn());
    EXPECT_EQ(form->iActions + form->rActions, 3);  // a hidden control takes no click
}

TEST_F(ControlsTest, APushButtonRaisesMouseDownOnPressActionOnReleaseAndTakesNoFocus) {
    auto& help = form->HelpBtn();
    Mouse(*form, help, QTest::MousePress);
    EXPECT_EQ(form->helpPresses, 1);
    EXPECT_EQ(form->helps, 0);
    Mouse(*form, help, QTest::MouseRelease);
    EXPECT_EQ(form->helps, 1);

    ASSERT_TRUE(Focus(form->m1fld()));
    Mouse(*form, form->Get<platform::PushButton>("CalcBtn"));  // TabStop 0
    EXPECT_EQ(form->calcs, 1);
    EXPECT_EQ(Focused(), form->m1fld().Widget());
    help.Enabled(false);
    Mouse(*form, help);
    EXPECT_EQ(form->helpPresses + form->helps, 2);
}

TEST_F(ControlsTest, TabFollowsReadingOrderAndTabIndexInsideAFrame) {
    form->RBtn().Value(true);
    ASSERT_TRUE(Focus(form->m1fld()));
    // Top to bottom: typeBox with the radio group (one stop, at its chosen button), the frame
    // with m1fld and n1fld, rfld, then HelpBtn; CalcBtn is no stop. By TabIndex alone rfld (2)
    // would come before the frame (3).
    EXPECT_EQ(TabWalk(5), (Keys{"n1fld", "rfld", "HelpBtn", "RBtn", "m1fld"}));
    EXPECT_EQ(TabWalk(2, true), (Keys{"RBtn", "HelpBtn"}));
    form->Get("n1fld").SetTabIndex(-1);  // now before m1fld inside the frame
    ASSERT_TRUE(Focus(form->Get("n1fld")));
    EXPECT_EQ(TabWalk(1), Keys{"m1fld"});
}

TEST_F(ControlsTest, AFieldsKeyDownGetsEachKeyAsTextAndCanStopItTheWindowGetsTheRest) {
    ASSERT_TRUE(Focus(form->m1fld()));
    QTest::keyClicks(Focused(), "1a.");
    QKeyEvent eacute(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9"));
    QApplication::sendEvent(Focused(), &eacute);
    EXPECT_EQ(form->m1fld().Text(), "1a.\xc3\xa9");

    form->stopKeys = true;
    for (Qt::Key key : {Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape,
                        Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Delete,
                        Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Tab,
                        Qt::Key_Shift, Qt::Key_F5}) {  // modifiers and F5 are no KeyDown
        QTest::keyClick(Focused(), key);
    }
    EXPECT_EQ(form->keys,
              (Keys{"1", "a", ".", "\xc3\xa9", "\x08", "\r", "\r", "\x1b", "\x1c", "\x1d", "\x1e",
                    "\x1f", "\x7f", "\x01", "\x04", "\x0b", "\x0c", "\t"}));
    EXPECT_EQ(form->m1fld().Text(), "1a.\xc3\xa9");  // every stopped key changed nothing
    EXPECT_EQ(Focused(), form->m1fld().Widget());
    EXPECT_EQ(form->calcs, 0);
    EXPECT_TRUE(form->windowKeys.empty());  // a field's keys never reach the window

    form->stopKeys = false;
    QTest::keyClick(Focused(), Qt::Key_Return);  // presses the first Default button
    EXPECT_EQ(form->calcs, 1);
    EXPECT_EQ(form->helps, 0);
    // Shortcuts are the field's own and never reach its KeyDown.
    form->keys.clear();
    for (Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_V}) {
        QTest::keyClick(Focused(), key, Qt::ControlModifier);
    }
    QTest::keyClick(Focused(), Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "1a.\xc3\xa9");
    EXPECT_EQ(form->m1fld().Text(),
              "1a.\xc3\xa9"
              "1a.\xc3\xa9");  // pasted text is not filtered
    EXPECT_TRUE(form->keys.empty());
    QTest::keyClick(Focused(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), form->Get("n1fld").Widget());

    // With no field focused the window gets the keys, and a modifier tapped alone; Ctrl+K and the
    // tapped Shift have no character, and the Ctrl of Ctrl+K is no key of its own.
    ASSERT_TRUE(Focus(form->HelpBtn()));
    QTest::keyClick(Focused(), Qt::Key_K);
    QTest::keyClick(Focused(), Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_Shift);
    EXPECT_EQ(form->windowKeys, (Keys{"k", "", ""}));
}

}  // namespace
