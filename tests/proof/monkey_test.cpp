// The monkey: the whole program, started as main starts it, gets tens of thousands of random key
// presses, clicks and drags at random points of its windows, menu choices, activations and
// closes, one per turn of its run loop, drawn from a seeded generator so that a run can be
// repeated exactly. A quit ends the program; the next session starts it again from nothing.
// After every event the form must be in one of the states the test choice allows, every message
// must be one of the program's own, and no failure may reach the platform's report.
//   KORVANE_MONKEY_SEED and KORVANE_MONKEY_KEYS change the seed and the number of key presses.
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <exception>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "control/control_wnd.h"
#include "platform/qt/runtime.h"
#include "stats/stats.h"
#include "tests/proof/program_run.h"
#include "windows/about_wnd.h"
#include "windows/qwindow.h"

namespace korvane::proof {
namespace {

const std::vector<std::string> kAlwaysShown{"HalbrineTitle", "typeBox",    "IBtn",
                                            "RBtn",          "CalcBtn",    "ClearBtn",
                                            "PushButton1",   "StaticText5"};
const std::vector<std::string> kCommonEntry{"GroupBox1", "GroupBox2",   "m1fld",  "StaticText1",
                                            "sd1fld",    "StaticText2", "n1fld",  "StaticText7",
                                            "m2fld",     "StaticText3", "sd2fld", "StaticText4"};
const std::vector<std::string> kIndependent{"n2fld", "n2text"};
const std::vector<std::string> kRelated{"rfld", "rtext", "Sep1", "Sep2"};
const std::vector<std::string> kResults{"dfFld", "dfText", "tfld", "ttext", "pfld", "dtail"};
const std::vector<std::string> kEnabledWithResults{"tfld", "pfld", "dfFld", "ttext", "dfText"};
const std::vector<std::string> kDisabledWithoutResults{"tfld", "pfld", "dfFld", "dfText"};

struct KeyChoice {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* name;
};

// Mostly what belongs in the fields, then what does not, editing and moving keys, and the
// shortcuts. The context-menu key is left out: its menu is a modal loop of Qt's own.
const std::vector<KeyChoice>& KeyChoices() {
    static const std::vector<KeyChoice> keys = [] {
        std::vector<KeyChoice> all;
        static const char* const kDigits[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
        for (int d = 0; d < 10; ++d) {
            for (int weight = 0; weight < 3; ++weight) {
                all.push_back({Qt::Key(Qt::Key_0 + d), {}, kDigits[d]});
            }
        }
        for (int weight = 0; weight < 3; ++weight) {
            all.push_back({Qt::Key_Period, {}, "."});
            all.push_back({Qt::Key_Minus, {}, "-"});
        }
        const std::vector<KeyChoice> rest{
            {Qt::Key_Slash, {}, "/"},
            {Qt::Key_Comma, {}, ","},
            {Qt::Key_Plus, {}, "+"},
            {Qt::Key_E, {}, "e"},
            {Qt::Key_A, {}, "a"},
            {Qt::Key_Z, {}, "z"},
            {Qt::Key_Space, {}, "space"},
            {Qt::Key_E, Qt::ShiftModifier, "E"},
            {Qt::Key_Backspace, {}, "Backspace"},
            {Qt::Key_Backspace, {}, "Backspace"},
            {Qt::Key_Delete, {}, "Delete"},
            {Qt::Key_Tab, {}, "Tab"},
            {Qt::Key_Tab, {}, "Tab"},
            {Qt::Key_Backtab, Qt::ShiftModifier, "Shift+Tab"},
            {Qt::Key_Return, {}, "Return"},
            {Qt::Key_Enter, Qt::KeypadModifier, "Enter"},
            {Qt::Key_Escape, {}, "Escape"},
            {Qt::Key_Left, {}, "Left"},
            {Qt::Key_Right, {}, "Right"},
            {Qt::Key_Up, {}, "Up"},
            {Qt::Key_Down, {}, "Down"},
            {Qt::Key_Home, {}, "Home"},
            {Qt::Key_End, {}, "End"},
            {Qt::Key_PageUp, {}, "PageUp"},
            {Qt::Key_F1, {}, "F1"},
            {Qt::Key_Shift, {}, "Shift"},
            {Qt::Key_A, Qt::ControlModifier, "Ctrl+A"},
            {Qt::Key_C, Qt::ControlModifier, "Ctrl+C"},
            {Qt::Key_V, Qt::ControlModifier, "Ctrl+V"},
            {Qt::Key_X, Qt::ControlModifier, "Ctrl+X"},
            {Qt::Key_Z, Qt::ControlModifier, "Ctrl+Z"},
            {Qt::Key_F, Qt::AltModifier, "Alt+F"},
            {Qt::Key_5, Qt::MetaModifier, "Meta+5"},
        };
        all.insert(all.end(), rest.begin(), rest.end());
        return all;
    }();
    return keys;
}

std::uint64_t FromEnvironment(const char* name, std::uint64_t fallback) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::strtoull(value, nullptr, 10) : fallback;
}

class Monkey {
  public:
    Monkey(std::uint64_t seed, std::uint64_t keyPresses) : rng_(seed), keysWanted_(keyPresses) {
        other_.setWindowTitle(QStringLiteral("another program"));
        other_.resize(200, 100);
    }

