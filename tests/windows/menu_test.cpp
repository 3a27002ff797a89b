// The one menu bar as a user sees it on the control window.
#include <QAction>
#include <QClipboard>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "tests/windows/ui_test_support.h"
#include "windows/menu.h"

namespace korvane::testing {
namespace {

using MenuTest = UiTest;

// Each shown menu and, indented, each shown item as it stands once its menu opens: the caption,
// the shortcut, and the caption in brackets when the item is disabled.
std::vector<std::string> ShownBar(QMenuBar& bar) {
    std::vector<std::string> lines;
    for (QAction* top : bar.actions()) {
        if (top->isVisible()) {
            lines.push_back(top->text().toStdString());
            emit top->menu()->aboutToShow();
        }
        for (QAction* item : top->isVisible() ? top->menu()->actions() : QList<QAction*>{}) {
            const std::string caption = item->isSeparator() ? "-" : item->text().toStdString();
            const std::string keys = item->shortcut().toString().toStdString();
            if (item->isVisible()) {
                lines.push_back("  " + (item->isEnabled() ? caption : "(" + caption + ")") +
                                (keys.empty() ? "" : " " + keys));
            }
        }
    }
    return lines;
}

TEST_F(MenuTest, TheBarShowsFileEditAndWindowWithTheirShortcutsAndEnabledStates) {
    QGuiApplication::clipboard()->setText(QStringLiteral("7"));
    ControlWnd& form = Form();  // the focus on the choice of test, where no edit can act

    EXPECT_EQ(
        ShownBar(*qobject_cast<QMainWindow*>(form.Widget())->menuBar()),
        (std::vector<std::string>{"File", "  (Print)", "  Quit Ctrl+Q", "Edit", "  (Undo) Ctrl+Z",
                                  "  -", "  (Cut) Ctrl+X", "  (Copy) Ctrl+C", "  (Paste) Ctrl+V",
                                  "Window", "  (Control)", "  About Korvane"}));
    EXPECT_EQ(form.MenuBar(), &Menu::Instance());
}

}  // namespace
}  // namespace korvane::testing
