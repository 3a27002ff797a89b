// The information window: what it shows, and that it hides rather than closes.
#include <QTextEdit>
#include <string>

#include "tests/windows/ui_test_support.h"
#include "windows/pictures.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

using QwindowTest = UiTest;

Qwindow& Information() {
    Qwindow& window = Qwindow::Instance();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.Widget()));
    return window;
}

TEST_F(QwindowTest, ItShowsTheFormulaAboveTheCitationAndTheAttribution) {
    Qwindow& window = Information();
    EXPECT_EQ(window.Title(), "t-test Information");
    EXPECT_EQ(window.ContentWidget()->size(), QSize(500, 367));
    ASSERT_NE(tformula(), nullptr);
    EXPECT_EQ(QSize(tformula()->Width(), tformula()->Height()), QSize(282, 216));
    EXPECT_EQ(window.Canvas1().Backdrop(), tformula());
    ASSERT_NE(tlarge(), nullptr);
    EXPECT_EQ(QSize(tlarge()->Width(), tlarge()->Height()), QSize(488, 73));

    EXPECT_EQ(window.StaticText1().Text(),
              "Probability calculation via Algorithm 8.7 from: Wrenfield, D., Ostrander, A. H., & "
              "Pellmoor, G. M. (1990). Basic statistical computing (2nd ed.). Harrowgate Press."
              "\r\rKorvane is written and maintained by the Korvane developers, \u00A9 2026. ");
    // On the screen the carriage returns end paragraphs: citation, a blank line, attribution.
    auto* edit = qobject_cast<QTextEdit*>(window.StaticText1().Widget());
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->toPlainText().split('\n').size(), 3);
    EXPECT_TRUE(edit->toPlainText().split('\n')[1].isEmpty());
}

TEST_F(QwindowTest, ClosingHidesTheOneInstanceAndKeepsWhatWasTyped) {
    Qwindow& window = Information();
    auto* edit = qobject_cast<QTextEdit*>(window.StaticText1().Widget());
    edit->moveCursor(QTextCursor::Start);
    QTest::keyClicks(edit, "Note: ");
    QTest::mouseClick(window.Widget()->windowHandle(), Qt::LeftButton, {}, QPoint(20, 100));
    EXPECT_TRUE(window.Visible());  // a press on the window itself leaves it open

    window.Close();
    EXPECT_FALSE(window.Visible());
    EXPECT_EQ(&Qwindow::Instance(), &window);
    window.Show();
    EXPECT_EQ(window.StaticText1().Text().substr(0, 17), "Note: Probability");
}

}  // namespace
}  // namespace korvane::testing