    // Starts the program and plays until it quits; true while more events are wanted.
    bool PlaySession() {
        ++sessions_;
        platform::SetMessageBoxHook([this](const std::string& text) {
            ++messages_;
            if (!ProgramMessages().contains(text)) {
                Problem("a message that is not the program's own: \"" + text + "\"");
            }
        });
        platform::SetUnhandledExceptionHook([this](std::exception_ptr failure) {
            try {
                std::rethrow_exception(failure);
            } catch (const std::exception& e) {
                Problem(std::string("a failure reached the platform's report: ") + e.what());
            }
        });
        QTimer turn;
        turn.setInterval(0);
        QObject::connect(&turn, &QTimer::timeout, [this] { Turn(); });
        timerFiresAt_ = events_ + Below(400);
        ending_ = false;
        turnsEnding_ = 0;
        const int status = RunProgram([this, &turn] {
            StopTheAboutTimer();
            turn.start();
        });
        turn.stop();
        other_.hide();
        platform::SetMessageBoxHook({});
        platform::SetUnhandledExceptionHook({});
        if (status != 0) {
            Problem("the program ended with status " + std::to_string(status));
        }
        return problems_.empty() && keys_ < keysWanted_;
    }

    const std::vector<std::string>& Problems() const { return problems_; }
    std::uint64_t Keys() const { return keys_; }
    std::uint64_t Events() const { return events_; }
    std::uint64_t Sessions() const { return sessions_; }
    std::uint64_t Messages() const { return messages_; }
    std::uint64_t Calculations() const { return calculations_; }
    const std::string& Trace() const { return trace_; }
    const std::set<std::string>& StatesSeen() const { return statesSeen_; }

  private:
    // One turn of the run loop: look at the form as the last event left it, then make the next.
    void Turn() {
        QCoreApplication::processEvents();
        CheckTheForm();
        if (ending_ && ++turnsEnding_ == 100) {
            Problem("the program still runs 100 turns after it was told to end");
            platform::Quit(0);
        }
        if (!problems_.empty() || ending_) {
            return;
        }
        if (keys_ >= keysWanted_) {
            End();
            return;
        }
        if (events_ == timerFiresAt_) {
            TheAboutTimerFires();
        } else {
            NextEvent();
        }
        ++events_;
    }

    // The about window's timer counts wall-clock time, which no seed repeats; the monkey stops it
    // and fires it itself at a random event, as the platform would.
    void StopTheAboutTimer() {
        if (auto* about = LivingWindow(AboutWnd::kClassName)) {
            static_cast<AboutWnd*>(about)->Timer1().Mode(0);
        }
    }

    void TheAboutTimerFires() {
        Note("the about window's timer fires");
        if (auto* about = static_cast<AboutWnd*>(LivingWindow(AboutWnd::kClassName))) {
            platform::Timer& timer = about->Timer1();
            platform::ProtectedCall([&timer] { timer.Action(timer); });
        }
    }

