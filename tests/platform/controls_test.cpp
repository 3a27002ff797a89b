// Controls on a real window: where records put them, what a click reaches, radio buttons, push
// buttons, the tab chain and the canvas.
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <filesystem>

#include "sample_windows.h"

namespace {

using namespace sample;
using platform::Window;

class ControlsTest : public PlatformTest {
  protected:
    FormWnd& ShownForm() {
        FormWnd& form = FormWnd::Instance();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
        return form;
    }
};

TEST_F(ControlsTest, AControlInsideAFrameStandsAtTheWindowCoordinatesOfItsRecord) {
    FormWnd& form = FormWnd::Instance();

    EXPECT_EQ(form.m1fld().Widget()->parentWidget(), form.box().Widget());
    EXPECT_EQ(WindowRect(form.m1fld(), form), QRect(40, 125, 80, 22));
    EXPECT_EQ(form.m1fld().Widget()->pos(), QPoint(20, 25));  // relative to the frame at (20,100)
    EXPECT_EQ(WindowRect(form.rfld(), form), QRect(210, 175, 80, 22));
    EXPECT_EQ(form.rfld().Widget()->parentWidget(), form.ContentWidget());

    form.box().SetLeft(30);  // children follow when their frame moves
    form.box().SetTop(90);
    EXPECT_EQ(WindowRect(form.m1fld(), form), QRect(40, 125, 80, 22));
    EXPECT_EQ(form.m1fld().Widget()->pos(), QPoint(10, 35));
}

constexpr auto kLateChild = PLATFORM_RECORD(Str("InitialParent", "later"), Int("Left", 60),
                                            Int("Top", 70), Int("Width", 50), Int("Height", 20));
constexpr auto kLateFrame = PLATFORM_RECORD(Int("Left", 50), Int("Top", 50), Int("Width", 100),
                                            Int("Height", 100), Str("Caption", "Later"));

TEST_F(ControlsTest, AParentAddedAfterItsChildTakesTheChildOver) {
    FormWnd& form = FormWnd::Instance();

    auto& child = Make<platform::Label>(form, "orphan", kLateChild);
    EXPECT_EQ(child.Widget()->parentWidget(), form.ContentWidget());
    auto& frame = Make<platform::GroupBox>(form, "later", kLateFrame);

    EXPECT_EQ(child.Widget()->parentWidget(), frame.Widget());
    EXPECT_EQ(WindowRect(child, form), QRect(60, 70, 50, 20));
}

TEST_F(ControlsTest, AClickAtARadioButtonInsideALaterFrameReachesTheButton) {
    FormWnd& form = ShownForm();
    ASSERT_TRUE(WindowRect(form.IBtn(), form)
                    .intersects(WindowRect(platform::RuntimeCheckCast<platform::GroupBox>(
                                               form._ControlByName("typeBox")),
                                           form)));

    ClickAt(form, CentreOf(form.IBtn(), form));

    EXPECT_TRUE(form.IBtn().Value());
    EXPECT_EQ(form.iActions, 1);
    EXPECT_EQ(form.typeBoxPresses, 0);
}

TEST_F(ControlsTest, AClickAtAWindowFieldInsideAnEarlierFrameReachesTheField) {
    FormWnd& form = ShownForm();

    ClickAt(form, CentreOf(form.rfld(), form));

    EXPECT_EQ(QApplication::focusWidget(), form.rfld().Widget());
}

TEST_F(ControlsTest, APressOnTheFrameOutsideItsButtonsGoesToTheFrameAndThenTheWindow) {
    FormWnd& form = ShownForm();

    ClickAt(form, QPoint(300, 80));  // inside typeBox, right of RBtn

    EXPECT_EQ(form.typeBoxPresses, 1);
    EXPECT_FALSE(form.IBtn().Value());
    EXPECT_FALSE(form.RBtn().Value());
    ASSERT_EQ(form.windowPresses.size(), 1u);
    EXPECT_EQ(form.windowPresses[0], QPoint(300, 80));
}

TEST_F(ControlsTest, RadioButtonsOfOneParentExcludeEachOtherAndAClickOnAnOnButtonActs) {
    FormWnd& form = ShownForm();

    ClickAt(form, CentreOf(form.IBtn(), form));
    ClickAt(form, CentreOf(form.RBtn(), form));
    ClickAt(form, CentreOf(form.RBtn(), form));

    EXPECT_FALSE(form.IBtn().Value());
    EXPECT_TRUE(form.RBtn().Value());
    EXPECT_EQ(form.iActions, 1);
    EXPECT_EQ(form.rActions, 2);
}

TEST_F(ControlsTest, ARadioButtonSetOrClearedByCodeRaisesNoActionAndIsReallySo) {
    FormWnd& form = ShownForm();
    ClickAt(form, CentreOf(form.IBtn(), form));
    ASSERT_TRUE(form.IBtn().Value());

    form.IBtn().Value(false);
    EXPECT_FALSE(form.IBtn().Value());
    EXPECT_FALSE(static_cast<QRadioButton*>(form.IBtn().Widget())->isChecked());
    EXPECT_FALSE(form.RBtn().Value());

    form.IBtn().Value(true);
    form.RBtn().Value(true);  // clears its sibling
    EXPECT_FALSE(form.IBtn().Value());
    EXPECT_TRUE(form.RBtn().Value());
    EXPECT_EQ(form.iActions, 1);
    EXPECT_EQ(form.rActions, 0);
}

TEST_F(ControlsTest, APushButtonRaisesMouseDownOnThePressAndActionOnTheRelease) {
    FormWnd& form = ShownForm();
    const QPoint centre = CentreOf(form.HelpBtn(), form);

    PressAt(form, centre);
    EXPECT_EQ(form.helpPresses, 1);
    EXPECT_EQ(form.helpActions, 0);
    ReleaseAt(form, centre);

    EXPECT_EQ(form.helpActions, 1);
    EXPECT_TRUE(form.helpPressedBeforeAction);
}

TEST_F(ControlsTest, ADisabledButtonReactsToNothing) {
    FormWnd& form = ShownForm();
    form.HelpBtn().Enabled(false);

    ClickAt(form, CentreOf(form.HelpBtn(), form));

    EXPECT_EQ(form.helpPresses, 0);
    EXPECT_EQ(form.helpActions, 0);
}

TEST_F(ControlsTest, AClickOnAButtonWithoutTabStopLeavesTheFocusInTheField) {
    FormWnd& form = ShownForm();
    form.m1fld().SetFocus();

    ClickAt(form, CentreOf(form.CalcBtn(), form));

    EXPECT_EQ(form.calcActions, 1);
    EXPECT_EQ(QApplication::focusWidget(), form.m1fld().Widget());
}

TEST_F(ControlsTest, AHiddenControlCannotBeClickedAndShowsAgainWithItsFrame) {
    FormWnd& form = ShownForm();
    form.IBtn().Visible(false);

    ClickAt(form, CentreOf(form.IBtn(), form));
    EXPECT_EQ(form.iActions, 0);

    form.IBtn().Visible(true);
    EXPECT_TRUE(form.IBtn().Widget()->isVisible());
    form.box().Visible(false);
    EXPECT_FALSE(form.m1fld().Widget()->isVisible());
    EXPECT_TRUE(form.m1fld().Visible());  // its own flag stands
    form.box().Visible(true);
    EXPECT_TRUE(form.m1fld().Widget()->isVisible());
}

TEST_F(ControlsTest, TabFollowsReadingOrderAcrossTheWindowAndTabIndexInsideAFrame) {
    FormWnd& form = ShownForm();
    form.m1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form.m1fld().Widget());

