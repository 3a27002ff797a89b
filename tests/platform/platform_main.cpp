// One QApplication for the whole test program, made the way the program makes it.
#include <gtest/gtest.h>

#include <QString>
#include <QtGlobal>

#include "platform/qt/runtime.h"

namespace {

QtMessageHandler gQtDefault = nullptr;

// The offscreen platform says on every show that it cannot raise a window; nothing else is
// dropped.
void QuietOffscreen(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support"))) {
        return;
    }
    gQtDefault(type, context, message);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    gQtDefault = qInstallMessageHandler(QuietOffscreen);
    platform::RuntimeInit();
    return RUN_ALL_TESTS();
}
