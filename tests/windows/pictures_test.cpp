// The pictures at the screen's scale: the title and the formula drawn from the picture made for
// the screen's density, smoothly where the scale lies between; the message box's sign and the
// window icon at every size asked for; and no warning from Qt on the way. The suite runs once
// at 100% and again at 125%, 150% and 200% (QT_SCALE_FACTOR, see CMakeLists.txt).
#include <QCoreApplication>
#include <QImage>
#include <QMessageBox>
#include <QStyle>
#include <cmath>
#include <cstdlib>
#include <string>

#include "platform/qt/canvas.h"
#include "platform/qt/qt_support.h"
#include "tests/windows/ui_test_support.h"
#include "windows/qwindow.h"

namespace korvane::testing {
namespace {

using PicturesTest = FormFixture;

// Mean difference per channel between two images of one size, 0 to 255.
double Distance(const QImage& a, const QImage& b) {
    const QImage x = a.convertToFormat(QImage::Format_ARGB32);
    const QImage y = b.convertToFormat(QImage::Format_ARGB32);
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const uchar*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const uchar*>(y.constScanLine(row));
        for (int i = 0; i < 4 * x.width(); ++i) {
            sum += std::abs(p[i] - q[i]);
        }
    }
    return sum / (4.0 * x.width() * x.height());
}

// What the canvas shows, in screen pixels, against the picture made for twice the density resized
// to that size smoothly and pixel by pixel. At 100% and 200% the screen shows a picture as it was
// made; in between it must be the smooth resize, far nearer to it than to the jagged one.
void ExpectDrawnSmoothly(const platform::RectControl& canvas, const std::string& picture) {
    QWidget& widget = *canvas.Widget();
    const double scale = widget.devicePixelRatioF();
    const QImage made = platform::qt::ReadPicture(picture);
    const QSize size = (made.deviceIndependentSize() * scale).toSize();
    const QImage shown = widget.grab().toImage().copy(QRect(QPoint(0, 0), size));
    if (scale == 1.0 || scale == 2.0) {
        EXPECT_EQ(Distance(shown, made), 0.0) << picture << " at " << scale;
        return;
    }
    const QImage dense = platform::qt::ReadPng(
        QStringLiteral(":/korvane/%1@2x.png").arg(QString::fromStdString(picture).chopped(4)));
    const double smooth =
        Distance(shown, dense.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    const double jagged = Distance(shown, dense.scaled(size));
    EXPECT_LT(smooth, jagged / 2) << picture << " at " << scale << ": " << smooth << " from the "
                                  << "smooth resize, " << jagged << " from the jagged one";
}

TEST_F(PicturesTest, TheTitleAndTheFormulaAreDrawnSmoothlyAtTheScreensScale) {
    ExpectDrawnSmoothly(form->HalbrineTitle(), "tlarge.png");
    Qwindow& information = Qwindow::Instance();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(information.Widget()));
    ExpectDrawnSmoothly(information.Canvas1(), "tformula.png");
}

// Qt's own signs are 32-pixel pictures, which a scaled screen shows blurred.
TEST_F(PicturesTest, AMessageBoxSignHasAPixelForEveryScreenPixel) {
    const struct {
        QStyle::StandardPixmap which;
        QPointF inside;  // a point of the sign's ground, in parts of its size
        QColor ground;
    } signs[] = {{QStyle::SP_MessageBoxInformation, {0.15, 0.5}, QColor(0x34, 0x65, 0xa4)},
                 {QStyle::SP_MessageBoxQuestion, {0.15, 0.5}, QColor(0x34, 0x65, 0xa4)},
                 {QStyle::SP_MessageBoxCritical, {0.15, 0.5}, QColor(0xcc, 0x00, 0x00)},
                 {QStyle::SP_MessageBoxWarning, {0.3, 0.8}, QColor(0xed, 0xd4, 0x00)}};
    for (const auto& sign : signs) {
        for (double scale : {1.0, 1.25, 1.5, 2.0}) {
            const QImage drawn = QApplication::style()
                                     ->standardIcon(sign.which)
                                     .pixmap(QSize(32, 32), scale)
                                     .toImage();
            EXPECT_EQ(drawn.size(), QSize(32, 32) * scale) << sign.which << " at " << scale;
            const QPoint inside(int(sign.inside.x() * drawn.width()),
                                int(sign.inside.y() * drawn.height()));
            EXPECT_EQ(drawn.pixelColor(inside), sign.ground) << sign.which << " at " << scale;
        }
    }
    QMessageBox box(QMessageBox::Information, QStringLiteral("Korvane"), QStringLiteral("?"),
                    QMessageBox::Ok, form->Widget());
    const int points = box.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &box);
    EXPECT_EQ(box.iconPixmap().size(), QSize(points, points) * box.devicePixelRatio());
}

// A title bar asks for 16 to 24 points, a task switcher up to 128, each at the screen's scale:
// each size is drawn from the nearest larger of the icon's pictures, never scaled up.
TEST_F(PicturesTest, TheWindowIconComesAtEverySizeAskedForFromALargerPicture) {
    platform::_RunFrameworkInitialization([] {});
    QTRY_VERIFY(!QApplication::windowIcon().isNull());
    const QImage small = platform::qt::ReadPng(QStringLiteral(":/korvane/korvane-64.png"));
    const QImage large = platform::qt::ReadPng(QStringLiteral(":/korvane/korvane-256.png"));
    for (int points : {16, 22, 24, 32, 48, 64, 96, 128}) {
        for (double scale : {1.0, 1.25, 1.5, 2.0}) {
            const QSize asked = QSize(points, points) * scale;
            const QImage drawn =
                QApplication::windowIcon().pixmap(QSize(points, points), scale).toImage();
            const QImage& from = asked.width() > small.width() ? large : small;
            EXPECT_EQ(drawn.size(), asked) << points << " points at " << scale;
            EXPECT_LT(
                Distance(drawn, from.scaled(asked, Qt::KeepAspectRatio, Qt::SmoothTransformation)),
                1.0)
                << points << " points at " << scale;
        }
    }
}

// Qt warns on stderr when asked to read a picture that is not there; a picture without a dense
// variant (the icon's) must not cause that.
TEST_F(PicturesTest, APictureWithoutADenseVariantIsReadWithoutAWarning) {
    static QStringList warnings;
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { warnings << text; });
    const QImage icon = platform::qt::ReadPicture("korvane-64.png");
    qInstallMessageHandler(previous);
    EXPECT_EQ(icon.size(), QSize(64, 64));
    EXPECT_EQ(icon.devicePixelRatio(), 1.0);
    EXPECT_TRUE(warnings.isEmpty()) << warnings.join(QLatin1Char('\n')).toStdString();
}

}  // namespace
}  // namespace korvane::testing
