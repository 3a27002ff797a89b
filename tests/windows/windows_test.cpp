// The windows of windows/: the one menu bar as a user sees it on the control window, and the
// information window, which shows the formula and its text and hides rather than closes.
#include <QAction>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QTextEdit>
#include <ranges>
#include <string>

#include "tests/windows/ui_test_support.h"
#include "windows/menu.h"
#include "windows/pictures.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

using MenuTest = FormFixture;
using QwindowTest = UiTest;

// Each shown menu and, indented, each shown item as it stands once its menu opens: the caption,
// the shortcut, and the caption in brackets when the item is disabled. Caption-less items and
// those of another desktop are hidden.
std::vector<std::string> ShownBar(QMenuBar& bar) {
    std::vector<std::string> lines;
    for (QAction* top : bar.actions() | std::views::filter(&QAction::isVisible)) {
        lines.push_back(top->text().toStdString());
        emit top->menu()->aboutToShow();
        for (QAction* item : top->menu()->actions() | std::views::filter(&QAction::isVisible)) {
            const std::string caption = item->isSeparator() ? "-" : item->text().toStdString();
            const std::string keys = item->shortcut().toString().toStdString();
            lines.push_back("  " + (item->isEnabled() ? caption : "(" + caption + ")") +
                            (keys.empty() ? "" : " " + keys));
        }
    }
    return lines;
}

TEST_F(MenuTest, TheBarShowsFileEditAndWindowWithTheirShortcutsAndEnabledStates) {
    // Text to paste, but the focus is on the choice of test, where no edit can act.
    QGuiApplication::clipboard()->setText(QStringLiteral("7"));

    EXPECT_EQ(
        ShownBar(*form->Widget()->findChild<QMenuBar*>()),
        (std::vector<std::string>{"File", "  (Print)", "  Quit Ctrl+Q", "Edit", "  (Undo) Ctrl+Z",
                                  "  -", "  (Cut) Ctrl+X", "  (Copy) Ctrl+C", "  (Paste) Ctrl+V",
                                  "Window", "  (Control)", "  About Korvane"}));
    EXPECT_EQ(form->MenuBar(), &Menu::Instance());
}

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

    const std::string citation =
        "Probability calculation via Algorithm 8.7 from: Wrenfield, D., Ostrander, A. H., & "
        "Pellmoor, G. M. (1990). Basic statistical computing (2nd ed.). Harrowgate Press.";
    const std::string attribution =
        "Korvane is written and maintained by the Korvane developers, \u00A9 2026. ";
    EXPECT_EQ(window.StaticText1().Text(), citation + "\r\r" + attribution);
    // On the screen the carriage returns end paragraphs: citation, a blank line, attribution.
    EXPECT_EQ(qobject_cast<QTextEdit*>(window.StaticText1().Widget())->toPlainText().toStdString(),
              citation + "\n\n" + attribution);
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
