#include <qdrawutil.h>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHash>
#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "platform/qt/qt_support.h"

namespace platform::qt {

namespace {

// The sign of a message box, drawn at whatever size it is asked for, so it is as sharp at 150% and
// 200% as at 100%. Qt's own are 32-pixel pictures, which a scaled screen shows blurred. The signs
// are the usual ones: an "i" on a blue disc, a cross on a red one, a "?" on a blue one, and an
// "!" in a yellow triangle.
class MessageSign : public QIconEngine {
  public:
    explicit MessageSign(QStyle::StandardPixmap which) : which_(which) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 32.0, rect.height() / 32.0);  // drawn on a 32 by 32 grid
        painter->setPen(Qt::NoPen);
        if (which_ == QStyle::SP_MessageBoxWarning) {
            painter->setBrush(QColor(0xed, 0xd4, 0x00));
            painter->drawPolygon(QPolygonF({{16, 2}, {31, 29}, {1, 29}}));
            DrawMark(*painter, Qt::black, QRectF(14.5, 9, 3, 12), QRectF(14.5, 23, 3, 3));
        } else {
            painter->setBrush(which_ == QStyle::SP_MessageBoxCritical ? QColor(0xcc, 0x00, 0x00)
                                                                      : QColor(0x34, 0x65, 0xa4));
            painter->drawEllipse(QRectF(1, 1, 30, 30));
            DrawInside(*painter);
        }
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return drawn;
    }

    QIconEngine* clone() const override { return new MessageSign(which_); }

  private:
    void DrawInside(QPainter& painter) const {
        if (which_ == QStyle::SP_MessageBoxCritical) {
            painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(QLineF(10, 10, 22, 22));
            painter.drawLine(QLineF(22, 10, 10, 22));
        } else if (which_ == QStyle::SP_MessageBoxQuestion) {
            QPainterPath hook;
            hook.moveTo(11, 12);
            hook.cubicTo(11, 5, 21, 5, 21, 11.5);
            hook.cubicTo(21, 15.5, 16, 15.5, 16, 19.5);
            painter.setPen(QPen(Qt::white, 3.4, Qt::SolidLine, Qt::RoundCap));
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(hook);
            DrawMark(painter, Qt::white, QRectF(), QRectF(14.3, 22.5, 3.4, 3.4));
        } else {
            DrawMark(painter, Qt::white, QRectF(14.3, 13, 3.4, 12), QRectF(14.3, 7, 3.4, 3.4));
        }
    }

    // The stroke and the dot of an "i" or an "!".
    static void DrawMark(QPainter& painter, const QColor& colour, const QRectF& stroke,
                         const QRectF& dot) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawRoundedRect(stroke, 1.2, 1.2);
        painter.drawEllipse(dot);
    }

    QStyle::StandardPixmap which_;
};

// Qt's own style, Fusion, with the two pictures it reads from Qt's resources for a first window
// read as the PNGs they are: the frame of a group box and the menu bar's overflow arrow. Left to
// Fusion, each read guesses the format and so loads every image-format plug-in first, which
// costs the first window a quarter of a megabyte that nothing else needs. Message boxes get the
// drawn signs above.
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
        if (which >= SP_MessageBoxInformation && which <= SP_MessageBoxQuestion) {
            return QIcon(new MessageSign(which));
        }
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
