// The one QApplication of the proof tests, made as the program makes it, in the C locale, so
// that it outlives every run of the program inside a test.
#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

#include "platform/qt/runtime.h"

namespace {

// The offscreen platform says for every raise and popup that it cannot do them; thousands of
// such lines would bury what matters in the test's output.
QtMessageHandler gQtHandler = nullptr;

void DropOffscreenNotices(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(QLatin1String("This plugin does not support"))) {
        gQtHandler(type, context, text);
    }
}

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    gQtHandler = qInstallMessageHandler(DropOffscreenNotices);
    QApplication app(argc, argv);
    platform::RuntimeInit();
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
