#include <qdrawutil.h>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHash>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "platform/qt/qt_support.h"

namespace platform::qt {

namespace {

// Qt's own style, Fusion, with the two pictures it reads from Qt's resources for a first window
// read as the PNGs they are: the frame of a group box and the menu bar's overflow arrow. Left to
// Fusion, each read guesses the format and so loads every image-format plug-in first, which
// costs the first window a quarter of a megabyte that nothing else needs.
class PlainStyle : public QProxyStyle {
  public:
    PlainStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const QPixmap frame =
            element == PE_FrameGroupBox ? Picture(QStringLiteral("fusion_groupbox")) : QPixmap();
        if (frame.isNull()) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        // Fusion's frame: its picture stretched between fixed corners, below the title line.
        const auto* box = qobject_cast<const QGroupBox*>(widget);
        const bool bare = box != nullptr && !box->isCheckable() && box->title().isEmpty();
        const int top = kMargin + (bare ? 0
                                        : std::max(pixelMetric(PM_ExclusiveIndicatorHeight),
                                                   option->fontMetrics.height()));
        qDrawBorderPixmap(painter, option->rect.adjusted(0, top, 0, 0), QMargins(6, 6, 6, 6),
                          frame);
    }

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override {
        const bool vertical = which == SP_ToolBarVerticalExtensionButton;
        if (!vertical && which != SP_ToolBarHorizontalExtensionButton) {
            return QProxyStyle::standardIcon(which, option, widget);
        }
        const bool rtl = option != nullptr ? option->direction == Qt::RightToLeft
                                           : QGuiApplication::isRightToLeft();
        const QString stem = vertical ? QStringLiteral("toolbar-ext-v-")
                             : rtl    ? QStringLiteral("toolbar-ext-h-rtl-")
                                      : QStringLiteral("toolbar-ext-h-");
        // Qt's arrows come in three sizes, each twice the one before.
        const int smallest = vertical ? 5 : 8;
        QIcon icon;
        for (int size = smallest; size <= 4 * smallest; size *= 2) {
            const QPixmap& picture = Picture(stem + QString::number(size));
            if (!picture.isNull()) {
                icon.addPixmap(picture);
            }
        }
        return icon.isNull() ? QProxyStyle::standardIcon(which, option, widget) : icon;
    }

  private:
    static constexpr int kMargin = 3;  // Fusion's gap above a group box's frame

    // One of Qt's common style pictures, read once and kept with the style, so it goes when the
    // application does.
    const QPixmap& Picture(const QString& name) const {
        auto found = pictures_.find(name);
        if (found == pictures_.end()) {
            found = pictures_.insert(
                name, QPixmap::fromImage(ReadPng(
                          QStringLiteral(":/qt-project.org/styles/commonstyle/images/%1.png")
                              .arg(name))));
        }
        return *found;
    }
    mutable QHash<QString, QPixmap> pictures_;
};

}  // namespace

QStyle* NewPlainStyle() {
    return new PlainStyle();
}

}  // namespace platform::qt
