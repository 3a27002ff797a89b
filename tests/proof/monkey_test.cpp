// The monkey: the whole program, started as main starts it, gets random key presses, typed
// numbers, clicks, menu choices, activations and closes from a seeded generator, one per turn of
// its run loop, so a run repeats exactly. A quit ends the program and the next session starts it
// again. After every event the form must be in a state the test choice allows; every message must
// be the program's own, no failure may reach the report, every session ends with 0.
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

// The form's parts and when each is shown: '*' always, 'e' with either test, 'i' with the
// independent, 'r' with the related one, 'R' with results. A part shown is enabled, but dtail
// never is.
const std::pair<char, const char*> kParts[] = {
    {'*', "HalbrineTitle typeBox IBtn RBtn CalcBtn ClearBtn PushButton1 StaticText5"},
    {'e',
     "GroupBox1 GroupBox2 m1fld StaticText1 sd1fld StaticText2 n1fld StaticText7 m2fld "
     "StaticText3 sd2fld StaticText4"},
    {'i', "n2fld n2text"},
    {'r', "rfld rtext Sep1 Sep2"},
    {'R', "dfFld dfText tfld ttext pfld dtail"},
};

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
        ending_ = 0;
        const int status = RunProgram(
            [&turn] {
                // The about window's timer counts wall-clock time, which no seed repeats: the
                // monkey fires it itself, as one of its events.
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
        ++events_;
        if (keys >= keysWanted_ || shown == nullptr) {
            ending_ = 1;  // the calculator closed, or Ctrl+Q in the about window
            if (Form() != nullptr) {
                Form()->Widget()->close();
            } else if (shown != nullptr) {
                Press(*shown->Widget(), Qt::CTRL | Qt::Key_Q);
            }
        } else {
            using Action = void (Monkey::*)(platform::Window&);
            // Per thousand events; the calculator's close is rare so that sessions last.
            static constexpr std::pair<std::size_t, Action> kActions[] = {
                {495, &Monkey::PressAKey},
                {5, &Monkey::FireTheAboutTimer},
                {120, &Monkey::TypeANumber},
                {280, &Monkey::Click},
                {35, &Monkey::ChooseFromTheMenu},
                {62, &Monkey::SwitchPrograms},
                {3, &Monkey::Close},
            };
            std::size_t roll = Below(1000), i = 0;
            while (roll >= kActions[i].first) {
                roll -= kActions[i++].first;
            }
            (this->*kActions[i].second)(*shown);
        }
    }

    // The keyboard goes to the active window; the user first comes back to one of ours.
    void PressAKey(platform::Window& shown) {
        QWidget* active = QApplication::activeWindow();
        ++keys;
        Press(
            active != nullptr && active != &other_ && active->isVisible() ? *active
                                                                          : *shown.Widget(),
            Below(2000) == 0 ? Qt::CTRL | Qt::Key_Q : QKeySequence(kKeys[Below(kKeys.size())])[0]);
    }

    // The user means it: a click into an entry field, its text selected, a number that fits the
    // field more often than not.
    void TypeANumber(platform::Window& /*shown*/) {
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

    // A click into a window activates it, as on any desktop. Half the clicks hit a random
    // control's centre, as often as a user hits buttons and fields; the rest anywhere.
    void Click(platform::Window& shown) {
        auto* control =
            dynamic_cast<platform::RectControl*>(shown.ControlAt(Below(shown.ControlCount())));
        const QWidget& content = *shown.ContentWidget();
        const QPoint point =
            control != nullptr && control->Widget()->isVisible() && Below(2) == 0
                ? control->Widget()->mapTo(shown.Widget(), control->Widget()->rect().center())
                : content.mapTo(shown.Widget(),
                                QPoint(1 + Below(std::max(1, content.width() - 2)),
                                       1 + Below(std::max(1, content.height() - 2))));
        Activate(*shown.Widget());
        QTest::mouseClick(shown.Widget()->windowHandle(), Qt::LeftButton, {}, point);
    }

    // Opens one of the bar's menus and chooses one of the items it offers. A popup is not shown
    // on the offscreen platform (it would become the active window, as on no desktop): opening
    // is its aboutToShow, as Qt raises it.
    void ChooseFromTheMenu(platform::Window& shown) {
        if (Form() == nullptr) {
            return SwitchPrograms(shown);
        }
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

    void FireTheAboutTimer(platform::Window& /*shown*/) {
        if (About() != nullptr) {
            platform::ProtectedCall([] { About()->Timer1().Action(About()->Timer1()); });
        }
    }

    // Another program takes the focus now and then.
    void SwitchPrograms(platform::Window& shown) {
        other_.show();
        Activate(Below(4) == 0 ? other_ : *shown.Widget());
    }

    // The about window has no close button; the calculator's ends the run.
    void Close(platform::Window& shown) {
        if (&shown != About() && (&shown != Form() || Below(4) == 0)) {
            ending_ = &shown == Form();
            shown.Widget()->close();
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

    void CheckTheForm() {
        if (Form() == nullptr) {
            return;
        }
        const bool i = Form()->IBtn().Value(), r = Form()->RBtn().Value();
        const bool results = !ControlWidget(*Form(), "pfld")->isHidden();
        const std::string state = std::string(r ? "related" : (i ? "independent" : "none")) +
                                  (results ? " with results" : "");
        const std::string parts = std::string("*") + (i || r ? "e" : "") + (i ? "i" : "") +
                                  (r ? "r" : "") + (results ? "R" : "");
        bool allowed = !(i && r) && Globals::btn >= 0 && Globals::btn <= 2;
        for (const auto& [part, names] : kParts) {
            for (const QString& name : QString(names).split(' ')) {
                const QWidget& widget = *ControlWidget(*Form(), name.toStdString());
                const bool on = parts.find(part) != std::string::npos;
                allowed = allowed && widget.isHidden() != on &&
                          (!on || widget.testAttribute(Qt::WA_ForceDisabled) == (name == "dtail"));
            }
        }
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
    std::uint64_t keysWanted_, events_ = 0;
    int ending_ = 0;  // turns since the program was told to end, from 1
    QWidget other_;   // another program's window
};

std::uint64_t FromEnvironment(const char* name, std::uint64_t fallback) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::strtoull(value, nullptr, 10) : fallback;
}

TEST(Monkey, TwentyThousandRandomKeyPressesClicksMenuChoicesAndActivationsKeepTheFormWhole) {
    // A walk this long reaches all five states (every seed tried did), so that a change that
    // makes one unreachable shows. Results beside no layout cannot be: only a calculation that
    // passed its checks shows them.
    const std::uint64_t seed = FromEnvironment("KORVANE_MONKEY_SEED", 20261123);
    const std::uint64_t keys = FromEnvironment("KORVANE_MONKEY_KEYS", 20000);
    Monkey monkey(seed, keys);
    while (monkey.PlaySession()) {
    }
    ASSERT_EQ(monkey.problems, std::vector<std::string>{}) << "seed " << seed;
    EXPECT_GT(monkey.messages, keys / 1000);
    EXPECT_EQ(monkey.statesSeen,
              (std::set<std::string>{"none", "independent", "independent with results", "related",
                                     "related with results"}));
}

}  // namespace
}  // namespace korvane::proof
