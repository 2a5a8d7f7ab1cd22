#include "document/outline_paint.h"

#include "base/geometry.h"
#include "document/stroke_mask.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace OutlinePaint {

namespace {

// An outline that reaches far beyond what can be seen costs the rasteriser seconds.
bool reachesFar(const QPainterPath &path, const QPainter &painter)
{
    constexpr double kFar = 2000;
    return !outset(visibleRect(painter), kFar).contains(path.controlPointRect());
}

// Curves become lines finer than one sees, on a canvas that is zoomed in as well.
QList<QPolygonF> finePolygons(const QPainterPath &path)
{
    constexpr double kFiner = 8;
    QList<QPolygonF> polygons = path.toSubpathPolygons(QTransform::fromScale(kFiner, kFiner));
    for (QPolygonF &polygon : polygons)
        polygon = QTransform::fromScale(1 / kFiner, 1 / kFiner).map(polygon);
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

// The part of a straight line that can be seen, cut so that dashes, which repeat after `period`, stay in
// step.
QPainterPath visibleDashes(const QPointF &start, const QPointF &end, double period, const QRectF &near)
{
    const QPointF d = end - start;
    const double length = std::hypot(d.x(), d.y());
    double from = 0;
    double to = length;
    const auto cut = [&](double at, double speed, double low, double high) {
        if (std::abs(speed) < 1e-12) {
            if (at < low || at > high)
                to = from;
            return;
        }
        const double a = (low - at) / speed;
        const double b = (high - at) / speed;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    };
    if (length > 0) {
        cut(start.x(), d.x() / length, near.left(), near.right());
        cut(start.y(), d.y() / length, near.top(), near.bottom());
    }
    QPainterPath path;
    if (to < from || (to <= from && length > 0))
        return path;
    from = std::floor(from / period) * period;
    const QPointF u = length > 0 ? d / length : QPointF();
    path.moveTo(start + u * from);
    path.lineTo(start + u * to);
    return path;
}

} // namespace

const SoftShadow commonShadow{4, QColor::fromRgbF(0, 0, 0, 0.4f), {}};

QPen roundPen(const QColor &color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void fill(QPainter &painter, const QPainterPath &whole, const QColor &color)
{
    const QPainterPath path = nearPart(whole, painter);
    commonShadow.paint(painter, path.boundingRect(), [&](QPainter &mask) { mask.fillPath(path, color); });
    painter.fillPath(path, color);
}

void strokeLines(QPainter &painter, const QList<QPolygonF> &lines, const QColor &color, double width,
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

void stroke(QPainter &painter, const QPainterPath &path, const QPen &pen, Shadow shadow)
{
    if (pen.widthF() <= 0)
        return;
    if (pen.style() == Qt::SolidLine && reachesFar(path, painter))
        return strokeLines(painter, finePolygons(path), pen.color(), pen.widthF(), shadow);
    const double reach = pen.widthF() / 2 + 1;
    if (shadow == Shadow::Common)
        commonShadow.paint(painter, outset(path.boundingRect(), reach),
                           [&](QPainter &mask) { mask.strokePath(path, pen); });
    painter.strokePath(path, pen);
}

void strokeDashes(QPainter &painter, const QPointF &start, const QPointF &end, const QColor &color,
                  double width)
{
    if (width < 0.05) // thinner dashes than this can't be seen, only counted
        return;
    constexpr double kDash = 2.5, kGap = 2; // in widths of the pen
    QPen pen = roundPen(color, width);
    pen.setDashPattern({kDash, kGap});
    const QRectF near = outset(visibleRect(painter), width * 2 + commonShadow.reach());
    const QPainterPath path = visibleDashes(start, end, width * (kDash + kGap), near);
    if (!path.isEmpty())
        stroke(painter, path, pen, Shadow::Common);
}

} // namespace OutlinePaint
