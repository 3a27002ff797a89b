// The monkey: the whole program, started as main starts it, gets random key presses, typed
// numbers, clicks, menu choices, activations and closes, one per turn of its run loop, from a
// seeded generator, so a run repeats exactly. A quit ends the program and the next session
// starts it again. After every event the form must be in a state the test choice allows; every
// message must be the program's own, no failure may reach the report, every session ends with 0.
//   KORVANE_MONKEY_SEED and KORVANE_MONKEY_KEYS change the seed and the number of key presses.
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "control/control_wnd.h"
#include "platform/qt/runtime.h"
#include "stats/messages.h"
#include "stats/stats.h"
#include "tests/proof/program_run.h"
#include "windows/about_wnd.h"
#include "windows/qwindow.h"

namespace korvane::proof {
namespace {

using Names = std::vector<const char*>;
const Names kEntry{"GroupBox1", "GroupBox2",   "m1fld", "StaticText1", "sd1fld", "StaticText2",
                   "n1fld",     "StaticText7", "m2fld", "StaticText3", "sd2fld", "StaticText4"};
const Names kResults{"dfFld", "dfText", "tfld", "ttext", "pfld", "dtail"};
const Names kAlwaysShown{"HalbrineTitle", "typeBox",  "IBtn",        "RBtn",
                         "CalcBtn",       "ClearBtn", "PushButton1", "StaticText5"};
const char* const kFields[] = {"m1fld", "m2fld", "sd1fld", "sd2fld", "n1fld", "n2fld", "rfld"};
const char* const kWindows[] = {AboutWnd::kClassName, ControlWnd::kClassName, Qwindow::kClassName};

// Mostly what belongs in the fields, then what does not, editing and moving keys and shortcuts.
// The context-menu key is left out: its menu is a modal loop of Qt's own.
const QStringList kKeys = QStringLiteral(
                              "0 1 2 3 4 5 6 7 8 9 . - / + E Space Shift+E Backspace Del Tab "
                              "Shift+Backtab Return Num+Enter Esc Left Right Up Home F1 Ctrl+A "
                              "Ctrl+C Ctrl+V Ctrl+X Ctrl+Z Alt+F Meta+5")
                              .split(' ');

class Monkey {
  public:
    Monkey(std::uint64_t seed, std::uint64_t keys) : rng_(seed), keysWanted_(keys) {}

    // Starts the program and plays until it quits; true while more key presses are wanted.
    bool PlaySession() {
        QTimer turn;
        QObject::connect(&turn, &QTimer::timeout, [this] { Turn(); });
        timerFiresAt_ = events_ + Below(400);
        ending_ = 0;
        const int status = RunProgram(
            [&turn] {
                // The about window's timer counts wall-clock time, which no seed repeats: the
                // monkey fires it itself, at a random event.
                About()->Timer1().Mode(0);
                turn.start(0);
            },
            [this](const std::string& text) {
                ++messages;
                if (std::ranges::find(messages::kAll, text) == messages::kAll.end()) {
                    Problem("a message that is not the program's own: " + text);
                }
            },
            [this](const std::string& failure) {
                Problem("a failure reached the report: " + failure);
            });
        other_.hide();
        if (status != 0) {
            Problem("the program ended with status " + std::to_string(status));
        }
        return problems.empty() && keys < keysWanted_;
    }

    std::vector<std::string> problems;
    std::uint64_t keys = 0, messages = 0;
    std::set<std::string> statesSeen;