    void NextEvent() {
        const int roll = Below(1000);
        if (roll < 540) {
            PressAKey();
        } else if (roll < 620) {
            TypeANumber();
        } else if (roll < 880) {
            ClickSomewhere();
        } else if (roll < 920) {
            MoveTheMouse();
        } else if (roll < 955) {
            ChooseFromTheMenu();
        } else if (roll < 997) {
            Activate();
        } else {
            CloseAWindow();
        }
    }

    void PressAKey() {
        const KeyChoice& choice = KeyChoices()[Below(KeyChoices().size())];
        // The keyboard goes to the active window; while another program has it, the user first
        // comes back to one of this program's windows.
        QWidget* target = QApplication::activeWindow();
        if (target == nullptr || OwnerOf(*target) == nullptr || !target->isVisible()) {
            target = AnyProgramWindow();
        }
        if (target == nullptr) {
            return;
        }
        BringToFront(*target);
        ++keys_;
        if (Below(2000) == 0) {
            Note("key Ctrl+Q to " + Describe(*target));
            ending_ = true;
            QTest::keyClick(target->windowHandle(), Qt::Key_Q, Qt::ControlModifier);
            return;
        }
        Note(std::string("key ") + choice.name + " to " + Describe(*target));
        QTest::keyClick(target->windowHandle(), choice.key, choice.modifiers);
    }

