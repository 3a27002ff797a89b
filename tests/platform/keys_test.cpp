// Keys: what KeyDown of a text field and of a window receives, what it can stop, and the
// shortcuts that never reach it.
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>

#include "sample_windows.h"

namespace {

using namespace sample;

class KeysTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        form = &FormWnd::Instance();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
        form->m1fld().SetFocus();
        ASSERT_TRUE(QTest::qWaitFor([this] { return Focused() == form->m1fld().Widget(); }));
    }
    static QWidget* Focused() { return QApplication::focusWidget(); }
    QLineEdit& Line(platform::TextField& field) { return *static_cast<QLineEdit*>(field.Widget()); }

    FormWnd* form = nullptr;
};

TEST_F(KeysTest, APrintableKeyGivesItsCharacterAndReachesTheFieldButTextByCodeDoesNot) {
    form->m1fld().Text("abc");
    EXPECT_TRUE(form->keys.empty());
    EXPECT_EQ(Line(form->m1fld()).text(), QStringLiteral("abc"));
    form->m1fld().Text("");
    QTest::keyClicks(Focused(), "1a.");

    EXPECT_EQ(form->keys, (std::vector<std::string>{"1", "a", "."}));
    EXPECT_EQ(form->m1fld().Text(), "1a.");
}

TEST_F(KeysTest, AKeyBeyondAsciiGivesItsCharacterInUtf8) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9"));
    QApplication::sendEvent(Focused(), &press);

    ASSERT_EQ(form->keys.size(), 1u);
    EXPECT_EQ(form->keys[0], "\xc3\xa9");
}

TEST_F(KeysTest, EditingAndMovingKeysGiveTheirControlCodes) {
    const std::vector<std::pair<Qt::Key, std::string>> presses = {
        {Qt::Key_Backspace, "\x08"}, {Qt::Key_Return, "\x0d"}, {Qt::Key_Enter, "\x0d"},
        {Qt::Key_Escape, "\x1b"},    {Qt::Key_Left, "\x1c"},   {Qt::Key_Right, "\x1d"},
        {Qt::Key_Up, "\x1e"},        {Qt::Key_Down, "\x1f"},   {Qt::Key_Delete, "\x7f"},
        {Qt::Key_Home, "\x01"},      {Qt::Key_End, "\x04"},    {Qt::Key_PageUp, "\x0b"},
        {Qt::Key_PageDown, "\x0c"}};
    form->stopKeys = true;  // keep the focus and the text where they are

    for (const auto& [key, code] : presses) {
        QTest::keyClick(Focused(), key);
    }

    std::vector<std::string> expected;
    for (const auto& press : presses) {
        expected.push_back(press.second);
    }
    EXPECT_EQ(form->keys, expected);
}

TEST_F(KeysTest, TabGivesCode9AndThenMovesTheFocus) {
    QTest::keyClick(Focused(), Qt::Key_Tab);

    EXPECT_EQ(form->keys, std::vector<std::string>{"\x09"});
    EXPECT_EQ(Focused(), form->n1fld().Widget());
}

TEST_F(KeysTest, ATrueKeyDownStopsTheKey) {
    form->m1fld().Text("15");
    Line(form->m1fld()).setCursorPosition(2);
    form->stopKeys = true;

    QTest::keyClicks(Focused(), "e");
    QTest::keyClick(Focused(), Qt::Key_Backspace);
    QTest::keyClick(Focused(), Qt::Key_Left);
    QTest::keyClick(Focused(), Qt::Key_Tab);

    EXPECT_EQ(form->m1fld().Text(), "15");
    EXPECT_EQ(Line(form->m1fld()).cursorPosition(), 2);
    EXPECT_EQ(Focused(), form->m1fld().Widget());
    EXPECT_EQ(form->keys.size(), 4u);

    form->stopKeys = false;  // a Backspace let through edits
    QTest::keyClick(Focused(), Qt::Key_Backspace);
    EXPECT_EQ(form->m1fld().Text(), "1");
}

