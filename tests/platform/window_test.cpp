// Windows: building them through their accessor, the registry of living windows, closing,
// activation, size and frame.
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTimer>

#include "sample_windows.h"

namespace {

using namespace sample;

class WindowTest : public PlatformTest {};

TEST_F(WindowTest, TheAccessorBuildsTheWindowOnceAndItsRecordShowsItWithoutAShowCall) {
    EXPECT_EQ(platform::_GetImplicitWindow(FormWnd::kClassName), nullptr);
    EXPECT_EQ(platform::_GetImplicitWindow("Nothing.Nothing"), nullptr);
    EXPECT_THROW(platform::ImplicitWindow("Nothing.Nothing"), platform::NilObjectException);
    platform::recorder::Start();

    FormWnd& first = FormWnd::Instance();
    FormWnd& second = FormWnd::Instance();

    EXPECT_EQ(&first, &second);
    EXPECT_EQ(platform::_GetImplicitWindow(FormWnd::kClassName), &first);
    EXPECT_TRUE(first.Visible());
    EXPECT_TRUE(first.Widget()->isVisible());
    EXPECT_TRUE(platform::recorder::Lines().empty());
    EXPECT_EQ(first.Title(), "Form");
    EXPECT_EQ(first.ControlCount(), 11u);
    EXPECT_EQ(first.ShortName(), "FormWnd");
}

TEST_F(WindowTest, ShowAndHideAreRecordedAndKeepTheWindow) {
    FormWnd& form = FormWnd::Instance();
    platform::recorder::Start();

    form.Hide();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(FormWnd::kClassName), &form);
    form.Show();

    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(platform::recorder::Lines(),
              (std::vector<std::string>{"FormWnd.Hide", "FormWnd.Show"}));
}

TEST_F(WindowTest, AWindowThatDoesNotOverrideCloseClosesAndLeavesTheRegistry) {
    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);
    platform::WeakRef watch(&plain);

    plain.Widget()->close();  // the close button

    EXPECT_FALSE(plain.Widget()->isVisible());
    EXPECT_EQ(platform::_GetImplicitWindow(PlainWnd::kClassName), nullptr);
    EXPECT_NE(watch.Value(), nullptr);  // destroyed later, never inside its own event
    QTRY_COMPARE(watch.Value(), nullptr);
    auto& again = platform::ImplicitWindow(PlainWnd::kClassName);
    EXPECT_TRUE(again.Visible());
}

TEST_F(WindowTest, AWindowWithoutACloseButtonRefusesTheWindowManagersCloseButNotCodes) {
    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);
    constexpr auto kNoCloseButton = PLATFORM_RECORD(Bool("HasCloseButton", false));
    platform::ApplyRecord(plain, kNoCloseButton.view());

    plain.Widget()->close();  // the window manager's close, Alt+F4
    EXPECT_TRUE(plain.Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(PlainWnd::kClassName), &plain);

    plain.Close();
    EXPECT_EQ(platform::_GetImplicitWindow(PlainWnd::kClassName), nullptr);
}

TEST_F(WindowTest, AWindowThatHidesItselfInCloseStaysAliveAndOnRecordByButtonOrByCode) {
    HidingWnd& info = HidingWnd::Instance();

    info.Widget()->close();
    QTest::qWait(20);
    EXPECT_FALSE(info.Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(HidingWnd::kClassName), &info);
    EXPECT_EQ(&HidingWnd::Instance(), &info);

    info.Show();
    info.Close();  // raises Close as the button does
    EXPECT_FALSE(info.Visible());
    EXPECT_EQ(platform::_GetImplicitWindow(HidingWnd::kClassName), &info);
}

class QuittingWnd : public PlainWnd {
  public:
    void Event_Close() override { platform::Quit(0); }
};

TEST_F(WindowTest, AWindowClosedWhileTheRunEndsIsLeftAlone) {
    platform::RegisterWindowClass("QuittingWnd.QuittingWnd",
                                  [] { return std::make_unique<QuittingWnd>(); });
    auto& window = platform::ImplicitWindow("QuittingWnd.QuittingWnd");

    window.Close();

    EXPECT_EQ(platform::_GetImplicitWindow("QuittingWnd.QuittingWnd"), &window);
    EXPECT_EQ(platform::RuntimeExit(), 0);
}