    // Top to bottom: the title (no stop), typeBox with the radio group (one stop), the frame
    // with m1fld (0) and n1fld (1), rfld, then CalcBtn (no stop) and HelpBtn on the last row.
    // By TabIndex alone rfld (2) would come before the frame (3) and the radios (5, 6) after it.
    std::vector<QWidget*> visited;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited.push_back(QApplication::focusWidget());
    }

    const std::vector<QWidget*> expected = {form.n1fld().Widget(), form.rfld().Widget(),
                                            form.HelpBtn().Widget(), form.IBtn().Widget(),
                                            form.m1fld().Widget()};
    EXPECT_EQ(visited, expected);
}

TEST_F(ControlsTest, ShiftTabMovesBackwardsAndTabEntersARadioGroupAtItsChosenButton) {
    FormWnd& form = ShownForm();
    form.RBtn().Value(true);
    form.IBtn().Value(false);
    form.m1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form.m1fld().Widget());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), form.RBtn().Widget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), form.HelpBtn().Widget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), form.RBtn().Widget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), form.m1fld().Widget());
}

TEST_F(ControlsTest, RadioButtonsDrawnInsideAFrameAreItsGroupAndKeepTheirPlace) {
    FormWnd& form = ShownForm();
    const QWidget* content = form.ContentWidget();

    for (platform::RadioButton* radio : {&form.IBtn(), &form.RBtn()}) {
        EXPECT_EQ(radio->Widget()->parentWidget(), form.typeBox().Widget());
        EXPECT_EQ(radio->Widget()->mapTo(content, QPoint(0, 0)),
                  QPoint(int(radio->Left()), int(radio->Top())));
    }
    EXPECT_EQ(form.rfld().Widget()->parentWidget(), content);  // only radio buttons move
}

