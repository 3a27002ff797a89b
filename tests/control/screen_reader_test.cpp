// What a screen reader is told of the real form: the results said after a calculation, the
// fields' values whole, names and states, and every control's place (run at 1x and, as
// control_window_tests_at_2x, with QT_SCALE_FACTOR=2, where places are in screen pixels).
#include <QAccessible>
#include <QAccessibleInterface>
#include <QAccessibleTextInterface>
#include <string>
#include <vector>

#include "platform/qt/buttons.h"
#include "platform/qt/frames.h"
#include "platform/qt/spoken.h"
#include "platform/qt/text_controls.h"
#include "stats/messages.h"
#include "tests/windows/ui_test_support.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

QAccessibleInterface* Of(const platform::RectControl& control) {
    return QAccessible::queryAccessibleInterface(control.Widget());
}

QAccessibleInterface* Of(const platform::Window& window) {
    return QAccessible::queryAccessibleInterface(window.Widget());
}

std::string Name(const QAccessibleInterface* iface) {
    return iface->text(QAccessible::Name).toStdString();
}

// What is said, in order, as it is handed to screen readers.
class ScreenReaderTest : public FormFixture {
  protected:
    void SetUp() override {
        FormFixture::SetUp();
        platform::SetSpokenHook([this](const std::string& words) { said.push_back(words); });
    }
    void TearDown() override {
        platform::SetSpokenHook({});
        FormFixture::TearDown();
    }

    // Events are told once control is back in the event loop.
    std::vector<std::string> SaidAfter(const platform::RectControl& pressed) {
        said.clear();
        Click(pressed);
        QTest::qWait(1);
        return said;
    }

    // The keyed sample: means 10 and 8, deviations 2 and 3, N 1 10, and the last field (N 2, or
    // r for related means) as given.
    void TypeSample(const platform::TextField& last, const std::string& lastText) {
        for (const auto& [field, text] : {std::pair{&form->m1fld(), "10"},
                                          {&form->sd1fld(), "2"},
                                          {&form->n1fld(), "10"},
                                          {&form->m2fld(), "8"},
                                          {&form->sd2fld(), "3"}}) {
            Type(*field, text);
        }
        Type(last, lastText);
    }

    std::vector<std::string> said;
};

TEST_F(ScreenReaderTest, EachCalculationSaysItsResultsOnceAndNothingElseDoes) {
    Click(form->IBtn());
    TypeSample(form->n2fld(), "12");
    const std::vector<std::string> independent{"df 20, t +1.798, p .0873 two-tailed"};
    EXPECT_EQ(SaidAfter(form->CalcBtn()), independent);
    EXPECT_EQ(SaidAfter(form->CalcBtn()), independent) << "the same results, said again";

    QAccessibleInterface* note = Of(*form)->child(Of(*form)->childCount() - 1)->child(0);
    EXPECT_EQ(note->role(), QAccessible::Notification);
    EXPECT_EQ(note->parent()->role(), QAccessible::StatusBar);
    EXPECT_EQ(note->parent()->state().invisible, 1) << "the status line is never drawn";
    EXPECT_EQ(note->state().invisible, 0);
    EXPECT_EQ(Name(note), independent[0]);

    form->n2fld().Text("");
    EXPECT_EQ(SaidAfter(form->CalcBtn()), std::vector<std::string>{}) << "a refusal";
    EXPECT_EQ(messages, std::vector<std::string>{messages::kN2});
    EXPECT_TRUE(form->pfld().Widget()->isVisible()) << "the earlier results still show";

    EXPECT_EQ(SaidAfter(form->ClearBtn()), std::vector<std::string>{});

    Click(form->RBtn());
    TypeSample(form->rfld(), ".5");
    EXPECT_EQ(SaidAfter(form->CalcBtn()),
              std::vector<std::string>{"df 9, t +2.390, p .0405 two-tailed"});
}

