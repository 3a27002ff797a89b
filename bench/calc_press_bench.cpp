// The Calculate button pressed on the real control window (Qt's offscreen platform), at the
// largest df: independent means 3.2 and 3.1, SDs .4 and .5, N 9999 and 9999, df 19996.
//   BM_CalculatePress           the button's press and release, delivered to it as the window
//                               system delivers them, to the three result fields written
//   BM_CalculatePressAndPaint   the same, and the window repainted with the new results
// Each run checks that the fields hold +15.617, 19996 and .0001.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QTest>
#include <cstdio>
#include <string>

#include "control/control_wnd.h"
#include "platform/qt/buttons.h"
#include "platform/qt/runtime.h"
#include "platform/qt/text_controls.h"
#include "platform/qt/window.h"
#include "stats/stats.h"
#include "windows/about_wnd.h"
#include "windows/qwindow.h"

namespace {

using korvane::ControlWnd;

// The form as a user leaves it before pressing Calculate: the independent test chosen, the six
// entries typed.
ControlWnd& FilledForm() {
    static ControlWnd* form = [] {
        korvane::AboutWnd::RegisterClass();
        korvane::ControlWnd::RegisterClass();
        korvane::Qwindow::RegisterClass();
        korvane::AboutWnd& about = korvane::AboutWnd::Instance();
        about.Timer1().Mode(0);
        about.Hide();
        ControlWnd& f = ControlWnd::Instance();
        static_cast<void>(QTest::qWaitForWindowActive(f.Widget()));
        const QPoint at = f.IBtn().Widget()->mapTo(f.Widget(), f.IBtn().Widget()->rect().center());
        QTest::mouseClick(f.Widget()->windowHandle(), Qt::LeftButton, {}, at);
        f.m1fld().Text("3.2");
        f.m2fld().Text("3.1");
        f.sd1fld().Text(".4");
        f.sd2fld().Text(".5");
        f.n1fld().Text("9999");
        f.n2fld().Text("9999");
        return &f;
    }();
    return *form;
}

// A left click on the button, sent to it as the window system's press and release are.
void Press(QWidget& button) {
    const QPointF at = QRectF(button.rect()).center();
    const QPointF global = button.mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, {});
    QApplication::sendEvent(&button, &press);
    QApplication::sendEvent(&button, &release);
}

bool ResultsAreRight(ControlWnd& form, benchmark::State& state) {
    const std::string shown =
        form.tfld().Text() + " " + form.dfFld().Text() + " " + form.pfld().Text();
    if (shown != "+15.617 19996 .0001" || korvane::Globals::btn != 1) {
        state.SkipWithError(("the fields show " + shown).c_str());
        return false;
    }
    return true;
}

void BM_CalculatePress(benchmark::State& state) {
    ControlWnd& form = FilledForm();
    QWidget& button = *form.CalcBtn().Widget();
    for (auto _ : state) {
        Press(button);
    }
    ResultsAreRight(form, state);
}
BENCHMARK(BM_CalculatePress)->Unit(benchmark::kMicrosecond);

void BM_CalculatePressAndPaint(benchmark::State& state) {
    ControlWnd& form = FilledForm();
    QWidget& button = *form.CalcBtn().Widget();
    for (auto _ : state) {
        Press(button);
        form.Widget()->repaint();
    }
    ResultsAreRight(form, state);
}
BENCHMARK(BM_CalculatePressAndPaint)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");  // a benchmark needs no display
    }
    platform::RuntimeInit();
    QLocale::setDefault(QLocale::c());
    platform::SetMessageBoxHook([](const std::string& text) {
        std::fprintf(stderr, "unexpected message: %s\n", text.c_str());
    });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    platform::DestroyAllWindows();
    return 0;
}