TEST_F(ControlsTest, ALowerTabIndexSetLaterMovesAControlForward) {
    FormWnd& form = ShownForm();
    form.n1fld().SetTabIndex(-1);  // now before m1fld inside the frame
    form.n1fld().SetFocus();
    QTRY_COMPARE(QApplication::focusWidget(), form.n1fld().Widget());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);

    EXPECT_EQ(QApplication::focusWidget(), form.m1fld().Widget());
}

TEST_F(ControlsTest, TheCanvasTellsWhenTheMouseComesAndGoes) {
    FormWnd& form = ShownForm();
    QWindow* handle = form.Widget()->windowHandle();

    QTest::mouseMove(handle, FramePoint(form, QPoint(200, 270)));
    QTest::mouseMove(handle, FramePoint(form, CentreOf(form.title(), form)));
    QTRY_COMPARE(form.enters, 1);
    EXPECT_EQ(form.exits, 0);
    QTest::mouseMove(handle, FramePoint(form, QPoint(200, 200)));
    QTRY_COMPARE(form.exits, 1);
}

TEST_F(ControlsTest, APressOnACanvasOrALabelReachesTheWindow) {
    FormWnd& form = ShownForm();

    ClickAt(form, QPoint(100, 20));                               // on the title canvas
    ClickAt(form, CentreOf(form.m1fld(), form) + QPoint(0, 25));  // on the label in the frame

    ASSERT_EQ(form.windowPresses.size(), 2u);
    EXPECT_EQ(form.windowPresses[0], QPoint(100, 20));
}

class PictureTest : public PlatformTest {
  protected:
    void SetUp() override {
        PlatformTest::SetUp();
        directory = std::filesystem::temp_directory_path() / "korvane_platform_pictures";
        std::filesystem::create_directories(directory);
        QImage image(30, 20, QImage::Format_RGB32);
        image.fill(QColor(0x12, 0x34, 0x56));
        ASSERT_TRUE(image.save(QString::fromStdString((directory / "swatch.png").string())));
        platform::SetResourceDirectory(directory);
    }
    void TearDown() override {
        std::filesystem::remove_all(directory);
        PlatformTest::TearDown();
    }
    std::filesystem::path directory;
};

TEST_F(PictureTest, APictureOpensFromTheResourceDirectoryWithItsSize) {
    auto picture = platform::Picture::_OpenFromApp("swatch.png");

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->Width(), 30);
    EXPECT_EQ(picture->Height(), 20);
}

TEST_F(PictureTest, AMissingOrUnreadablePictureIsNil) {
    std::filesystem::path broken = directory / "broken.png";
    FILE* file = std::fopen(broken.c_str(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("not a picture", file);
    std::fclose(file);

    EXPECT_EQ(platform::Picture::_OpenFromApp("missing.png"), nullptr);
    EXPECT_EQ(platform::Picture::_OpenFromApp("broken.png"), nullptr);
}

TEST_F(PictureTest, ACanvasPaintsItsBackdropAtTheTopLeftUnscaled) {
    FormWnd& form = FormWnd::Instance();
    auto picture = platform::Picture::_OpenFromApp("swatch.png");
    ASSERT_NE(picture, nullptr);

    form.title().Backdrop(picture.get());
    const QImage shown = form.title().Widget()->grab().toImage();

    EXPECT_EQ(form.title().Backdrop(), picture.get());
    EXPECT_EQ(QColor(shown.pixel(0, 0)), QColor(0x12, 0x34, 0x56));
    EXPECT_EQ(QColor(shown.pixel(29, 19)), QColor(0x12, 0x34, 0x56));
    EXPECT_NE(QColor(shown.pixel(35, 25)), QColor(0x12, 0x34, 0x56));

    form.title().Backdrop(nullptr);
    EXPECT_EQ(form.title().Backdrop(), nullptr);
}

TEST(ResourceDirectory, FallsBackToAFolderThatExists) {
    platform::SetResourceDirectory({});
    EXPECT_FALSE(platform::ResourceDirectory().empty());
    platform::SetResourceDirectory("/somewhere/else");
    EXPECT_EQ(platform::ResourceDirectory(), std::filesystem::path("/somewhere/else"));
    platform::SetResourceDirectory({});
}

}  // namespace
