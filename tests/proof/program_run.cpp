#include "tests/proof/program_run.h"

#include <QApplication>
#include <QLocale>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <exception>
#include <string_view>

#include <gtest/gtest.h>

#include "app/startup.h"
#include "platform/qt/application.h"
#include "platform/qt/rect_control.h"
#include "platform/qt/runtime.h"
#include "windows/menu.h"

namespace korvane::proof {

int RunProgram(const std::function<void()>& driver,
               const std::function<void(const std::string&)>& message,
               const std::function<void(const std::string&)>& failure) {
    platform::SetMessageBoxHook(message);
    platform::SetUnhandledExceptionHook([&failure](std::exception_ptr escaped) {
        try {
            std::rethrow_exception(escaped);
        } catch (const platform::RuntimeException& e) {
            failure(e.ClassName() + std::string(": ") + e.Message());
        } catch (const std::exception& e) {
            failure(e.what());
        }
    });
    // The test's own timer, stopped after the run: a turn that never came (the run failed before
    // it) must not come in the next run's loop.
    QTimer turn;
    turn.setSingleShot(true);
    QObject::connect(&turn, &QTimer::timeout, driver);
    korvane::SetStepHook([&turn](std::string_view step) {
        if (step == "_MakeDefaultView") {
            turn.start(0);
        }
    });
    const int status = korvane::Main();
    korvane::SetStepHook({});
    platform::SetMessageBoxHook({});
    platform::SetUnhandledExceptionHook({});
    turn.stop();
    platform::DestroyAllWindows();
    platform::DestroyAppObject();
    Menu::ResetImplicitInstance();
    platform::_RuntimeResetRun();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    return status;
}

platform::Window* LivingWindow(const char* className) {
    return platform::_GetImplicitWindow(className);
}

QWidget* ControlWidget(const platform::Window& window, const std::string& name) {
    for (std::size_t i = 0; i < window.ControlCount(); ++i) {
        auto* control = dynamic_cast<platform::RectControl*>(window.ControlAt(i));
        if (control != nullptr && control->Name() == name) {
            return control->Widget();
        }
    }
    return nullptr;
}

void ClickCentre(QWidget& widget) {
    QWidget* top = widget.window();
    QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {},
                      widget.mapTo(top, widget.rect().center()));
}

}  // namespace korvane::proof

// The one QApplication of the proof tests, made as the program makes it, in the C locale, so
// that it outlives every run of the program inside a test. The offscreen platform's notices that
// it cannot raise or pop up a window would bury what matters in the output.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    static const QtMessageHandler qtHandler = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            if (!text.startsWith(QLatin1String("This plugin does not support"))) {
                qtHandler(type, context, text);
            }
        });
    QApplication app(argc, argv);
    platform::RuntimeInit();
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
