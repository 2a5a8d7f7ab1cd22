#include "document/renderer.h"

#include "base/colors.h"
#include "document/pixelation.h"
#include "document/shapes.h"
#include "document/soft_shadow.h"
#include "document/stamps.h"
#include "document/stroke_mask.h"
#include "document/text_block.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <optional>

namespace Renderer {

namespace {

// Far beyond any picture; keeps numbers from a broken project out of the rasteriser's reach.
constexpr double farthest = 2e5;
constexpr double widestLine = 1000;
// Below this scale a picture is averaged rather than interpolated.
constexpr double smallestInterpolated = 0.75;

const SoftShadow commonShadow{4, QColor::fromRgbF(0, 0, 0, 0.4f), {}};

QRectF outset(const QRectF &rect, double by)
{
    return rect.adjusted(-by, -by, by, by);
}

double sane(double coordinate)
{
    return std::clamp(coordinate, -farthest, farthest);
}
QPointF sane(const QPointF &point)
{
    return {sane(point.x()), sane(point.y())};
}
bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

// What of an object can be drawn at all: nothing with a number that isn't one, and all others within limits.
std::optional<Annotation> drawable(const Annotation &annotation)
{
    if (!isFinite(annotation.start) || !isFinite(annotation.end) || !std::isfinite(annotation.lineWidth) ||
        !std::all_of(annotation.points.begin(), annotation.points.end(), isFinite))
        return {};
    Annotation result = annotation;
    result.start = sane(annotation.start);
    result.end = sane(annotation.end);
    result.lineWidth = std::clamp(annotation.lineWidth, 0.0, widestLine);
    if (std::any_of(annotation.points.begin(), annotation.points.end(),
                    [](auto p) { return p != sane(p); })) {
        for (QPointF &point : result.points)
            point = sane(point);
    }
    if (!result.color.isValid())
        result.color = SystemColors::red();
    return result;
}

QPen roundPen(const QColor &color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// An outline that reaches far beyond what can be seen costs the rasteriser seconds.
bool reachesFar(const QPainterPath &path, const QPainter &painter)
{
    constexpr double far = 2000;
    return !outset(visibleRect(painter), far).contains(path.controlPointRect());
}

// Curves become lines finer than one sees, on a canvas that is zoomed in as well.
QList<QPolygonF> finePolygons(const QPainterPath &path)
{
    constexpr double finer = 8;
    QList<QPolygonF> polygons = path.toSubpathPolygons(QTransform::fromScale(finer, finer));
    for (QPolygonF &polygon : polygons)
        polygon = QTransform::fromScale(1 / finer, 1 / finer).map(polygon);
    return polygons;
}

// One side of a polygon cut off: the part where `depth` isn't negative stays. `depth` is linear.
template <typename Depth>
QPolygonF cutOff(const QPolygonF &polygon, Depth depth)
{
    QPolygonF result;
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF a = polygon[i];
        const QPointF b = polygon[(i + 1) % polygon.size()];
        const double da = depth(a);
        const double db = depth(b);
        if (da >= 0)
            result.append(a);
        if ((da >= 0) != (db >= 0))
            result.append(a + (b - a) * (da / (da - db)));
    }
    return result;
}

// What of a filled path matters to what can be seen, shadows included (Sutherland and Hodgman, Reentrant
// Polygon Clipping, 1974).
QPainterPath nearPart(const QPainterPath &path, const QPainter &painter)
{
    if (!reachesFar(path, painter))
        return path;
    const QRectF near = outset(visibleRect(painter), 100);
    QPainterPath result;
    result.setFillRule(path.fillRule());
    for (QPolygonF polygon : finePolygons(path)) {
        polygon = cutOff(polygon, [&](const QPointF &p) { return p.x() - near.left(); });
        polygon = cutOff(polygon, [&](const QPointF &p) { return near.right() - p.x(); });
        polygon = cutOff(polygon, [&](const QPointF &p) { return p.y() - near.top(); });
        polygon = cutOff(polygon, [&](const QPointF &p) { return near.bottom() - p.y(); });
        result.addPolygon(polygon);
        result.closeSubpath();
    }
    return result;
}

void fillWithShadow(QPainter &painter, const QPainterPath &whole, const QColor &color)
{
    const QPainterPath path = nearPart(whole, painter);
    commonShadow.paint(painter, path.boundingRect(), [&](QPainter &mask) { mask.fillPath(path, color); });
    painter.fillPath(path, color);
}

enum class Shadow { Common, None };

// Lines that may cross themselves at will.
void inkLines(QPainter &painter, const QList<QPolygonF> &lines, const QColor &color, double width,
              Shadow shadow)
{
    QRectF bounds;
    for (const QPolygonF &line : lines)
        bounds |= outset(line.boundingRect(), width / 2 + 1);
    const auto shape = [&](QImage &mask, const QTransform &toMask) {
        strokeMask(mask, toMask, lines, width);
    };
    if (shadow == Shadow::Common) {
        SoftShadow soft = commonShadow;
        soft.color.setAlphaF(soft.color.alphaF() * color.alphaF());
        soft.paintMask(painter, bounds, shape);
    }
    SoftShadow{0, color, {}}.paintMask(painter, bounds, shape);
}

// `pen` is a round one.
void stroke(QPainter &painter, const QPainterPath &path, const QPen &pen, Shadow shadow)
{
    if (pen.widthF() <= 0)
        return;
    if (pen.style() == Qt::SolidLine && reachesFar(path, painter))
        return inkLines(painter, finePolygons(path), pen.color(), pen.widthF(), shadow);
    const double reach = pen.widthF() / 2 + 1;
    if (shadow == Shadow::Common)
        commonShadow.paint(painter, outset(path.boundingRect(), reach),
                           [&](QPainter &mask) { mask.strokePath(path, pen); });
    painter.strokePath(path, pen);
}

QPointF centered(const QSizeF &size, const QPointF &middle)
{
    return {middle.x() - size.width() / 2, middle.y() - size.height() / 2};
}

// The part of a straight line that can be seen, cut so that dashes stay in step.
QPainterPath dashedLine(const Annotation &a, double period, const QRectF &visible)
{
    const QPointF d = a.end - a.start;
    const double length = std::hypot(d.x(), d.y());
    double from = 0;
    double to = length;
    const QRectF near = outset(visible, a.lineWidth * 2 + commonShadow.reach());
    const auto cut = [&](double start, double speed, double low, double high) {
        if (std::abs(speed) < 1e-12) {
            if (start < low || start > high)
                to = from;
            return;
        }
        const double a = (low - start) / speed;
        const double b = (high - start) / speed;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    };
    if (length > 0) {
        cut(a.start.x(), d.x() / length, near.left(), near.right());
        cut(a.start.y(), d.y() / length, near.top(), near.bottom());
    }
    QPainterPath path;
    if (to < from || (to <= from && length > 0))
        return path;
    from = std::floor(from / period) * period;
    const QPointF u = length > 0 ? d / length : QPointF();
    path.moveTo(a.start + u * from);
    path.lineTo(a.start + u * to);
    return path;
}

void drawArrow(const Annotation &a, QPainter &painter)
{
    const QPainterPath path = Shapes::arrow(a);
    if (!path.isEmpty())
        fillWithShadow(painter, path, a.color);
}

void drawBox(const Annotation &a, const QPainterPath &path, QPainter &painter)
{
    const QPen pen = roundPen(a.color, a.lineWidth);
    switch (a.style) {
    case 2: // solid
        fillWithShadow(painter, path, a.color);
        return;
    case 1: { // tinted
        QColor tint = a.color;
        tint.setAlphaF(0.25f);
        fillWithShadow(painter, path, tint);
        stroke(painter, path, pen, Shadow::None);
        return;
    }
    default:
        stroke(painter, path, pen, Shadow::Common);
    }
}

void drawLine(const Annotation &a, QPainter &painter)
{
    QPen pen = roundPen(a.color, a.lineWidth);
    if (a.lineWidth <= 0)
        return;
    if (a.style == 1) {
        // In units of the pen's width.
        pen.setDashPattern({2.5, 2});
        const QPainterPath path = dashedLine(a, a.lineWidth * 4.5, visibleRect(painter));
        if (a.lineWidth >= 0.05 && !path.isEmpty()) // thinner dashes than this can't be seen, only counted
            stroke(painter, path, pen, Shadow::Common);
        return;
    }
    QPainterPath path(a.start);
    path.lineTo(a.end);
    stroke(painter, path, pen, Shadow::Common);
}

void drawPen(const Annotation &a, QPainter &painter)
{
    if (!a.points.isEmpty())
        inkLines(painter, {QPolygonF(a.points)}, a.color, a.lineWidth, Shadow::Common);
}

void drawHighlight(const Annotation &a, QPainter &painter)
{
    QColor color = a.color;
    color.setAlphaF(0.45f);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(a.rect(), color);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void drawText(const Annotation &a, QPainter &painter)
{
    const TextAttributes attributes = a.textAttributes();
    const TextBlock block(a.text, designOf(attributes.font), attributes.size);
    if (a.style == 1) {
        const double radius = attributes.size * 0.25;
        fillWithShadow(painter, Shapes::roundedRect(a.bounds(), radius, radius), a.color);
    }
    if (attributes.glow.isValid()) {
        const SoftShadow glow{attributes.glowBlur, attributes.glow, {}};
        // Letters may reach a little beyond their measured box.
        glow.paint(painter, outset(QRectF(a.start, block.size()), attributes.size * 0.3),
                   [&](QPainter &mask) { block.paint(mask, a.start, Qt::white); });
    }
    block.paint(painter, a.start, attributes.color);
}

void drawCallout(const Annotation &a, QPainter &painter)
{
    const bool outline = a.style == 1;
    const QPainterPath path = Shapes::callout(a);
    fillWithShadow(painter, path, outline ? QColor(Qt::white) : a.color);
    if (outline)
        stroke(painter, path, roundPen(a.color, std::max(a.lineWidth * 0.6, 2.0)), Shadow::None);
    if (a.text.isEmpty())
        return;
    const QColor color = outline                                  ? a.color
                         : brightnessComponentSafe(a.color) > 0.7 ? QColor(Qt::black)
                                                                  : QColor(Qt::white);
    const double size = a.textSize();
    const QRectF box = a.rect().adjusted(size * 0.5, size * 0.35, -size * 0.5, -size * 0.35);
    const TextBlock block(a.text, designOf(a.textFont()), size, std::max(box.width(), 1.0),
                          TextBlock::Alignment::Centered);
    block.paint(painter, {box.left(), box.center().y() - block.size().height() / 2}, color);
}

void drawStep(const Annotation &a, QPainter &painter)
{
    const double d = a.stepDiameter();
    QPainterPath disc;
    disc.addEllipse(a.start, d / 2, d / 2);
    fillWithShadow(painter, disc, a.color);
    const QColor color = brightnessComponentSafe(a.color) > 0.75 ? Qt::black : Qt::white;
    const TextBlock label(a.style == 1 ? letters(a.number) : QString::number(a.number), Fonts::Design::System,
                          d * 0.55, QFont::ExtraBold);
    label.paint(painter, centered(label.size(), a.start), color);
}

void drawBlur(const Annotation &a, const QImage &pixelated, const QSizeF &size, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (rect.isEmpty() || pixelated.isNull())
        return;
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.drawImage(QRectF(QPointF(), size), pixelated);
    painter.fillRect(rect, QColor::fromRgbF(0.45f, 0.45f, 0.45f, 0.12f)); // keeps it visible over a flat area
}

void drawMagnify(const Annotation &a, const QImage &base, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (rect.isEmpty())
        return;
    QPainterPath ring;
    ring.addEllipse(rect);
    // A pixel q of the image lands at 2q − M, so the middle M stays where it is.
    const QPointF m = rect.center();
    const QRectF all(-m.x(), -m.y(), 2.0 * base.width(), 2.0 * base.height());
    const QRectF part = rect & all;
    if (!part.isEmpty()) {
        painter.save();
        painter.setClipPath(ring, Qt::IntersectClip);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(part, base, QRectF((part.topLeft() + m) / 2, part.size() / 2));
        painter.restore();
    }
    stroke(painter, ring, roundPen(a.color, a.lineWidth), Shadow::Common);
}

// With all digits as wide as the widest, so that the text doesn't tremble while the line is dragged.
class EvenDigits {
public:
    EvenDigits(const QString &text, double size)
    {
        double digit = 0;
        for (char c = '0'; c <= '9'; ++c)
            digit = std::max(digit, block(QString(QLatin1Char(c)), size).size().width());
        qsizetype i = 0;
        while (i < text.size()) {
            qsizetype end = i + 1;
            if (!text[i].isDigit()) {
                while (end < text.size() && !text[end].isDigit())
                    ++end;
            }
            const TextBlock part = block(text.mid(i, end - i), size);
            const double width = text[i].isDigit() ? digit : part.size().width();
            m_parts.append({m_size.width() + (width - part.size().width()) / 2, part});
            m_size = {m_size.width() + width, std::max(m_size.height(), part.size().height())};
            i = end;
        }
    }
    QSizeF size() const { return m_size; }
    void paint(QPainter &painter, const QPointF &topLeft, const QColor &color) const
    {
        for (const auto &[x, part] : m_parts)
            part.paint(painter, topLeft + QPointF(x, 0), color);
    }

private:
    static TextBlock block(const QString &text, double size)
    {
        return TextBlock(text, Fonts::Design::System, size, QFont::DemiBold);
    }
    QList<std::pair<double, TextBlock>> m_parts;
    QSizeF m_size{0, 0};
};

void drawMeasure(const Annotation &a, QPainter &painter)
{
    const double w = std::max(a.lineWidth * 0.4, 2.0);
    const QPointF d = a.end - a.start;
    const double length = std::max(std::hypot(d.x(), d.y()), 1.0);
    const double k = std::max(w * 4, 10.0);
    const QPointF p = QPointF(-d.y(), d.x()) / length;
    QPainterPath path(a.start);
    path.lineTo(a.end);
    for (const QPointF &point : {a.start, a.end}) {
        path.moveTo(point + p * k);
        path.lineTo(point - p * k);
    }
    painter.strokePath(path, QPen(a.color, w, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));

    const EvenDigits label(measureLabel(a), std::max(a.lineWidth * 2.6, 13.0));
    const QSizeF size = label.size();
    const QPointF corner = centered(size, (a.start + a.end) / 2);
    const QRectF pill(corner.x() - 8, corner.y() - 4, size.width() + 16, size.height() + 8);
    QColor ground = a.color;
    ground.setAlphaF(0.92f);
    painter.fillPath(Shapes::roundedRect(pill, pill.height() / 2, pill.height() / 2), ground);
    label.paint(painter, corner, Qt::white);
}

void drawImage(const Annotation &a, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (a.image.isNull() || rect.isEmpty())
        return;
    QPainterPath path;
    path.addRect(rect);
    fillWithShadow(painter, path, Qt::white);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect, a.image);
}

// How far the ink of an object reaches beyond the rectangle of its points.
double inkReach(const Annotation &a)
{
    const double lw = a.lineWidth;
    switch (a.kind) {
    case ToolKind::Arrow:
        return std::max(lw * 4, 18.0);
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Magnify:
    case ToolKind::Callout:
        return std::max(lw, 2.0);
    case ToolKind::Text:
        return a.textSize() * 0.5;
    case ToolKind::Stamp:
    case ToolKind::Select:
    case ToolKind::Highlight:
    case ToolKind::Step:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Measure:
    case ToolKind::Image:
        return 0;
    }
    return 0;
}

} // namespace

void draw(const QImage &base, const QImage &pixelated, const QList<Annotation> &annotations,
          QPainter &painter)
{
    drawBase(base, painter);
    drawSpotlights(base.size(), annotations, painter);
    for (const Annotation &annotation : annotations)
        drawObject(annotation, base, pixelated, painter);
}

void drawBase(const QImage &base, QPainter &painter)
{
    painter.save();
    const QTransform device = painter.deviceTransform();
    const QRectF whole(QPointF(), QSizeF(base.size()));
    if (device.type() <= QTransform::TxScale && std::max(device.m11(), device.m22()) < smallestInterpolated) {
        // Interpolation between neighbours alone would skip rows; every pixel has its share in a smaller
        // picture.
        const QRect target = device.mapRect(whole).toAlignedRect();
        painter.setWorldTransform(device.inverted() * painter.worldTransform());
        painter.drawImage(target.topLeft(),
                          base.scaled(target.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    } else {
        // From the double on, the pixels themselves are what one wants to see.
        painter.setRenderHint(QPainter::SmoothPixmapTransform, device.m11() < 2 || device.m22() < 2);
        painter.drawImage(whole, base);
    }
    painter.restore();
}

void drawSpotlights(const QSizeF &imageSize, const QList<Annotation> &annotations, QPainter &painter)
{
    const QRectF whole(QPointF(), imageSize);
    QPainterPath path;
    path.addRect(whole);
    bool any = false;
    for (const Annotation &annotation : annotations) {
        if (annotation.kind != ToolKind::Spotlight)
            continue;
        if (const auto spotlight = drawable(annotation)) {
            any = true;
            path.addPath(Shapes::roundedRect(spotlight->rect(), 16, 16));
        }
    }
    if (!any)
        return;
    path.setFillRule(Qt::OddEvenFill);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(whole, Qt::IntersectClip);
    painter.fillPath(path, QColor::fromRgbF(0, 0, 0, 0.6f));
    painter.restore();
}

void drawObject(const Annotation &annotation, const QImage &base, const QImage &pixelated, QPainter &painter)
{
    const std::optional<Annotation> object = drawable(annotation);
    if (!object || !paintedRect(*object).intersects(visibleRect(painter)))
        return;
    const Annotation &a = *object;
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    switch (a.kind) {
    case ToolKind::Arrow:
        drawArrow(a, painter);
        break;
    case ToolKind::Rectangle:
        drawBox(a, Shapes::roundedRect(a.rect(), a.lineWidth, a.lineWidth), painter);
        break;
    case ToolKind::Ellipse: {
        QPainterPath oval;
        oval.addEllipse(a.rect());
        drawBox(a, oval, painter);
        break;
    }
    case ToolKind::Line:
        drawLine(a, painter);
        break;
    case ToolKind::Pen:
        drawPen(a, painter);
        break;
    case ToolKind::Highlight:
        drawHighlight(a, painter);
        break;
    case ToolKind::Text:
        drawText(a, painter);
        break;
    case ToolKind::Callout:
        drawCallout(a, painter);
        break;
    case ToolKind::Step:
        drawStep(a, painter);
        break;
    case ToolKind::Stamp:
        drawStamp(a, painter);
        break;
    case ToolKind::Blur:
        drawBlur(a, pixelated, base.size(), painter);
        break;
    case ToolKind::Magnify:
        drawMagnify(a, base, painter);
        break;
    case ToolKind::Measure:
        drawMeasure(a, painter);
        break;
    case ToolKind::Image:
        drawImage(a, painter);
        break;
    case ToolKind::Select:
    case ToolKind::Spotlight:
    case ToolKind::Crop:
    case ToolKind::Cutout:
        break;
    }
    painter.restore();
}

QRectF paintedRect(const Annotation &annotation)
{
    const std::optional<Annotation> object = drawable(annotation);
    if (!object)
        return {};
    const Annotation &a = *object;
    const double shadow = commonShadow.reach();
    switch (a.kind) {
    case ToolKind::Select:
    case ToolKind::Crop:
    case ToolKind::Cutout:
        return {};
    case ToolKind::Highlight:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
        return outset(a.rect(), 1);
    case ToolKind::Measure: {
        // The pill is at most as wide as its longest possible text.
        const double size = std::max(a.lineWidth * 2.6, 13.0);
        const QPointF m = (a.start + a.end) / 2;
        const QSizeF pill(size * 0.75 * measureLabel(a).size() + 20, size * 2 + 10);
        const double ticks = std::max(a.lineWidth * 0.4 * 4, 10.0) + a.lineWidth;
        return outset(a.rect(), ticks) | QRectF(centered(pill, m), pill);
    }
    case ToolKind::Callout: {
        QRectF all = a.bounds();
        if (!a.text.isEmpty()) { // which may overflow its box above and below
            const double size = a.textSize();
            const TextBlock block(a.text, designOf(a.textFont()), size,
                                  std::max(a.rect().width() - size, 1.0), TextBlock::Alignment::Centered);
            QRectF text(0, 0, std::max(a.rect().width(), size * 2), block.size().height() + size);
            text.moveCenter(a.rect().center());
            all |= text;
        }
        return outset(all, inkReach(a) + shadow);
    }
    case ToolKind::Stamp:
        return outset(stampInk(a), shadow);
    case ToolKind::Arrow:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Text:
    case ToolKind::Step:
    case ToolKind::Magnify:
    case ToolKind::Image:
        return outset(a.bounds(), inkReach(a) + shadow);
    }
    return {};
}

QImage flattened(const QImage &base, const QImage &pixelated, const QList<Annotation> &annotations)
{
    QImage result = base.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.detach();
    if (result.isNull())
        return base;
    QPainter painter(&result);
    drawSpotlights(base.size(), annotations, painter);
    for (const Annotation &annotation : annotations)
        drawObject(annotation, base, pixelated, painter);
    return result;
}

QImage pixelated(const QImage &base)
{
    return ::pixelated(base);
}

QPainterPath calloutPath(const Annotation &annotation)
{
    const auto object = drawable(annotation);
    return object ? Shapes::callout(*object) : QPainterPath();
}

QString letters(int number)
{
    QString result;
    int n = std::max(number, 1);
    while (n > 0) {
        --n;
        result.prepend(QChar('A' + n % 26));
        n /= 26;
    }
    return result;
}

QString measureLabel(const Annotation &annotation)
{
    const double dx = std::abs(annotation.end.x() - annotation.start.x());
    const double dy = std::abs(annotation.end.y() - annotation.start.y());
    const auto whole = [](double value) { return QString::number(std::round(value), 'f', 0); };
    const QString distance = whole(std::hypot(dx, dy)) + " px";
    if (dx > 2 && dy > 2)
        return distance + QString::fromUtf8("  (%1 × %2)").arg(whole(dx), whole(dy));
    return distance;
}

} // namespace Renderer
