// Windows and the run: the registry of living windows, closing, size, activation and message
// boxes, failures and their exit status, and the thread gate.
#include <QMessageBox>
#include <QTimer>
#include <future>

#include "platform/qt/buttons.h"
#include "sample_windows.h"

namespace {

using namespace sample;
using platform::_GetImplicitWindow;
using Lines = std::vector<std::string>;

constexpr auto kResizeable = PLATFORM_RECORD(
    Int("Width", 300), Int("Height", 200), Bool("Resizeable", true), Int("MaximumWidth", 800),
    Bool("HasMaximizeButton", true), Bool("Visible", true));

using WindowTest = PlatformTest;

TEST_F(WindowTest, TheAccessorBuildsTheWindowOnceShownAndResizeableAsItsRecordSays) {
    EXPECT_THROW(platform::ImplicitWindow("Nothing.Nothing"), platform::NilObjectException);
    FormWnd& form = FormWnd::Instance();
    EXPECT_EQ(&FormWnd::Instance(), &form);
    EXPECT_EQ(_GetImplicitWindow(FormWnd::kClassName), &form);
    EXPECT_TRUE(form.Widget()->isVisible());
    platform::Window resizeable;
    platform::ApplyRecord(resizeable, kResizeable.view());
    EXPECT_TRUE(resizeable.Widget()->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(resizeable.Widget()->maximumWidth(), 800);
}

// The first show centres a window in the screen's free area; one larger than that keeps its top
// left corner, with its title bar, on the screen.
constexpr auto kSmall = PLATFORM_RECORD(Int("Width", 300), Int("Height", 200));
constexpr auto kTooWide = PLATFORM_RECORD(Int("Width", 5000), Int("Height", 200));
constexpr auto kTooTall = PLATFORM_RECORD(Int("Width", 300), Int("Height", 5000));

TEST_F(WindowTest, AWindowComesUpCentredAndNeverAboveOrLeftOfTheScreen) {
    const QRect free = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint centred = free.center() - QPoint(149, 99);
    const struct {
        std::string_view record;
        QPoint topLeft;
    } cases[] = {{kSmall.view(), centred},
                 {kTooWide.view(), {free.left(), centred.y()}},
                 {kTooTall.view(), {centred.x(), free.top()}}};
    for (const auto& placed : cases) {
        platform::Window window;
        platform::ApplyRecord(window, placed.record);
        window.Show();
        EXPECT_EQ(window.Widget()->pos(), placed.topLeft) << window.Widget()->width();
    }
}

TEST_F(WindowTest, TheCloseButtonClosesHidesOrIsRefusedAsTheWindowSays) {
    const platform::WeakRef closed(&FormWnd::Instance());
    FormWnd::Instance().Widget()->close();
    EXPECT_EQ(_GetImplicitWindow(FormWnd::kClassName), nullptr);
    QTRY_COMPARE(closed.Value(), nullptr);  // deleted later, never inside its own event

    FormWnd& hiding = FormWnd::Instance();
    hiding.hideOnClose = true;
    hiding.Widget()->close();
    EXPECT_FALSE(hiding.Visible());
    EXPECT_EQ(&FormWnd::Instance(), &hiding);

    platform::ApplyRecord(hiding, PLATFORM_RECORD(Bool("HasCloseButton", false)).view());
    hiding.Show();
    hiding.Widget()->close();  // the window manager's close, Alt+F4
    EXPECT_TRUE(hiding.Visible());
    hiding.hideOnClose = false;
    hiding.Close();  // code may still close it
    EXPECT_EQ(_GetImplicitWindow(FormWnd::kClassName), nullptr);
}

TEST_F(WindowTest, AHiddenWindowGivesBackItsNativeWindowAndComesBackWhole) {
    FormWnd& form = FormWnd::Instance();
    form.Get("m1fld").Text("12.5");
    const QSize size = form.Widget()->size();

    // Given back once control is back in the event loop: Qt may still be dispatching an event
    // to it. Hidden and shown again before that, it keeps it.
    form.Hide();
    form.Show();
    QTest::qWait(1);
    EXPECT_NE(form.Widget()->windowHandle(), nullptr);
    form.Hide();
    EXPECT_NE(form.Widget()->windowHandle(), nullptr);
    QTest::qWait(1);
    EXPECT_EQ(form.Widget()->windowHandle(), nullptr);

    form.Show();
    EXPECT_TRUE(form.Visible());
    EXPECT_NE(form.Widget()->windowHandle(), nullptr);
    EXPECT_EQ(form.Widget()->size(), size);
    EXPECT_EQ(form.Get("m1fld").Text(), "12.5");
    EXPECT_TRUE(form.Get("m1fld").Widget()->isVisible());
}

TEST_F(WindowTest, AnActivationRaisesActivateThenEnableMenuItemsButDismissingAMessageDoesNot) {
    platform::SetMessageBoxHook({});  // a real, modal message box
    FormWnd& form = Form();
    EXPECT_EQ(form.events, (Lines{"Activate", "EnableMenuItems"}));
    QString shown;
    QTimer::singleShot(50, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->text();
        box->accept();
    });

    platform::MsgBox("A message");
    EXPECT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    QTest::qWait(20);
    EXPECT_EQ(shown, QStringLiteral("A message"));
    EXPECT_EQ(form.events.size(), 2u);

    platform::Window other;
    platform::ApplyRecord(other, kResizeable.view());
    ASSERT_TRUE(QTest::qWaitForWindowActive(other.Widget()));
    form.Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    EXPECT_EQ(form.events.size(), 4u);  // a real activation still counts
}

TEST_F(WindowTest, AFailureInAnyHandlerIsReportedAndEndsTheRunWithStatus1) {
    FormWnd& form = Form();
    form.Get<platform::PushButton>("CalcBtn").Action = [](auto&) {
        throw platform::NilObjectException("a control went missing");
    };
    // A handler bound to a window that is gone as soon as the handler is made.
    auto orphan = platform::Delegate(*std::make_unique<FormWnd>(), &FormWnd::KeyDown);
    QTimer::singleShot(0, [&] {
        Mouse(form, form.Get<platform::PushButton>("CalcBtn"));
        platform::ProtectedCall([&] { orphan(form.m1fld(), "1"); });
        platform::ProtectedCall([] { throw std::logic_error("not a runtime failure"); });
    });

    platform::_RuntimeRun();  // returns only because the run ended

    EXPECT_EQ(failures,
              (Lines{"NilObjectException", "NilObjectException", "not a runtime failure"}));
    EXPECT_EQ(platform::RuntimeExit(), 1);
}

TEST_F(WindowTest, UserInterfaceOperationsFromAnotherThreadAreRefused) {
    FormWnd& form = FormWnd::Instance();
    EXPECT_THROW(std::async(std::launch::async, [&] { form.m1fld().Visible(false); }).get(),
                 platform::ThreadAccessingUIException);
    EXPECT_TRUE(form.m1fld().Visible());
}

}  // namespace
