// Draws the two pictures of the application's resources:
//   tlarge.png    488 x 73: the title banner of the about and control windows
//   tformula.png  282 x 216: the two t statistics the program computes
// and of each an @2x variant at twice the pixels, for dense screens.
// Run: QT_QPA_PLATFORM=offscreen make_pictures <output folder>  (the make_pictures target does it)
//
// The formulas are set by a small box layout: every piece knows its width and its height above
// and below the baseline, and draws itself at a given baseline.
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

const QColor kInk(0x22, 0x2b, 0x36);
const QColor kMuted(0x6b, 0x74, 0x80);
const QColor kAccent(0x1f, 0x5f, 0x99);
const QColor kTail(0xcc, 0x33, 0x33);

struct Box {
    double width = 0, ascent = 0, descent = 0;
    std::function<void(QPainter&, double x, double baseline)> draw;
};
using BoxPtr = std::shared_ptr<Box>;

struct Style {
    double size;  // pixel size of the main text
    QFont Font(bool italic, double scale = 1.0) const {
        QFont font("DejaVu Serif");
        font.setPixelSize(int(size * scale + 0.5));
        font.setItalic(italic);
        return font;
    }
};

BoxPtr Text(const QString& text, const QFont& font, QColor colour = kInk) {
    QFontMetricsF metrics(font);
    auto box = std::make_shared<Box>();
    box->width = metrics.horizontalAdvance(text);
    box->ascent = metrics.ascent() * 0.78;  // cap height and a little: tighter than the font's
    box->descent = metrics.descent() * 0.6;
    box->draw = [text, font, colour](QPainter& p, double x, double baseline) {
        p.setFont(font);
        p.setPen(colour);
        p.drawText(QPointF(x, baseline), text);
    };
    return box;
}

// A variable in italics with an optional subscript and superscript, set one above the other.
BoxPtr Var(const Style& s, const QString& name, const QString& sub = {}, const QString& sup = {}) {
    auto base = Text(name, s.Font(true));
    auto lower = sub.isEmpty() ? nullptr : Text(sub, s.Font(false, 0.68));
    auto upper = sup.isEmpty() ? nullptr : Text(sup, s.Font(false, 0.68));
    const double drop = s.size * 0.28, rise = s.size * 0.42, gap = s.size * 0.04;
    auto box = std::make_shared<Box>();
    const double scripts = std::max(lower ? lower->width : 0.0, upper ? upper->width : 0.0);
    box->width = base->width + (scripts > 0 ? gap + scripts : 0);
    box->ascent = std::max(base->ascent, upper ? rise + upper->ascent : 0.0);
    box->descent = std::max(base->descent, lower ? drop + lower->descent : 0.0);
    box->draw = [=](QPainter& p, double x, double baseline) {
        base->draw(p, x, baseline);
        if (lower)
            lower->draw(p, x + base->width + gap, baseline + drop);
        if (upper)
            upper->draw(p, x + base->width + gap, baseline - rise);
    };
    return box;
}

BoxPtr Op(const Style& s, const QString& op, double space = 0.3) {
    auto symbol = Text(op, s.Font(false));
    auto box = std::make_shared<Box>(*symbol);
    const double pad = s.size * space;
    box->width = symbol->width + 2 * pad;
    box->draw = [symbol, pad](QPainter& p, double x, double baseline) {
        symbol->draw(p, x + pad, baseline);
    };
    return box;
}

BoxPtr Num(const Style& s, const QString& digits) {
    return Text(digits, s.Font(false));
}

BoxPtr Row(std::vector<BoxPtr> parts) {
    auto box = std::make_shared<Box>();
    for (const auto& part : parts) {
        box->width += part->width;
        box->ascent = std::max(box->ascent, part->ascent);
        box->descent = std::max(box->descent, part->descent);
    }
    box->draw = [parts](QPainter& p, double x, double baseline) {
        for (const auto& part : parts) {
            part->draw(p, x, baseline);
            x += part->width;
        }
    };
    return box;
}

// Numerator over denominator, both centred on a bar at the height of the minus sign.
BoxPtr Frac(const Style& s, BoxPtr top, BoxPtr bottom) {
    const double axis = s.size * 0.3, gap = s.size * 0.22, pad = s.size * 0.15;
    auto box = std::make_shared<Box>();
    box->width = std::max(top->width, bottom->width) + 2 * pad;
    box->ascent = axis + gap + top->descent + top->ascent;
    box->descent = -axis + gap + bottom->ascent + bottom->descent;
    box->draw = [=, w = box->width](QPainter& p, double x, double baseline) {
        const double bar = baseline - axis;
        p.setPen(QPen(kInk, std::max(1.0, s.size * 0.07)));
        p.drawLine(QPointF(x + pad * 0.5, bar), QPointF(x + w - pad * 0.5, bar));
        top->draw(p, x + (w - top->width) / 2, bar - gap - top->descent);
        bottom->draw(p, x + (w - bottom->width) / 2, bar + gap + bottom->ascent);
    };
    return box;
}

