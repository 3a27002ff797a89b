// The floor of any Qt program here: a minimal Qt 6 Widgets program that shows one window of the
// control window's size and ends. It prints, as korvane_startup does, the time from the process's
// start to the window shown and the resident memory once it has painted.
//   startup_floor [WIDTHxHEIGHT] [empty|text|text+icon]
// "empty" (the default) is the bare floor. "text" puts one line of text in the window, which
// costs any program that shows text the loading of the system's fonts. "text+icon" also gives
// the windows Korvane's 64-pixel icon, read as any Qt program reads a picture file.
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <cstring>

#include "bench/startup_probe.h"

int main(int argc, char** argv) {
    bench::StartTheClock(argv);
    QApplication app(argc, argv);
    int width = 500;
    int height = 400;
    const char* kind = argc > 2 ? argv[2] : "empty";
    if ((argc > 1 && std::sscanf(argv[1], "%dx%d", &width, &height) != 2) ||
        (std::strcmp(kind, "empty") != 0 && std::strcmp(kind, "text") != 0 &&
         std::strcmp(kind, "text+icon") != 0)) {
        std::fprintf(stderr, "usage: startup_floor [WIDTHxHEIGHT] [empty|text|text+icon]\n");
        return 2;
    }
    if (std::strcmp(kind, "text+icon") == 0) {
        QApplication::setWindowIcon(QIcon(QStringLiteral(KORVANE_ICON)));
    }
    QWidget window;
    window.setWindowTitle(QStringLiteral("floor"));
    window.resize(width, height);
    if (std::strcmp(kind, "empty") != 0) {
        (new QLabel(QStringLiteral("Student's t-test"), &window))->move(20, 20);
    }
    bench::ExposeProbe probe([&](QWindow& shown) {
        const double ms = bench::MillisecondsSinceStart();
        // Resident memory once the window has painted: the next turn of the loop.
        QTimer::singleShot(0, [ms, &shown] {
            bench::Report(ms, bench::ResidentKiB(), shown.width(), shown.height());
            QCoreApplication::quit();
        });
    });
    app.installEventFilter(&probe);
    window.show();
    return QApplication::exec();
}