// A reader speaks a value run by run; runs of no length once lost the last character.
TEST_F(ScreenReaderTest, AFieldsValueIsOneRunOfItsWholeText) {
    Click(form->IBtn());
    for (const std::string typed : {"10", "2", "-1.5", ""}) {
        SCOPED_TRACE(typed);
        form->m1fld().Text(typed);
        QAccessibleTextInterface* text = Of(form->m1fld())->textInterface();
        ASSERT_NE(text, nullptr);
        const int length = int(typed.size());
        EXPECT_EQ(text->characterCount(), length);
        for (int offset = 0; offset <= length; ++offset) {
            int start = -1, end = -1;
            text->attributes(offset, &start, &end);
            EXPECT_EQ(std::pair(start, end), std::pair(0, length)) << "at " << offset;
        }
        int start = -1, end = -1;
        EXPECT_EQ(text->textAtOffset(0, QAccessible::LineBoundary, &start, &end).toStdString(),
                  typed);
        text->setSelection(0, 0, length);
        text->selection(0, &start, &end);
        EXPECT_EQ(std::pair(start, end), std::pair(0, length));
        EXPECT_EQ(text->selectionCount(), length > 0 ? 1 : 0);
    }
    EXPECT_EQ(Of(form->pfld())->state().readOnly, 1);
    EXPECT_EQ(Of(form->m1fld())->state().editable, 1);
    form->m1fld().Text("10");
    EXPECT_EQ(Of(form->m1fld())->textInterface()->characterRect(1).isEmpty(), false);
}

TEST_F(ScreenReaderTest, WindowsButtonsAndFramesAreSpokenByWhatTheyShow) {
    Click(form->IBtn());
    EXPECT_EQ(Name(Of(form->CalcBtn())), "Calculate");
    EXPECT_EQ(Of(form->CalcBtn())->role(), QAccessible::PushButton);
    EXPECT_EQ(Of(form->IBtn())->role(), QAccessible::RadioButton);
    EXPECT_EQ(Of(form->IBtn())->state().checked, 1);
    EXPECT_EQ(Of(form->RBtn())->state().checked, 0);
    EXPECT_EQ(Name(Of(form->typeBox())), "Kind of t-test");
    EXPECT_EQ(Name(Of(form->GroupBox1())), "Sample 1");

    // Its own action chooses the test, as a click does.
    Of(form->RBtn())->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(Globals::btn, 2);

    AboutWnd& about = AboutWnd::Instance();
    about.Show();
    EXPECT_EQ(Name(Of(about)), "About Korvane");
    EXPECT_NE(Of(about)->text(QAccessible::Description).toStdString().find("Korvane developers"),
              std::string::npos);
    about.Hide();

    Qwindow& info = Qwindow::Instance();
    info.Show();
    EXPECT_EQ(Name(Of(info)), "t-test Information");
    QAccessibleInterface* text = Of(info.StaticText1());
    EXPECT_EQ(Name(text), "Citation");
    EXPECT_EQ(text->role(), QAccessible::EditableText);
    EXPECT_EQ(text->state().multiLine, 1);
    EXPECT_NE(text->text(QAccessible::Value).toStdString().find("Algorithm"), std::string::npos);
}

// The place a reader is given holds the control on the screen, and asking the window what is
// there finds that control.
TEST_F(ScreenReaderTest, EveryShownControlIsFoundAtTheCentreOfTheExtentsItReports) {
    Click(form->RBtn());
    form->Widget()->move(40, 30);
    QTest::qWait(1);
    QAccessibleInterface* window = Of(*form);
    int checked = 0;
    for (std::size_t i = 0; i < form->ControlCount(); ++i) {
        auto* control = dynamic_cast<platform::RectControl*>(form->ControlAt(i));
        if (control == nullptr || !control->Widget()->isVisible()) {
            continue;
        }
        SCOPED_TRACE(control->Name());
        const QWidget& widget = *control->Widget();
        const double scale = widget.devicePixelRatioF();
        const QPoint at = widget.mapToGlobal(QPoint(0, 0)) * scale;
        const QRect reported = Of(*control)->rect();
        EXPECT_EQ(reported, QRect(at, widget.size() * scale));

        QAccessibleInterface* found = window;
        const QPoint centre = reported.center();
        while (found->object() != &widget) {
            QAccessibleInterface* deeper = found->childAt(centre.x(), centre.y());
            if (deeper == nullptr) {
                break;
            }
            found = deeper;
        }
        EXPECT_EQ(found->object(), &widget) << "found " << Name(found);
        ++checked;
    }
    EXPECT_GT(checked, 20);
}

}  // namespace
}  // namespace korvane::testing
