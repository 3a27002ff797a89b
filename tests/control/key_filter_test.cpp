// The key filter of the four fields of means and standard deviations, typed key by key, and
// the editing shortcuts that must reach every field untouched.
#include <QClipboard>
#include <QGuiApplication>
#include <string>

#include "stats/messages.h"
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

    static void Key(const platform::TextField& field, Qt::Key key,
                    Qt::KeyboardModifiers mods = {}) {
        QTest::keyClick(field.Widget(), key, mods);
    }

    ControlWnd* form = nullptr;
};

// Digits, minus, point and slash pass; every other character beeps and is dropped, in the
// four filtered fields only.
TEST_F(KeyFilterTest, TypedCharactersPassOrBeepByTheField) {
    struct Case {
        platform::TextField* field;
        const char* typed;
        const char* kept;
        long beeps;
    };
    for (const Case& c :
         {Case{&form->m1fld(), "-12.5/0123456789", "-12.5/0123456789", 0},
          Case{&form->sd1fld(), "1,+ :e5", "15", 5}, Case{&form->m2fld(), ",;:<", "", 4},
          Case{&form->sd2fld(), "9.-", "9.-", 0}, Case{&form->n1fld(), "1,5 e+:", "1,5 e+:", 0},
          Case{&form->rfld(), "a,b", "a,b", 0}}) {
        const long before = Beeps();
        Type(*c.field, c.typed);
        EXPECT_EQ(c.field->Text(), c.kept) << c.typed;
        EXPECT_EQ(Beeps() - before, c.beeps) << c.typed;
    }
}

TEST_F(KeyFilterTest, BackspaceAndTabPassWhileArrowsDeleteAndReturnBeep) {
    Type(form->m2fld(), "123");
    Key(form->m2fld(), Qt::Key_Backspace);
    Edit(form->m2fld())->setCursorPosition(1);
    for (Qt::Key refused : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Delete, Qt::Key_Return}) {
        Key(form->m2fld(), refused);
    }
    EXPECT_EQ(form->m2fld().Text(), "12");
    EXPECT_EQ(Edit(form->m2fld())->cursorPosition(), 1);
    EXPECT_EQ(Beeps(), 4);
    EXPECT_TRUE(messages.empty()) << "Return pressed Calculate";
    Key(form->m2fld(), Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(form->sd2fld()));
    EXPECT_EQ(Beeps(), 4);
}

// Calculate is the first default button; Return in a field without a filter presses it.
TEST_F(KeyFilterTest, ReturnInAnUnfilteredFieldPressesCalculate) {
    Type(form->rfld(), ".5");
    Key(form->rfld(), Qt::Key_Return);
    EXPECT_EQ(messages, std::vector<std::string>{messages::kMean1});
}

TEST_F(KeyFilterTest, CopyCutUndoAndPasteReachTheFieldsUnfilteredWithoutABeep) {
    Type(form->m1fld(), "12.5");
    Key(form->m1fld(), Qt::Key_A, Qt::ControlModifier);
    Key(form->m1fld(), Qt::Key_C, Qt::ControlModifier);
    Click(form->m2fld());
    Key(form->m2fld(), Qt::Key_V, Qt::ControlModifier);
    Key(form->m2fld(), Qt::Key_A, Qt::ControlModifier);
    Key(form->m2fld(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(form->m2fld().Text(), "");
    Key(form->m2fld(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->m2fld().Text(), "12.5");

    QGuiApplication::clipboard()->setText("1,5e");
    Click(form->m1fld());
    Key(form->m1fld(), Qt::Key_A, Qt::ControlModifier);
    Key(form->m1fld(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form->m1fld().Text(), "1,5e");
    EXPECT_EQ(Beeps(), 0);
}

}  // namespace
}  // namespace korvane::testing