// The radical sign: a short tick, a stroke down to the baseline of the content's bottom and up
// to a bar over the content.
BoxPtr Sqrt(const Style& s, BoxPtr inner) {
    const double sign = s.size * 0.65, over = s.size * 0.3, pad = s.size * 0.12;
    auto box = std::make_shared<Box>();
    box->width = sign + inner->width + 2 * pad;
    box->ascent = inner->ascent + over;
    box->descent = inner->descent + s.size * 0.05;
    box->draw = [=, w = box->width, a = box->ascent, d = box->descent](QPainter& p, double x,
                                                                       double baseline) {
        const double top = baseline - a, bottom = baseline + d;
        QPainterPath path;
        path.moveTo(x, bottom - (a + d) * 0.42);
        path.lineTo(x + sign * 0.3, bottom - (a + d) * 0.5);
        path.lineTo(x + sign * 0.6, bottom);
        path.lineTo(x + sign, top);
        path.lineTo(x + w, top);
        p.setPen(QPen(kInk, std::max(1.0, s.size * 0.07)));
        p.setBrush(Qt::NoBrush);
        p.drawPath(path);
        inner->draw(p, x + sign + pad, baseline);
    };
    return box;
}

// Round brackets as tall as their content.
BoxPtr Paren(const Style& s, BoxPtr inner) {
    const double bracket = s.size * 0.35;
    auto box = std::make_shared<Box>();
    box->width = inner->width + 2 * bracket;
    box->ascent = inner->ascent + s.size * 0.05;
    box->descent = inner->descent + s.size * 0.05;
    box->draw = [=, w = box->width, a = box->ascent, d = box->descent](QPainter& p, double x,
                                                                       double baseline) {
        const double top = baseline - a, height = a + d;
        p.setPen(QPen(kInk, std::max(1.0, s.size * 0.07)));
        p.setBrush(Qt::NoBrush);
        QPainterPath left, right;
        left.moveTo(x + bracket * 0.8, top);
        left.quadTo(x, top + height / 2, x + bracket * 0.8, top + height);
        right.moveTo(x + w - bracket * 0.8, top);
        right.quadTo(x + w, top + height / 2, x + w - bracket * 0.8, top + height);
        p.drawPath(left);
        p.drawPath(right);
        inner->draw(p, x + bracket, baseline);
    };
    return box;
}

const QString kMinus = QStringLiteral("\u2212");

// t = (M1 - M2) / sqrt( ((N1-1)SD1^2 + (N2-1)SD2^2) / (N1+N2-2) * (1/N1 + 1/N2) )
BoxPtr IndependentT(const Style& s) {
    auto pooled = Row({Num(s, "("), Var(s, "N", "1"), Op(s, kMinus, 0.15), Num(s, "1)"),
                       Var(s, "SD", "1", "2"), Op(s, "+"), Num(s, "("), Var(s, "N", "2"),
                       Op(s, kMinus, 0.15), Num(s, "1)"), Var(s, "SD", "2", "2")});
    auto df = Row(
        {Var(s, "N", "1"), Op(s, "+", 0.15), Var(s, "N", "2"), Op(s, kMinus, 0.15), Num(s, "2")});
    auto weights = Paren(s, Row({Frac(s, Num(s, "1"), Var(s, "N", "1")), Op(s, "+", 0.2),
                                 Frac(s, Num(s, "1"), Var(s, "N", "2"))}));
    auto se = Sqrt(s, Row({Frac(s, pooled, df), Op(s, "\u00B7", 0.12), weights}));
    auto difference = Row({Var(s, "M", "1"), Op(s, kMinus), Var(s, "M", "2")});
    return Row({Var(s, "t"), Op(s, "="), Frac(s, difference, se)});
}

// t = (M1 - M2) / sqrt( (SD1^2 + SD2^2 - 2 r SD1 SD2) / N )
BoxPtr RelatedT(const Style& s) {
    auto spread = Row({Var(s, "SD", "1", "2"), Op(s, "+"), Var(s, "SD", "2", "2"), Op(s, kMinus),
                       Num(s, "2"), Var(s, "r"), Var(s, "SD", "1"), Var(s, "SD", "2")});
    auto se = Sqrt(s, Frac(s, spread, Var(s, "N")));
    auto difference = Row({Var(s, "M", "1"), Op(s, kMinus), Var(s, "M", "2")});
    return Row({Var(s, "t"), Op(s, "="), Frac(s, difference, se)});
}

BoxPtr Heading(const Style& s, const QString& text) {
    QFont font("DejaVu Sans");
    font.setPixelSize(int(s.size * 0.85 + 0.5));
    font.setBold(true);
    return Text(text, font, kAccent);
}

BoxPtr Note(const Style& s, const QString& text) {
    QFont font("DejaVu Sans");
    font.setPixelSize(int(s.size * 0.78 + 0.5));
    return Text(text, font, kMuted);
}

// The two blocks, each a heading, its t and its df, one under the other.
std::vector<BoxPtr> FormulaLines(const Style& s) {
    return {Heading(s, "Independent means"),
            IndependentT(s),
            Row({Var(s, "df"), Op(s, "="), Var(s, "N", "1"), Op(s, "+"), Var(s, "N", "2"),
                 Op(s, kMinus), Num(s, "2")}),
            Heading(s, "Related means"),
            RelatedT(s),
            Row({Var(s, "df"), Op(s, "="), Var(s, "N"), Op(s, kMinus), Num(s, "1"),
                 Note(s, "   N: number of pairs")})};
}