    // Now and then the user means it: a click into an entry field of the form, all of its text
    // selected, and a number typed that fits the field more often than not.
    void TypeANumber() {
        static const char* const kFields[] = {"m1fld", "m2fld", "sd1fld", "sd2fld",
                                              "n1fld", "n2fld", "rfld"};
        auto* form = LivingWindow(ControlWnd::kClassName);
        if (form == nullptr || !form->Widget()->isVisible()) {
            return;
        }
        const std::string field = kFields[Below(std::size(kFields))];
        QWidget* widget = ControlWidget(*form, field);
        if (!widget->isVisible()) {
            return;
        }
        std::string number;
        if (field[0] == 'n') {
            number = std::to_string(Below(10) == 0 ? Below(20000) : 2 + Below(60));
        } else if (field == "rfld") {
            number =
                (Below(2) == 0 ? "-." : ".") + std::to_string(Below(Below(10) == 0 ? 200 : 100));
        } else {
            number = std::to_string(Below(200)) + "." + std::to_string(Below(100));
        }
        BringToFront(*form->Widget());
        Note("type " + number + " into " + field);
        ClickCentre(*widget);
        QTest::keyClick(form->Widget()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
        for (char c : number) {
            ++keys_;
            QTest::keyClick(form->Widget()->windowHandle(), c);
        }
    }

    // Half the clicks land at a random control's centre, so that buttons and fields are hit as
    // often as a user hits them; the rest anywhere in the window's content. A few are double
    // clicks, a few drags.
    void ClickSomewhere() {
        QWidget* window = AnyProgramWindow();
        if (window == nullptr) {
            return;
        }
        BringToFront(*window);  // a click into a window activates it, as on any desktop
        const QPoint at = RandomPoint(*window);
        const int kind = Below(20);
        Note((kind == 0   ? "double click at "
              : kind == 1 ? "drag from "
                          : "click at ") +
             Describe(*window, at));
        if (kind == 0) {
            QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, at);
        } else if (kind == 1) {
            const QPoint to = RandomPoint(*window);
            QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, at);
            QTest::mouseMove(window->windowHandle(), to);
            QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, to);
        } else {
            if (IsCalculateButton(*window, at)) {
                ++calculations_;
            }
            QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, at);
        }
    }

    void MoveTheMouse() {
        if (QWidget* window = AnyProgramWindow()) {
            const QPoint at = RandomPoint(*window);
            Note("mouse to " + Describe(*window, at));
            QTest::mouseMove(window->windowHandle(), at);
        }
    }

    // Opens one of the bar's menus and chooses one of the items it offers.
    void ChooseFromTheMenu() {
        auto* form = LivingWindow(ControlWnd::kClassName);
        auto* bar = form != nullptr ? form->Widget()->findChild<QMenuBar*>() : nullptr;
        if (bar == nullptr) {
            return;
        }
        std::vector<QMenu*> menus;
        for (QAction* action : bar->actions()) {
            if (action->menu() != nullptr && action->isVisible()) {
                menus.push_back(action->menu());
            }
        }
        if (menus.empty()) {
            return;
        }
        // The menu is not popped up on the offscreen platform, which would make the popup the
        // active window, as no desktop does: opening is its aboutToShow, as Qt raises it.
        QMenu* menu = menus[Below(menus.size())];
        emit menu->aboutToShow();
        std::vector<QAction*> offered;
        for (QAction* action : menu->actions()) {
            if (action->isVisible() && action->isEnabled() && !action->isSeparator()) {
                offered.push_back(action);
            }
        }
        if (offered.empty()) {
            Note("menu " + menu->title().toStdString() + " opened and closed");
            emit menu->aboutToHide();
            return;
        }
        QAction* chosen = offered[Below(offered.size())];
        const bool quits = chosen->text() == QLatin1String("Quit");
        if (quits && Below(10) != 0) {
            chosen = nullptr;  // quitting ends a session: let sessions last
        }
        Note("menu " + menu->title().toStdString() + " > " +
             (chosen != nullptr ? chosen->text().toStdString() : std::string("nothing")));
        emit menu->aboutToHide();
        if (chosen != nullptr) {
            ending_ = ending_ || quits;
            chosen->trigger();
        }
    }

    // Another program's window takes the focus now and then, so the program's windows are
    // activated again afterwards as well as among themselves.
    void Activate() {
        QWidget* window = Below(4) == 0 ? &other_ : AnyProgramWindow();
        if (window == nullptr) {
            return;
        }
        Note("activate " + Describe(*window));
        if (window == &other_) {
            other_.show();
        }
        window->activateWindow();
    }

    // What a window's close button does. The about window has none.
    void CloseAWindow() {
        QWidget* window = AnyProgramWindow();
        auto* about = LivingWindow(AboutWnd::kClassName);
        if (window == nullptr || (about != nullptr && window == about->Widget())) {
            return;
        }
        Note("close " + Describe(*window));
        auto* form = LivingWindow(ControlWnd::kClassName);
        if (form != nullptr && window == form->Widget()) {
            if (Below(4) != 0) {
                return;  // closing the calculator ends a session: let sessions last
            }
            ending_ = true;
        }
        window->close();
    }

    // The last event of a session: the user closes the calculator, or quits from the about
    // window with the keyboard.
    void End() {
        ending_ = true;
        auto* form = LivingWindow(ControlWnd::kClassName);
        if (form != nullptr) {
            Note("close the calculator to end");
            form->Widget()->close();
        } else if (QWidget* window = AnyProgramWindow()) {
            Note("Ctrl+Q to end");
            QTest::keyClick(window->windowHandle(), Qt::Key_Q, Qt::ControlModifier);
        }
    }

    void BringToFront(QWidget& window) {
        if (QApplication::activeWindow() != &window) {
            window.activateWindow();
            QCoreApplication::processEvents();
        }
    }

    bool IsCalculateButton(QWidget& window, QPoint at) const {
        auto* form = LivingWindow(ControlWnd::kClassName);
        return form != nullptr && &window == form->Widget() &&
               window.childAt(at) == ControlWidget(*form, "CalcBtn");
    }

    QWidget* AnyProgramWindow() {
        std::vector<QWidget*> shown;
        for (const char* name :
             {AboutWnd::kClassName, ControlWnd::kClassName, Qwindow::kClassName}) {
            platform::Window* window = LivingWindow(name);
            if (window != nullptr && window->Widget()->isVisible()) {
                shown.push_back(window->Widget());
            }
        }
        return shown.empty() ? nullptr : shown[Below(shown.size())];
    }

    QPoint RandomPoint(QWidget& window) {
        platform::Window* owner = OwnerOf(window);
        if (owner != nullptr && owner->ControlCount() > 0 && Below(2) == 0) {
            auto* control = dynamic_cast<platform::RectControl*>(
                owner->ControlAt(Below(owner->ControlCount())));
            if (control != nullptr && control->Widget()->isVisible()) {
                QWidget* widget = control->Widget();
                return widget->mapTo(&window, widget->rect().center());
            }
        }
        QWidget* content = owner != nullptr ? owner->ContentWidget() : &window;
        const QPoint origin = content->mapTo(&window, QPoint(0, 0));
        return origin + QPoint(1 + Below(std::max(1, content->width() - 2)),
                               1 + Below(std::max(1, content->height() - 2)));
    }

    static platform::Window* OwnerOf(const QWidget& window) {
        for (const char* name :
             {AboutWnd::kClassName, ControlWnd::kClassName, Qwindow::kClassName}) {
            platform::Window* owner = LivingWindow(name);
            if (owner != nullptr && owner->Widget() == &window) {
                return owner;
            }
        }
        return nullptr;
    }

    // "Korvane (61,375) on CalcBtn": the window, the point and the control found there.
    static std::string Describe(QWidget& window, QPoint at = {}) {
        std::string name = window.windowTitle().isEmpty() ? "the about window"
                                                          : window.windowTitle().toStdString();
        if (at.isNull()) {
            return name;
        }
        name += " (" + std::to_string(at.x()) + "," + std::to_string(at.y()) + ")";
        platform::Window* owner = OwnerOf(window);
        for (QWidget* hit = window.childAt(at); owner != nullptr && hit != nullptr;
             hit = hit->parentWidget()) {
            for (std::size_t i = 0; i < owner->ControlCount(); ++i) {
                auto* control = dynamic_cast<platform::RectControl*>(owner->ControlAt(i));
                if (control != nullptr && control->Widget() == hit) {
                    return name + " on " + control->Name();
                }
            }
        }
        return name;
    }

    // The states of the form: the entry layout is none, independent or related, the results are
    // all hidden or all shown, btn is 0, 1 or 2, and the sets are never mixed.
    void CheckTheForm() {
        auto* form = static_cast<ControlWnd*>(LivingWindow(ControlWnd::kClassName));
        if (form == nullptr) {
            return;
        }
        const auto control = [form](const std::string& name) -> platform::RectControl& {
            return platform::RuntimeCheckCast<platform::RectControl>(form->_ControlByName(name));
        };
        const auto all = [&](const std::vector<std::string>& set, bool shown) {
            for (const std::string& name : set) {
                if (control(name).Visible() != shown ||
                    control(name).Widget()->isHidden() == shown) {
                    return false;
                }
            }
            return true;
        };
        const bool independentOn = form->IBtn().Value();
        const bool relatedOn = form->RBtn().Value();
        const bool none = !independentOn && !relatedOn && all(kCommonEntry, false) &&
                          all(kIndependent, false) && all(kRelated, false);
        const bool independent = independentOn && !relatedOn && all(kCommonEntry, true) &&
                                 all(kIndependent, true) && all(kRelated, false);
        const bool related = !independentOn && relatedOn && all(kCommonEntry, true) &&
                             all(kIndependent, false) && all(kRelated, true);
        if (!none && !independent && !related) {
            Problem("the entry layout is none of none, independent and related" + Layout(*form));
        }
        if (!all(kAlwaysShown, true)) {
            Problem("a control that is always shown is hidden" + Layout(*form));
        }
        const bool resultsShown = all(kResults, true);
        if (!resultsShown && !all(kResults, false)) {
            Problem("the results are neither all hidden nor all shown" + Layout(*form));
        }
        if (control("dtail").Enabled()) {
            Problem("dtail is enabled");
        }
        for (const std::string& name :
             resultsShown ? kEnabledWithResults : kDisabledWithoutResults) {
            if (control(name).Enabled() != resultsShown) {
                Problem(name + (resultsShown ? " is disabled beside shown results"
                                             : " is enabled while the results are hidden"));
            }
        }
        if (Globals::btn < 0 || Globals::btn > 2) {
            Problem("btn is " + std::to_string(Globals::btn));
        }
        const std::string state = std::string(related       ? "related"
                                              : independent ? "independent"
                                                            : "none") +
                                  (resultsShown ? " with results" : "");
        statesSeen_.insert(state);
        trace_ += state + " btn " + std::to_string(Globals::btn) + "\n";
    }

    static std::string Layout(ControlWnd& form) {
        std::string shown = ": shown are";
        for (const auto* set : {&kCommonEntry, &kIndependent, &kRelated, &kResults}) {
            for (const std::string& name : *set) {
                auto& control =
                    platform::RuntimeCheckCast<platform::RectControl>(form._ControlByName(name));
                if (control.Visible()) {
                    shown += " " + name;
                }
            }
        }
        return shown + "; IBtn " + std::to_string(form.IBtn().Value()) + ", RBtn " +
               std::to_string(form.RBtn().Value());
    }

    void Note(const std::string& event) {
        recent_.push_back(std::to_string(events_) + ": " + event);
        if (recent_.size() > 40) {
            recent_.pop_front();
        }
        trace_ += event + "\n";
    }

    void Problem(const std::string& what) {
        const auto nameOf = [](QWidget* widget) {
            return widget == nullptr ? std::string("none")
                                     : widget->metaObject()->className() + std::string(" ") +
                                           widget->windowTitle().toStdString();
        };
        std::string report = what + "\nafter event " + std::to_string(events_) + " of session " +
                             std::to_string(sessions_) + " (active window " +
                             nameOf(QApplication::activeWindow()) + ", focus " +
                             nameOf(QApplication::focusWidget()) + ", popup " +
                             nameOf(QApplication::activePopupWidget()) + "); the last events:";
        for (const std::string& event : recent_) {
            report += "\n  " + event;
        }
        problems_.push_back(report);
        if (!ending_) {
            ending_ = true;
            platform::Quit(0);
        }
    }

    std::size_t Below(std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng_);
    }

    std::mt19937_64 rng_;
    std::uint64_t keysWanted_;
    std::uint64_t keys_ = 0, events_ = 0, sessions_ = 0, messages_ = 0, calculations_ = 0;
    std::uint64_t timerFiresAt_ = 0;
    bool ending_ = false;
    int turnsEnding_ = 0;
    QWidget other_;
    std::deque<std::string> recent_;
    std::vector<std::string> problems_;
    std::string trace_;
    std::set<std::string> statesSeen_;
};