  private:
    void Turn() {
        QCoreApplication::processEvents();
        CheckTheForm();
        if (ending_ > 0 && ++ending_ == 100) {
            Problem("the program still runs 100 turns after it was told to end");
        }
        if (!problems.empty() || ending_ > 0) {
            return;
        }
        platform::Window* shown = AnyWindow();
        QWidget* window = shown != nullptr ? shown->Widget() : nullptr;
        const std::size_t roll = Below(1000);
        ++events_;
        if (keys >= keysWanted_ || window == nullptr) {
            ending_ = 1;  // the calculator closed, or Ctrl+Q in the about window
            if (Form() != nullptr) {
                Form()->Widget()->close();
            } else if (window != nullptr) {
                Press(*window, Qt::CTRL | Qt::Key_Q);
            }
        } else if (events_ == timerFiresAt_ && About() != nullptr) {
            platform::ProtectedCall([] { About()->Timer1().Action(About()->Timer1()); });
        } else if (roll < 500) {
            // The keyboard goes to the active window; the user first comes back to one of ours.
            QWidget* active = QApplication::activeWindow();
            ++keys;
            Press(active != nullptr && active != &other_ && active->isVisible() ? *active : *window,
                  Below(2000) == 0 ? Qt::CTRL | Qt::Key_Q
                                   : QKeySequence(kKeys[Below(kKeys.size())])[0]);
        } else if (roll < 620) {
            TypeANumber();
        } else if (roll < 900) {
            Activate(*window);  // a click into a window activates it, as on any desktop
            QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, RandomPoint(*shown));
        } else if (roll < 935 && Form() != nullptr) {
            ChooseFromTheMenu();
        } else if (roll < 997) {
            other_.show();  // another program takes the focus now and then
            Activate(Below(4) == 0 ? other_ : *window);
        } else if (shown != About() && (shown != Form() || Below(4) == 0)) {
            ending_ = shown == Form();  // the about window has no close button; the calculator's
            window->close();            // ends the run, so sessions last if it is seldom chosen
        }
    }

    // The user means it: a click into an entry field, its text selected, a number that fits the
    // field more often than not.
    void TypeANumber() {
        const std::string field = kFields[Below(std::size(kFields))];
        QWidget* widget = Form() != nullptr ? ControlWidget(*Form(), field) : nullptr;
        if (widget == nullptr || !widget->isVisible()) {
            return;
        }
        const std::string number =
            field[0] == 'n' ? std::to_string(Below(10) == 0 ? Below(20000) : 2 + Below(60))
            : field == "rfld"
                ? (Below(2) == 0 ? "-." : ".") + std::to_string(Below(Below(10) == 0 ? 200 : 100))
                : std::to_string(Below(200)) + "." + std::to_string(Below(100));
        Activate(*widget->window());
        ClickCentre(*widget);
        Press(*widget->window(), Qt::CTRL | Qt::Key_A);
        for (char c : number) {
            ++keys;
            Press(*widget->window(), Qt::Key(c));
        }
    }

    // Opens one of the bar's menus and chooses one of the items it offers. A popup is not shown
    // on the offscreen platform (it would become the active window, as on no desktop): opening
    // is its aboutToShow, as Qt raises it.
    void ChooseFromTheMenu() {
        QList<QMenu*> menus = Form()->Widget()->findChild<QMenuBar*>()->findChildren<QMenu*>();
        menus.removeIf([](QMenu* menu) { return !menu->menuAction()->isVisible(); });
        QMenu* menu = menus[Below(menus.size())];
        emit menu->aboutToShow();
        QList<QAction*> offered = menu->actions();
        offered.removeIf([](QAction* item) {
            return !item->isVisible() || !item->isEnabled() || item->isSeparator() || item->menu();
        });
        emit menu->aboutToHide();
        QAction* chosen = offered.empty() ? nullptr : offered[Below(offered.size())];
        const bool quits = chosen != nullptr && chosen->text() == QLatin1String("Quit");
        if (chosen != nullptr && (!quits || Below(10) == 0)) {  // let sessions last
            ending_ = quits;
            chosen->trigger();
        }
    }

    void Press(QWidget& window, QKeyCombination key) {
        Activate(window);
        if (key == (Qt::CTRL | Qt::Key_Q) && ending_ == 0) {
            ending_ = 1;
        }
        QTest::keyClick(window.windowHandle(), key.key(), key.keyboardModifiers());
    }

    void Activate(QWidget& window) {
        if (QApplication::activeWindow() != &window) {
            window.activateWindow();
            QCoreApplication::processEvents();
        }
    }

    platform::Window* AnyWindow() {
        std::vector<platform::Window*> shown;
        for (const char* name : kWindows) {
            if (LivingWindow(name) != nullptr && LivingWindow(name)->Widget()->isVisible()) {
                shown.push_back(LivingWindow(name));
            }
        }
        return shown.empty() ? nullptr : shown[Below(shown.size())];
    }