// A white picture of the given size in points, with `scale` pixels to the point: 2 draws the
// @2x variant that dense screens show sharp.
QImage Blank(int width, int height, int scale) {
    QImage image(width * scale, height * scale, QImage::Format_ARGB32);
    image.fill(Qt::white);
    return image;
}

QImage Formula(int scale) {
    const int width = 282, height = 216, margin = 6;
    // The largest text size at which every line fits the width and the lines fit the height.
    Style style{15};
    std::vector<BoxPtr> lines;
    double total = 0;
    for (;; style.size -= 0.5) {
        lines = FormulaLines(style);
        double widest = 0;
        total = 0;
        for (const auto& line : lines) {
            widest = std::max(widest, line->width);
            total += line->ascent + line->descent;
        }
        const double gaps = style.size * 0.45 * double(lines.size() - 1) + style.size;
        if ((widest <= width - 2 * margin && total + gaps <= height - 2 * margin) ||
            style.size <= 8) {
            total += gaps;
            break;
        }
    }
    QImage image = Blank(width, height, scale);
    QPainter p(&image);
    p.scale(scale, scale);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    const double gap = style.size * 0.45;
    double y = (height - total) / 2;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto& line = lines[i];
        if (i == 3) {  // a thin rule between the two blocks
            y += style.size * 0.5;
            p.setPen(QPen(QColor(0xd5, 0xd9, 0xde), 1));
            p.drawLine(QPointF(margin * 3, y - gap * 0.5),
                       QPointF(width - margin * 3, y - gap * 0.5));
            y += style.size * 0.5;
        }
        const bool heading = (i == 0 || i == 3);
        const double x = heading ? margin + 2 : (width - line->width) / 2;
        line->draw(p, x, y + line->ascent);
        y += line->ascent + line->descent + gap;
    }
    return image;
}

// A small Student t curve with its two tails shaded: the banner's mark.
void DrawCurve(QPainter& p, QRectF area) {
    auto density = [](double t) {  // t with 3 df, up to a constant
        return std::pow(1 + t * t / 3, -2.0);
    };
    const double range = 4;
    auto point = [&](double t) {
        return QPointF(area.left() + (t + range) / (2 * range) * area.width(),
                       area.bottom() - density(t) * area.height());
    };
    QPainterPath curve;
    curve.moveTo(point(-range));
    for (double t = -range; t <= range + 1e-9; t += 0.05)
        curve.lineTo(point(t));
    for (double edge : {-1.0, 1.0}) {
        QPainterPath tail;
        const double from = edge < 0 ? -range : 2.2, to = edge < 0 ? -2.2 : range;
        tail.moveTo(QPointF(point(from).x(), area.bottom()));
        for (double t = from; t <= to + 1e-9; t += 0.05)
            tail.lineTo(point(t));
        tail.lineTo(QPointF(point(to).x(), area.bottom()));
        tail.closeSubpath();
        p.fillPath(tail, QColor(kTail.red(), kTail.green(), kTail.blue(), 150));
    }
    p.setPen(QPen(kAccent, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(curve);
    p.setPen(QPen(kMuted, 1.2));
    p.drawLine(QPointF(area.left(), area.bottom()), QPointF(area.right(), area.bottom()));
}

QImage Banner(int scale) {
    const int width = 488, height = 73;
    QImage image = Blank(width, height, scale);
    QPainter p(&image);
    p.scale(scale, scale);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    DrawCurve(p, QRectF(22, 14, 92, 44));

    QFont name("DejaVu Sans");
    name.setPixelSize(34);
    name.setBold(true);
    name.setLetterSpacing(QFont::AbsoluteSpacing, 0.5);
    p.setFont(name);
    p.setPen(kInk);
    p.drawText(QPointF(136, 39), "Korvane");

    QFont subtitle("DejaVu Sans");
    subtitle.setPixelSize(13);
    p.setFont(subtitle);
    p.setPen(kMuted);
    p.drawText(QPointF(138, 59), "Student\u2019s t-test from summary statistics");

    QLinearGradient rule(0, 0, width, 0);
    rule.setColorAt(0, QColor(kAccent.red(), kAccent.green(), kAccent.blue(), 0));
    rule.setColorAt(0.5, kAccent);
    rule.setColorAt(1, QColor(kAccent.red(), kAccent.green(), kAccent.blue(), 0));
    p.fillRect(QRectF(40, 68, width - 80, 1.5), rule);
    return image;
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_pictures <output folder>\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const bool saved =
        Banner(1).save(folder + "/tlarge.png") && Banner(2).save(folder + "/tlarge@2x.png") &&
        Formula(1).save(folder + "/tformula.png") && Formula(2).save(folder + "/tformula@2x.png");
    if (!saved) {
        std::fprintf(stderr, "make_pictures: cannot write the pictures to %s\n", argv[1]);
        return 1;
    }
    return 0;
}