std::string Seeded(std::uint64_t seed) {
    return "seed " + std::to_string(seed) + " (KORVANE_MONKEY_SEED repeats it)";
}

TEST(Monkey, TwentyThousandRandomKeyPressesClicksMenuChoicesAndActivationsKeepTheFormWhole) {
    // Whether a random walk of this length shows results beside both layouts depends on the
    // seed (two of five seeds tried miss one of them); the default is one that reaches all five
    // states, so that a change that makes one unreachable shows.
    const std::uint64_t seed = FromEnvironment("KORVANE_MONKEY_SEED", 20261123);
    const std::uint64_t keys = FromEnvironment("KORVANE_MONKEY_KEYS", 20000);
    Monkey monkey(seed, keys);
    while (monkey.PlaySession()) {
    }
    ASSERT_TRUE(monkey.Problems().empty()) << Seeded(seed) << ": " << monkey.Problems().front();
    EXPECT_GE(monkey.Keys(), keys);
    // The monkey did reach the program: it pressed Calculate, was answered, and saw results
    // beside both layouts. Results beside no layout cannot be: Clear hides both together, and
    // only a calculation that passed its checks shows results.
    EXPECT_GT(monkey.Calculations(), keys / 1000);
    EXPECT_GT(monkey.Messages(), keys / 1000);
    EXPECT_EQ(monkey.StatesSeen(),
              (std::set<std::string>{"none", "independent", "independent with results", "related",
                                     "related with results"}));
    std::printf(
        "monkey: %s, %llu events (%llu key presses) in %llu sessions, %llu presses of "
        "Calculate, %llu messages\n",
        Seeded(seed).c_str(), static_cast<unsigned long long>(monkey.Events()),
        static_cast<unsigned long long>(monkey.Keys()),
        static_cast<unsigned long long>(monkey.Sessions()),
        static_cast<unsigned long long>(monkey.Calculations()),
        static_cast<unsigned long long>(monkey.Messages()));
}

TEST(Monkey, TheSameSeedPlaysTheSameEventsAndLeavesTheSameStates) {
    const auto play = [] {
        Monkey monkey(7, 400);
        while (monkey.PlaySession()) {
        }
        EXPECT_TRUE(monkey.Problems().empty()) << monkey.Problems().front();
        return monkey.Trace();
    };
    const std::string first = play();
    EXPECT_EQ(play(), first);
    EXPECT_GT(first.size(), 4000u);
}

}  // namespace
}  // namespace korvane::proof