    // Half at a random control's centre, so buttons and fields are hit as often as a user hits
    // them; the rest anywhere in the window's content.
    QPoint RandomPoint(platform::Window& window) {
        auto* control =
            dynamic_cast<platform::RectControl*>(window.ControlAt(Below(window.ControlCount())));
        if (control != nullptr && control->Widget()->isVisible() && Below(2) == 0) {
            return control->Widget()->mapTo(window.Widget(), control->Widget()->rect().center());
        }
        const QWidget& content = *window.ContentWidget();
        return content.mapTo(window.Widget(), QPoint(1 + Below(std::max(1, content.width() - 2)),
                                                     1 + Below(std::max(1, content.height() - 2))));
    }

    // The entry layout is none, independent or related, the results are all hidden or all
    // shown (and enabled with them, dtail never), and the sets are never mixed.
    void CheckTheForm() {
        if (Form() == nullptr) {
            return;
        }
        const auto shown = [](const char* name) {
            return !ControlWidget(*Form(), name)->isHidden();
        };
        const auto enabled = [](const char* name) {
            return !ControlWidget(*Form(), name)->testAttribute(Qt::WA_ForceDisabled);
        };
        const auto all = [&](const Names& names, bool on) {
            return std::ranges::all_of(names, [&](const char* name) { return shown(name) == on; });
        };
        const bool i = Form()->IBtn().Value(), r = Form()->RBtn().Value();
        const bool results = shown("pfld");
        const bool allowed =
            !(i && r) && all(kEntry, i || r) && all({"n2fld", "n2text"}, i) &&
            all({"rfld", "rtext", "Sep1", "Sep2"}, r) && all(kAlwaysShown, true) &&
            all(kResults, results) && !enabled("dtail") && (!results || enabled("ttext")) &&
            std::ranges::all_of(Names{"tfld", "pfld", "dfFld", "dfText"},
                                [&](const char* name) { return enabled(name) == results; }) &&
            Globals::btn >= 0 && Globals::btn <= 2;
        const std::string state = std::string(r   ? "related"
                                              : i ? "independent"
                                                  : "none") +
                                  (results ? " with results" : "");
        if (!allowed) {
            Problem("the form is in no allowed state, near " + state);
        }
        statesSeen.insert(state);
    }

    void Problem(const std::string& what) {
        problems.push_back(what + " at event " + std::to_string(events_));
        ending_ = 1;
        platform::Quit(0);
    }

    std::size_t Below(std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng_);
    }
    static ControlWnd* Form() {
        return static_cast<ControlWnd*>(LivingWindow(ControlWnd::kClassName));
    }
    static AboutWnd* About() { return static_cast<AboutWnd*>(LivingWindow(AboutWnd::kClassName)); }

    std::mt19937_64 rng_;
    std::uint64_t keysWanted_, events_ = 0, timerFiresAt_ = 0;
    int ending_ = 0;  // turns since the program was told to end, from 1
    QWidget other_;   // another program's window
};

std::uint64_t FromEnvironment(const char* name, std::uint64_t fallback) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::strtoull(value, nullptr, 10) : fallback;
}

TEST(Monkey, TwentyThousandRandomKeyPressesClicksMenuChoicesAndActivationsKeepTheFormWhole) {
    // A walk this long reaches all five states (every seed tried did), so that a change that
    // makes one unreachable shows.
    const std::uint64_t seed = FromEnvironment("KORVANE_MONKEY_SEED", 20261123);
    const std::uint64_t keys = FromEnvironment("KORVANE_MONKEY_KEYS", 20000);
    Monkey monkey(seed, keys);
    while (monkey.PlaySession()) {
    }
    ASSERT_EQ(monkey.problems, std::vector<std::string>{}) << "seed " << seed;
    EXPECT_GT(monkey.messages, keys / 1000);
    // Results beside no layout cannot be: only a calculation that passed its checks shows them.
    EXPECT_EQ(monkey.statesSeen,
              (std::set<std::string>{"none", "independent", "independent with results", "related",
                                     "related with results"}));
}

}  // namespace
}  // namespace korvane::proof
