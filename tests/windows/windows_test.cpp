// The windows of windows/: the one menu bar as a user sees it on the control window, and the
// information window, which shows the formula and its text and hides rather than closes.
#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTextEdit>
#include <functional>
#include <memory>
#include <ranges>
#include <set>
#include <stdexcept>
#include <string>

#include "platform/qt/buttons.h"
#include "platform/qt/canvas.h"
#include "tests/common/menu_presses.h"
#include "tests/windows/ui_test_support.h"
#include "windows/menu.h"
#include "windows/pictures.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

using MenuTest = FormFixture;
using QwindowTest = UiTest;

// Each shown menu and, indented, each shown item as it stands once its menu opens: the title ("&"
// before the access key), the shortcut, and the title in brackets when the item is disabled.
// Caption-less items and those of another desktop are hidden.
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

// The shown menu or item of that title.
QAction& Shown(QWidget& menu, const QString& title) {
    for (QAction* action : menu.actions()) {
        if (action->isVisible() && action->text() == title)
            return *action;
    }
    throw std::runtime_error("nothing shown as " + title.toStdString());
}
QMenu& Shown(QMenuBar& bar, const QString& title) {
    return *Shown(static_cast<QWidget&>(bar), title).menu();
}

TEST_F(MenuTest, TheBarShowsFileEditAndWindowWithAccessKeysShortcutsAndEnabledStates) {
    // Text to paste, but the focus is on the choice of test, where no edit can act.
    QGuiApplication::clipboard()->setText(QStringLiteral("7"));

    EXPECT_EQ(ShownBar(*form->Widget()->findChild<QMenuBar*>()),
              (std::vector<std::string>{"&File", "  (&Print)", "  &Quit Ctrl+Q", "&Edit",
                                        "  (&Undo) Ctrl+Z", "  -", "  (&Cut) Ctrl+X",
                                        "  (C&opy) Ctrl+C", "  (&Paste) Ctrl+V", "&Window",
                                        "  (&Control)", "  &About Korvane"}));
    EXPECT_EQ(form->MenuBar(), &Menu::Instance());
    // Only the Qt titles carry the access keys.
    std::vector<std::string> captions;
    for (const char* name :
         {"UntitledMenu2", "FileQuit", "UntitledMenu0", "EditCopy", "WindowMenu"})
        captions.push_back(Menu::Instance()._Lookup(name)->Value());
    EXPECT_EQ(captions, (std::vector<std::string>{"File", "Quit", "Edit", "Copy", "Window"}));
}

// F10 opens the first shown menu (the bar begins with a menu without a caption), Alt with a
// menu's access key that menu, as keys pressed in the window; Escape, twice, gives the keyboard
// back to the field.
TEST_F(MenuTest, F10AndAltWithTheAccessKeyOpenTheMenusOfTheControlWindow) {
    Click(form->IBtn());
    for (const auto& press : testing_support::kMenuPresses) {
        Press(*form, press.key, press.modifiers);
        EXPECT_EQ(OpenMenuTitle(), press.opens);
        CloseMenus(*form);
        EXPECT_EQ(OpenMenuTitle(), "");
        EXPECT_TRUE(HasFocus(form->m1fld()));
    }
}

Qwindow& Information() {
    Qwindow& window = Qwindow::Instance();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.Widget()));
    return window;
}