class ReclosingWnd : public PlainWnd {
  public:
    void Event_Close() override {
        ++closes;
        Close();
    }
    int closes = 0;
};

TEST_F(WindowTest, ACloseFromInsideCloseRaisesNothingMoreAndTheWindowCloses) {
    platform::RegisterWindowClass("ReclosingWnd.ReclosingWnd",
                                  [] { return std::make_unique<ReclosingWnd>(); });
    auto& window = platform::RuntimeCheckCast<ReclosingWnd>(
        &platform::ImplicitWindow("ReclosingWnd.ReclosingWnd"));

    window.Widget()->close();

    EXPECT_EQ(window.closes, 1);
    EXPECT_EQ(platform::_GetImplicitWindow("ReclosingWnd.ReclosingWnd"), nullptr);
}

class BrokenWnd : public FormWnd {
  public:
    void CreateControls() override {
        Make<platform::GroupBox>(*this, "box", kBoxRecord);
        throw platform::NilObjectException("no picture");
    }
};

TEST_F(WindowTest, AFailureInConstructionStopsItAndLeavesWhatWasBuilt) {
    platform::RegisterWindowClass("BrokenWnd.BrokenWnd",
                                  [] { return std::make_unique<BrokenWnd>(); });

    EXPECT_THROW(platform::ImplicitWindow("BrokenWnd.BrokenWnd"), platform::NilObjectException);

    platform::Window* broken = platform::_GetImplicitWindow("BrokenWnd.BrokenWnd");
    ASSERT_NE(broken, nullptr);
    EXPECT_EQ(broken->ControlCount(), 1u);
    EXPECT_FALSE(broken->Visible());  // the record's Visible waits for a whole construction
}

