// Controls on a real window: where records put them, what a click reaches, radio and push
// buttons, the Tab chain, and the keys a field's and a window's KeyDown receive.
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>

#include "sample_windows.h"

namespace {

using namespace sample;
using Keys = std::vector<std::string>;

QWidget* Focused() {
    return QApplication::focusWidget();
}

class ControlsTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        form = &Form();
    }
    // Presses Tab (or Shift+Tab) `times` times and names the controls it visits.
    Keys TabWalk(int times, bool backwards = false) {
        Keys visited;
        for (int i = 0; i < times; ++i) {
            QTest::keyClick(Focused(), backwards ? Qt::Key_Backtab : Qt::Key_Tab,
                            backwards ? Qt::ShiftModifier : Qt::NoModifier);
            for (std::size_t c = 0; c < form->ControlCount(); ++c) {
                auto* control = dynamic_cast<platform::RectControl*>(form->ControlAt(c));
                if (control != nullptr && control->Widget() == Focused()) {
                    visited.push_back(control->Name());
                }
            }
        }
        return visited;
    }
    FormWnd* form = nullptr;
};

TEST_F(ControlsTest, ControlsStandAtTheWindowCoordinatesOfTheirRecordsInsideAnyFrame) {
    const auto& typeBox = form->Get<platform::GroupBox>("typeBox");
    EXPECT_EQ(form->m1fld().Widget()->parentWidget(),
              form->Get<platform::GroupBox>("box").Widget());
    EXPECT_EQ(WindowRect(form->m1fld(), *form), QRect(40, 125, 80, 22));
    EXPECT_EQ(form->rfld().Widget()->parentWidget(), form->ContentWidget());
    EXPECT_EQ(WindowRect(form->rfld(), *form), QRect(210, 175, 80, 22));
    // Radio buttons drawn inside a later frame become its group and keep their place.
    EXPECT_EQ(form->IBtn().Widget()->parentWidget(), typeBox.Widget());
    EXPECT_EQ(WindowRect(form->RBtn(), *form), QRect(170, 60, 120, 18));
}

TEST_F(ControlsTest, AClickReachesTheControlUnderThePointerAndPassivePartsGiveItToTheWindow) {
    Mouse(*form, form->IBtn());  // inside the later frame
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
    form->IBtn().Visible(false);
    Mouse(*form, form->IBtn());
    EXPECT_EQ(form->iActions, 1);  // a hidden control takes no click
}

TEST_F(ControlsTest, ARadioButtonSetOrClearedByCodeIsReallySoAndRaisesNoAction) {
    form->IBtn().Value(true);
    form->IBtn().Value(false);
    EXPECT_FALSE(static_cast<QRadioButton*>(form->IBtn().Widget())->isChecked());
    form->IBtn().Value(true);
    form->RBtn().Value(true);  // clears its sibling
    EXPECT_FALSE(form->IBtn().Value());
    EXPECT_TRUE(form->RBtn().Value());
    EXPECT_EQ(form->iActions + form->rActions, 0);
}

TEST_F(ControlsTest, APushButtonRaisesMouseDownOnPressActionOnReleaseAndTakesNoFocus) {
    auto& help = form->HelpBtn();
    Mouse(*form, help, QTest::MousePress);
    EXPECT_EQ(form->helps, 0);
    Mouse(*form, help, QTest::MouseRelease);
    EXPECT_TRUE(form->helpPressedBeforeAction);
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

TEST_F(ControlsTest, AFieldsKeyDownGetsEachKeyAsTextAndCanStopIt) {
    ASSERT_TRUE(Focus(form->m1fld()));
    form->m1fld().Text("15");  // text by code is no key
    QTest::keyClicks(Focused(), "1a.");
    QKeyEvent eacute(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9"));
    QApplication::sendEvent(Focused(), &eacute);
    EXPECT_EQ(form->m1fld().Text(), "151a.\xc3\xa9");

    form->stopKeys = true;
    const std::vector<std::pair<Qt::Key, std::string>> presses = {
        {Qt::Key_Backspace, "\x08"}, {Qt::Key_Return, "\x0d"}, {Qt::Key_Enter, "\x0d"},
        {Qt::Key_Escape, "\x1b"},    {Qt::Key_Left, "\x1c"},   {Qt::Key_Right, "\x1d"},
        {Qt::Key_Up, "\x1e"},        {Qt::Key_Down, "\x1f"},   {Qt::Key_Delete, "\x7f"},
        {Qt::Key_Home, "\x01"},      {Qt::Key_End, "\x04"},    {Qt::Key_PageUp, "\x0b"},
        {Qt::Key_PageDown, "\x0c"},  {Qt::Key_Tab, "\x09"}};
    Keys expected = {"1", "a", ".", "\xc3\xa9"};
    for (const auto& [key, code] : presses) {
        QTest::keyClick(Focused(), key);
        expected.push_back(code);
    }
    QTest::keyClick(Focused(), Qt::Key_Shift);  // modifiers and function keys are no KeyDown
    QTest::keyClick(Focused(), Qt::Key_F5);
    EXPECT_EQ(form->keys, expected);
    EXPECT_EQ(form->m1fld().Text(), "151a.\xc3\xa9");  // every stopped key changed nothing
    EXPECT_EQ(Focused(), form->m1fld().Widget());
    EXPECT_EQ(form->calcs, 0);
    EXPECT_TRUE(form->windowKeys.empty());  // a field's keys never reach the window

    form->stopKeys = false;
    QTest::keyClick(Focused(), Qt::Key_Return);  // presses the first Default button
    EXPECT_EQ(form->calcs, 1);
    EXPECT_EQ(form->helps, 0);
    QTest::keyClick(Focused(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), form->Get("n1fld").Widget());
}

TEST_F(ControlsTest, ShortcutsAreTheFieldsOwnAndNeverReachItsKeyDown) {
    ASSERT_TRUE(Focus(form->m1fld()));
    form->m1fld().Text("12.5");
    QTest::keyClick(Focused(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_X, Qt::AltModifier);

    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("12.5"));
    EXPECT_EQ(form->m1fld().Text(), "12.512.5");  // pasted text is not filtered
    EXPECT_TRUE(form->keys.empty());
}

TEST_F(ControlsTest, WithNoFieldFocusedTheWindowGetsKeysAndAModifierTappedAlone) {
    ASSERT_TRUE(Focus(form->HelpBtn()));
    QTest::keyClick(Focused(), Qt::Key_K);
    QTest::keyClick(Focused(), Qt::Key_K, Qt::ControlModifier);  // Ctrl held for Ctrl+K
    QTest::keyClick(Focused(), Qt::Key_Shift);                   // Shift tapped alone
    // Ctrl+K and the tapped Shift have no character; the Ctrl of Ctrl+K is no key of its own.
    EXPECT_EQ(form->windowKeys, (Keys{"k", "", ""}));
}

TEST_F(ControlsTest, AReadOnlyFieldIsSelectableButNotEditable) {
    platform::ApplyRecord(form->rfld(), PLATFORM_RECORD(Bool("ReadOnly", true)).view());
    form->rfld().Text("0.05");
    ASSERT_TRUE(Focus(form->rfld()));
    QTest::keyClicks(Focused(), "9");
    QTest::keyClick(Focused(), Qt::Key_Backspace);
    QTest::keyClick(Focused(), Qt::Key_A, Qt::ControlModifier);

    EXPECT_EQ(form->rfld().Text(), "0.05");
    EXPECT_EQ(static_cast<QLineEdit*>(Focused())->selectedText(), QStringLiteral("0.05"));
}

}  // namespace