// The information window shows no bar: the control window's F10 and access keys open nothing
// there, though it lies over the control window.
TEST_F(MenuTest, TheInformationWindowOpensNoMenuOnF10OrAnAccessKey) {
    Qwindow& information = Information();
    for (Qt::Key key : {Qt::Key_F10, Qt::Key_F, Qt::Key_E}) {
        Press(information, key, key == Qt::Key_F10 ? Qt::NoModifier : Qt::AltModifier);
        EXPECT_EQ(OpenMenuTitle(), "") << key;
        CloseMenus(information);
    }
    EXPECT_EQ(QApplication::activeWindow(), information.Widget());
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

// Each window answers IsEventImplemented for exactly the events of Window that it implements.
TEST_F(MenuTest, EachWindowSaysWhichEventsItImplements) {
    const std::set<std::string> about = {"Layout", "CreateControls", "AddMenuHandlers", "KeyDown",
                                         "MouseDown"};
    const std::set<std::string> information = {"Layout", "CreateControls", "Close", "MouseDown",
                                               "KeyDown"};
    const std::set<std::string> control = {"Layout", "CreateControls", "AddMenuHandlers",
                                           "Close",  "Activate",       "EnableMenuItems"};
    for (const std::string event :
         {"Layout", "CreateControls", "AddMenuHandlers", "Close", "Activate", "Deactivate",
          "EnableMenuItems", "KeyDown", "KeyUp", "MouseDown", "MouseUp", "Open", "Paint"}) {
        EXPECT_EQ(AboutWnd::Instance().IsEventImplemented(event), about.contains(event)) << event;
        EXPECT_EQ(Qwindow::Instance().IsEventImplemented(event), information.contains(event))
            << event;
        EXPECT_EQ(form->IsEventImplemented(event), control.contains(event)) << event;
    }
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

// Every way text comes into a writable text control (the information window's text area and an
// entry field of the form), with every kind of clipboard: nothing on it, text, a picture alone.
// Only text goes in, once; anything else changes nothing.
using PasteTest = FormFixture;

struct Offer {
    const char* name;
    QString text;  // what goes in
    std::function<QMimeData*()> make;
};

struct Way {
    const char* name;
    std::function<void(QWidget&, const QMimeData&)> bring;
};

// A drag from another program that ends over the middle of the control.
void Drop(QWidget& target, const QMimeData& data) {
    auto* area = qobject_cast<QTextEdit*>(&target);
    QWidget& under = area != nullptr ? *area->viewport() : target;
    const QPointF at = QRectF(under.rect()).center();
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&under, &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&under, &drop);
}

TEST_F(PasteTest, OnlyTextComesInByKeysMenuOrDropWhateverTheClipboardHolds) {
    const Offer offers[] = {
        {"nothing", "", [] { return new QMimeData; }},
        {"text", "12",
         [] {
             auto* data = new QMimeData;
             data->setText("12");
             return data;
         }},
        {"a picture", "",
         [] {
             auto* data = new QMimeData;
             data->setImageData(QImage(4, 4, QImage::Format_RGB32));
             return data;
         }},
    };
    const Way ways[] = {
        {"Ctrl+V", [](QWidget& w, const QMimeData&) { Press(w, Qt::Key_V, Qt::ControlModifier); }},
        {"Shift+Insert",
         [](QWidget& w, const QMimeData&) { Press(w, Qt::Key_Insert, Qt::ShiftModifier); }},
        {"Edit > Paste",
         [this](QWidget&, const QMimeData&) {
             QMenu& edit = Shown(*form->Widget()->findChild<QMenuBar*>(), "&Edit");
             emit edit.aboutToShow();
             Shown(edit, "&Paste").trigger();  // shown disabled when there is nothing to paste
         }},
        {"a drop", [](QWidget& w, const QMimeData& data) { Drop(w, data); }},
    };
    Click(form->IBtn());
    QWidget* targets[] = {Qwindow::Instance().StaticText1().Widget(), form->m1fld().Widget()};
    for (QWidget* target : targets) {
        for (const Offer& offer : offers) {
            for (const Way& way : ways) {
                SCOPED_TRACE(target->objectName().toStdString() + " " + way.name + " with " +
                             offer.name);
                QGuiApplication::clipboard()->setMimeData(offer.make());
                target->window()->activateWindow();
                ASSERT_TRUE(QTest::qWaitForWindowActive(target->window()));
                target->setFocus();
                auto* area = qobject_cast<QTextEdit*>(target);
                const auto text = [&] {
                    return area != nullptr ? area->toPlainText()
                                           : qobject_cast<QLineEdit*>(target)->text();
                };
                const QString before = text();
                const std::unique_ptr<QMimeData> dropped(offer.make());

                way.bring(*target, *dropped);

                EXPECT_EQ(text().length(), before.length() + offer.text.length());
                EXPECT_EQ(text().count(QStringLiteral("12")),
                          before.count(QStringLiteral("12")) + (offer.text.isEmpty() ? 0 : 1));
            }
        }
    }
}

}  // namespace
}  // namespace korvane::testing
