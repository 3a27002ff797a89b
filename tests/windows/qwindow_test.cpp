// The information window: what it shows, and that it hides rather than closes.
#include <QMainWindow>
#include <QTextBlock>
#include <QTextDocument>
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

TEST_F(QwindowTest, ItShowsTheFormulaPictureAboveTheCitationAndTheAttribution) {
    Qwindow& window = Information();
    EXPECT_EQ(window.Title(), "t-test Information");
    EXPECT_EQ(qobject_cast<QMainWindow*>(window.Widget())->centralWidget()->size(),
              QSize(500, 367));
    ASSERT_NE(tformula(), nullptr);
    EXPECT_EQ(window.Canvas1().Backdrop(), tformula());

    // One string: the citation, two carriage returns, the attribution and a blank.
    const std::string& text = Qwindow::InformationText();
    const std::size_t split = text.find("\r\r");
    ASSERT_NE(split, std::string::npos);
    EXPECT_EQ(text.substr(0, 48), "Probability calculation via Algorithm 8.7 from: ");
    EXPECT_EQ(text.substr(split - 17, 17), "Harrowgate Press.");
    EXPECT_NE(text.find("\u00A9", split), std::string::npos);
    EXPECT_EQ(text.back(), ' ');

    // On the screen the carriage returns end paragraphs: citation, a blank line, attribution.
    auto* edit = qobject_cast<QTextEdit*>(window.StaticText1().Widget());
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->document()->blockCount(), 3);
    EXPECT_TRUE(edit->document()->findBlockByNumber(0).text().endsWith("Harrowgate Press."));
    EXPECT_TRUE(edit->document()->findBlockByNumber(1).text().isEmpty());
    EXPECT_TRUE(edit->document()->findBlockByNumber(2).text().contains(QChar(0xA9)));
}

TEST_F(QwindowTest, TheTextTakesTheUsersKeys) {
    Qwindow& window = Information();
    auto* edit = qobject_cast<QTextEdit*>(window.StaticText1().Widget());
    ASSERT_NE(edit, nullptr);
    edit->moveCursor(QTextCursor::Start);
    QTest::keyClicks(edit, "Note: ");
    EXPECT_EQ(window.StaticText1().Text().substr(0, 17), "Note: Probability");
    EXPECT_TRUE(window.Visible());
}

TEST_F(QwindowTest, ClosingHidesTheOneInstanceAndKeepsWhatWasTyped) {
    Qwindow& window = Information();
    window.StaticText1().Text("typed by the user");
    window.Close();
    EXPECT_FALSE(window.Visible());
    EXPECT_EQ(&Qwindow::Instance(), &window);
    window.Show();
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(window.StaticText1().Text(), "typed by the user");
}

TEST_F(QwindowTest, PressesOnTheWindowItselfLeaveItOpen) {
    Qwindow& window = Information();
    QWindow* handle = window.Widget()->windowHandle();
    QTest::mouseClick(handle, Qt::LeftButton, {}, QPoint(20, 100));
    QTest::keyClick(handle, Qt::Key_Escape);
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(window.StaticText1().Text().substr(0, 11), "Probability");
    EXPECT_FALSE(window.HasMenuHandler("AboutMenuItem"));
    EXPECT_TRUE(window.IsEventImplemented("Close"));
    EXPECT_FALSE(window.IsEventImplemented("Activate"));
}

}  // namespace
}  // namespace korvane::testing