TEST_F(KeysTest, CtrlShortcutsNeverReachKeyDownButCopyAndPasteWork) {
    form->m1fld().Text("12.5");

    QTest::keyClick(Focused(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("12.5"));
    form->rfld().SetFocus();
    QTRY_COMPARE(Focused(), form->rfld().Widget());
    QTest::keyClick(Focused(), Qt::Key_V, Qt::ControlModifier);
    form->m1fld().SetFocus();
    QTRY_COMPARE(Focused(), form->m1fld().Widget());
    QTest::keyClick(Focused(), Qt::Key_End);
    form->keys.clear();
    QTest::keyClick(Focused(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(Focused(), Qt::Key_X, Qt::AltModifier);

    EXPECT_EQ(form->rfld().Text(), "12.5");
    EXPECT_EQ(form->m1fld().Text(), "12.512.5");  // pasted text is not filtered
    EXPECT_TRUE(form->keys.empty());
}

TEST_F(KeysTest, ReturnPressesTheFirstDefaultButtonUnlessKeyDownStopsIt) {
    form->stopKeys = true;
    QTest::keyClick(Focused(), Qt::Key_Return);
    EXPECT_EQ(form->calcActions, 0);

    form->stopKeys = false;
    QTest::keyClick(Focused(), Qt::Key_Return);
    EXPECT_EQ(form->calcActions, 1);  // CalcBtn comes before HelpBtn, both Default
    EXPECT_EQ(form->helpActions, 0);

    form->n1fld().SetFocus();  // a field without a filter
    QTRY_COMPARE(Focused(), form->n1fld().Widget());
    QTest::keyClick(Focused(), Qt::Key_Enter);
    EXPECT_EQ(form->calcActions, 2);
}

TEST_F(KeysTest, ModifierAndFunctionKeysAreNoKeyDownAndFieldKeysNeverReachTheWindow) {
    QTest::keyClick(Focused(), Qt::Key_Shift);
    QTest::keyClick(Focused(), Qt::Key_F5);
    EXPECT_TRUE(form->keys.empty());

    QTest::keyClicks(Focused(), "7");
    QTest::keyClick(Focused(), Qt::Key_Escape);
    EXPECT_TRUE(form->windowKeys.empty());
}

TEST_F(KeysTest, EveryKeyWithNoFieldFocusedReachesTheWindowButAModifierHeldForAnotherKeyDoesNot) {
    form->HelpBtn().SetFocus();
    QTRY_COMPARE(Focused(), form->HelpBtn().Widget());

    QTest::keyClick(Focused(), Qt::Key_K);
    QTest::keyClick(Focused(), Qt::Key_K, Qt::ControlModifier);  // Ctrl held for Ctrl+K
    QTest::keyClick(Focused(), Qt::Key_Shift);                   // Shift tapped alone
    QTest::keyClick(Focused(), Qt::Key_F5);

    // Ctrl+K, the tapped Shift and F5 have no character; the Ctrl of Ctrl+K is no key of its own.
    EXPECT_EQ(form->windowKeys, (std::vector<std::string>{"k", "", "", ""}));
}

TEST_F(KeysTest, AReadOnlyFieldIsSelectableButNotEditable) {
    constexpr auto kReadOnly = PLATFORM_RECORD(Bool("ReadOnly", true));
    platform::ApplyRecord(form->rfld(), kReadOnly.view());
    form->rfld().Text("0.05");
    form->rfld().SetFocus();
    QTRY_COMPARE(Focused(), form->rfld().Widget());

    QTest::keyClicks(Focused(), "9");
    QTest::keyClick(Focused(), Qt::Key_A, Qt::ControlModifier);

    EXPECT_EQ(form->rfld().Text(), "0.05");
    EXPECT_TRUE(form->rfld().ReadOnly());
    EXPECT_EQ(Line(form->rfld()).selectedText(), QStringLiteral("0.05"));
}

}  // namespace
