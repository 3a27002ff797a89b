// The key filter of the four fields of means and standard deviations, typed key by key, and the
// editing shortcuts that must reach every field untouched.
#include <QClipboard>
#include <QGuiApplication>
#include <string>

#include "tests/windows/ui_test_support.h"

namespace korvane::testing {
namespace {

class KeyFilterTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        form = &Form();
        Click(form->RBtn());  // shows every entry field but n2fld
        platform::recorder::Start();
    }

    platform::TextField& Field(const std::string& name) {
        return platform::RuntimeCheckCast<platform::TextField>(form->_ControlByName(name));
    }

    static void Key(const platform::TextField& field, Qt::Key key,
                    Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(field.Widget(), key, modifiers);
    }

    ControlWnd* form = nullptr;
};

const char* const kFiltered[] = {"m1fld", "sd1fld", "m2fld", "sd2fld"};

TEST_F(KeyFilterTest, DigitsMinusPointAndSlashPassInAllFourFieldsWithoutABeep) {
    for (const char* name : kFiltered) {
        Type(Field(name), "-12.5/0123456789");
        EXPECT_EQ(Field(name).Text(), "-12.5/0123456789") << name;
    }
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(KeyFilterTest, CommaPlusBlankColonAndLettersBeepAndDoNotReachTheField) {
    Type(form->sd2fld(), "1,+ :e5");
    EXPECT_EQ(form->sd2fld().Text(), "15");
    EXPECT_EQ(Beeps(), 5);
}

TEST_F(KeyFilterTest, BackspaceEditsAndTabLeavesAFilteredFieldWithoutABeep) {
    Type(form->m1fld(), "12.5");
    Key(form->m1fld(), Qt::Key_Backspace);
    EXPECT_EQ(form->m1fld().Text(), "12.");
    Key(form->m1fld(), Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(form->sd1fld()));
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(KeyFilterTest, ArrowsAndForwardDeleteBeepAndLeaveTheCaret) {
    Type(form->m2fld(), "12");
    QLineEdit* edit = Edit(form->m2fld());
    edit->setCursorPosition(1);
    Key(form->m2fld(), Qt::Key_Left);
    Key(form->m2fld(), Qt::Key_Right);
    Key(form->m2fld(), Qt::Key_Delete);
    EXPECT_EQ(edit->cursorPosition(), 1);
    EXPECT_EQ(form->m2fld().Text(), "12");
    EXPECT_EQ(Beeps(), 3);
}

// With no test in force (btn 0) a press of Calculate would show a message; none comes.
TEST_F(KeyFilterTest, ReturnInAFilteredFieldBeepsAndPressesNothing) {
    Globals::btn = 0;
    Type(form->m1fld(), "1");
    Key(form->m1fld(), Qt::Key_Return);
    EXPECT_EQ(Beeps(), 1);
    EXPECT_TRUE(messages.empty());
}

TEST_F(KeyFilterTest, TheUnfilteredFieldsTakeCommasLettersAndBlanks) {
    for (const char* name : {"n1fld", "rfld"}) {
        Type(Field(name), "1,5 e+");
        EXPECT_EQ(Field(name).Text(), "1,5 e+") << name;
    }
    Click(form->IBtn());
    Type(form->n2fld(), "a,b");
    EXPECT_EQ(form->n2fld().Text(), "a,b");
    EXPECT_EQ(Beeps(), 0);
}

// The first default button is Calculate; Return in a field without a filter presses it.
TEST_F(KeyFilterTest, ReturnInAnUnfilteredFieldPressesCalculate) {
    Type(form->m1fld(), "10");
    Type(form->m2fld(), "8");
    Type(form->sd1fld(), "2");
    Type(form->sd2fld(), "3");
    Type(form->n1fld(), "10");
    Type(form->rfld(), ".5");
    Key(form->rfld(), Qt::Key_Return);
    EXPECT_EQ(form->tfld().Text(), "+2.390");
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(KeyFilterTest, CopyCutAndPasteUseTheFieldsOwnEditingUnfilteredAndNeverBeep) {
    Type(form->m1fld(), "12.5");
    Key(form->m1fld(), Qt::Key_A, Qt::ControlModifier);
    Key(form->m1fld(), Qt::Key_C, Qt::ControlModifier);
    Click(form->m2fld());
    Key(form->m2fld(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form->m2fld().Text(), "12.5");
    Key(form->m2fld(), Qt::Key_A, Qt::ControlModifier);
    Key(form->m2fld(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(form->m2fld().Text(), "");
    Key(form->m2fld(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->m2fld().Text(), "12.5");
    EXPECT_EQ(form->m1fld().Text(), "12.5");

    QGuiApplication::clipboard()->setText("1,5e");  // pasted text is not filtered
    Click(form->m1fld());
    Key(form->m1fld(), Qt::Key_A, Qt::ControlModifier);
    Key(form->m1fld(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form->m1fld().Text(), "1,5e");
    EXPECT_EQ(Beeps(), 0);
}

}  // namespace
}  // namespace korvane::testing