TEST_F(WindowTest, AFixedSizeWindowCannotBeResizedOrMaximised) {
    FormWnd& form = FormWnd::Instance();
    QWidget* frame = form.Widget();

    EXPECT_EQ(frame->minimumSize(), frame->maximumSize());
    EXPECT_FALSE(frame->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_TRUE(frame->windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(frame->windowFlags() & Qt::WindowMinimizeButtonHint);
    frame->resize(600, 600);
    EXPECT_EQ(form.ContentWidget()->size(), QSize(400, 300));
}

TEST_F(WindowTest, AResizeableWindowKeepsItsLimitsAndMayBeMaximised) {
    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);
    QWidget* frame = plain.Widget();

    EXPECT_EQ(frame->minimumSize(), QSize(100, 80));
    EXPECT_EQ(frame->maximumSize(), QSize(800, 600));
    EXPECT_TRUE(frame->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(plain.ContentWidget()->size(), QSize(300, 200));
}

constexpr auto kBannerRecord = PLATFORM_RECORD(
    Int("Width", 500), Int("Height", 200), Int("Type", 2), Str("Title", ""),
    Bool("HasCloseButton", false), Bool("HasMaximizeButton", false),
    Bool("HasMinimizeButton", false), Bool("Resizeable", false), Bool("Visible", true));

TEST_F(WindowTest, Type2IsAFrameWithoutTitleOrButtons) {
    platform::Window banner;
    platform::ApplyRecord(banner, kBannerRecord.view());

    EXPECT_TRUE(banner.Widget()->windowFlags() & Qt::FramelessWindowHint);
    EXPECT_FALSE(banner.Widget()->windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(banner.Visible());  // Visible outside a construction takes effect at once
}

TEST_F(WindowTest, AMenuBarSitsAboveTheContentAndDoesNotEatItsHeight) {
    FormWnd& form = FormWnd::Instance();
    platform::MenuBar bar;
    auto file = std::make_unique<platform::MenuItem>();
    file->Value("File");
    bar.AddMenu(std::move(file));

    form.MenuBar(&bar);
    QTest::qWait(10);

    auto* frame = static_cast<QMainWindow*>(form.Widget());
    const int barHeight = frame->menuBar()->height();
    EXPECT_GT(barHeight, 0);
    EXPECT_EQ(form.ContentWidget()->size(), QSize(400, 300));
    EXPECT_EQ(form.ContentWidget()->mapTo(frame, QPoint(0, 0)), QPoint(0, barHeight));
    EXPECT_EQ(frame->height(), 300 + barHeight);
    form.MenuBar(nullptr);
}

TEST_F(WindowTest, TheBackgroundColourFillsTheContent) {
    FormWnd& form = FormWnd::Instance();
    const QImage shown = form.ContentWidget()->grab().toImage();

    EXPECT_EQ(QColor(shown.pixel(395, 250)), QColor(Qt::white));
}

TEST_F(WindowTest, ANewWindowIsCentredOnTheScreen) {
    FormWnd& form = FormWnd::Instance();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();

    const QPoint offset = form.Widget()->geometry().center() - screen.center();

    EXPECT_LE(std::abs(offset.x()), 2);
    EXPECT_LE(std::abs(offset.y()), 2);
}

TEST_F(WindowTest, EachActivationRaisesActivateAndThenEnableMenuItems) {
    FormWnd& form = FormWnd::Instance();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    EXPECT_EQ(form.activations, 1);
    EXPECT_EQ(form.menuUpdates, 1);
    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);
    ASSERT_TRUE(QTest::qWaitForWindowActive(plain.Widget()));

    ASSERT_TRUE(ShowActive(form));

    EXPECT_EQ(form.activations, 2);
    EXPECT_EQ(form.menuUpdates, 2);
}

TEST_F(WindowTest, DismissingAMessageBoxIsNoActivation) {
    platform::SetMessageBoxHook({});  // a real, modal message box
    FormWnd& form = FormWnd::Instance();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    const int before = form.activations;
    bool formWasInactive = false;
    QString shownText;
    QTimer::singleShot(50, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shownText = box->text();
        formWasInactive = !form.Widget()->isActiveWindow();
        box->accept();
    });

    platform::MsgBox("Please enter the mean of sample 1");
    EXPECT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    QTest::qWait(20);

    EXPECT_EQ(shownText, QStringLiteral("Please enter the mean of sample 1"));
    EXPECT_TRUE(formWasInactive);
    EXPECT_TRUE(form.Widget()->isActiveWindow());
    EXPECT_EQ(form.activations, before);

    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);  // a real activation still counts
    ASSERT_TRUE(QTest::qWaitForWindowActive(plain.Widget()));
    ASSERT_TRUE(ShowActive(form));
    EXPECT_EQ(form.activations, before + 1);
}

TEST_F(WindowTest, AMessageAnsweredByTheHookLeavesTheNextActivationCounted) {
    FormWnd& form = FormWnd::Instance();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
    const int before = form.activations;

    platform::MsgBox("hello");
    auto& plain = platform::ImplicitWindow(PlainWnd::kClassName);
    ASSERT_TRUE(QTest::qWaitForWindowActive(plain.Widget()));
    ASSERT_TRUE(ShowActive(form));

    EXPECT_EQ(messages, std::vector<std::string>{"hello"});
    EXPECT_EQ(form.activations, before + 1);
}

TEST_F(WindowTest, ControlsAreFoundByTheirNameAndMenuHandlersPerItemName) {
    FormWnd& form = FormWnd::Instance();
    EXPECT_EQ(form._ControlByName("m1fld"), form.ControlAt(1));
    EXPECT_EQ(form._ControlByName("nothing"), nullptr);
    EXPECT_THROW(platform::RuntimeCheckCast<platform::PushButton>(form._ControlByName("m1fld")),
                 platform::IllegalCastException);
    int runs = 0;

    form._AddMenuHandler("AboutMenuItem", [&runs] {
        ++runs;
        return true;
    });

    EXPECT_TRUE(form.HasMenuHandler("AboutMenuItem"));
    EXPECT_FALSE(form.HasMenuHandler("EditCopy"));
    EXPECT_TRUE(form.RunMenuHandler("AboutMenuItem"));
    EXPECT_FALSE(form.RunMenuHandler("EditCopy"));
    EXPECT_EQ(runs, 1);
}

}  // namespace
