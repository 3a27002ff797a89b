// The picture loaders keep what they found and try again what they did not. The loaders hold
// their pictures for the whole process, so this program has this one test alone.
#include <filesystem>

#include "tests/windows/ui_test_support.h"
#include "windows/pictures.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

using PicturesTest = UiTest;

TEST_F(PicturesTest, AMissingPictureLeavesItsCanvasEmptyAndIsTriedAgainLater) {
    const auto empty = std::filesystem::temp_directory_path() / "korvane-no-pictures";
    std::filesystem::create_directories(empty);
    platform::SetResourceDirectory(empty);
    EXPECT_EQ(tlarge(), nullptr);
    EXPECT_EQ(tformula(), nullptr);

    ControlWnd& form = Form();
    EXPECT_EQ(form.HalbrineTitle().Backdrop(), nullptr);
    EXPECT_TRUE(form.Visible());
    Qwindow& information = Qwindow::Instance();
    EXPECT_EQ(information.Canvas1().Backdrop(), nullptr);
    EXPECT_TRUE(information.Visible());
    platform::DestroyAllWindows();

    platform::SetResourceDirectory({});  // the pictures built into the program
    platform::Picture* banner = tlarge();
    ASSERT_NE(banner, nullptr);
    EXPECT_EQ(banner->Width(), 488);
    EXPECT_EQ(banner->Height(), 73);
    ASSERT_NE(tformula(), nullptr);
    EXPECT_EQ(tformula()->Width(), 282);
    EXPECT_EQ(tformula()->Height(), 216);

    ControlWnd& again = Form();
    EXPECT_EQ(again.HalbrineTitle().Backdrop(), banner);
    EXPECT_EQ(AboutWnd::Instance().Canvas1().Backdrop(), banner) << "one picture for both";

    platform::SetResourceDirectory(empty);
    EXPECT_EQ(tlarge(), banner) << "a found picture is kept, not read again";
    platform::SetResourceDirectory({});
}

}  // namespace
}  // namespace korvane::testing
