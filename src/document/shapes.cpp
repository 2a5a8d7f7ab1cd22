#include "document/shapes.h"

#include <QPainterPathStroker>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <limits>

namespace Shapes {

namespace {

double length(const QPointF &v)
{
    return std::hypot(v.x(), v.y());
}
QPointF perpendicular(const QPointF &u)
{
    return {-u.y(), u.x()};
}

double signedArea(const QPolygonF &polygon)
{
    double area = 0;
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF a = polygon[i];
        const QPointF b = polygon[(i + 1) % polygon.size()];
        area += a.x() * b.y() - b.x() * a.y();
    }
    return area;
}

// Adds a part turning the same way as all others, so that under the winding rule overlaps stay filled.
void addPart(QPainterPath &path, const QPainterPath &part)
{
    path.addPath(signedArea(part.toFillPolygon()) < 0 ? part.toReversed() : part);
}

QPainterPath closed(const QPolygonF &polygon)
{
    QPainterPath path;
    path.addPolygon(polygon);
    path.closeSubpath();
    return path;
}

// A triangle with its tip at `tip`, `h` long and `h` wide, pointing along the unit vector `u`.
QPainterPath head(const QPointF &tip, const QPointF &u, double h)
{
    const QPointF p = perpendicular(u);
    return closed({tip, tip - u * h + p * (h / 2), tip - u * h - p * (h / 2)});
}

QPainterPath stroked(const QPainterPath &line, double width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setCurveThreshold(0.05); // smooth at any zoom the canvas offers
    return stroker.createStroke(line);
}

QPainterPath taperedArrow(const QPointF &start, const QPointF &end, double lw)
{
    const double len = length(end - start);
    if (!(len > 1))
        return {};
    const QPointF u = (end - start) / len;
    const QPointF p = perpendicular(u);
    const double h = std::min(std::max(lw * 4, 18.0), len * 0.6);
    const double t = lw * 0.2;
    const double s = lw * 0.5;
    const QPointF b = end - u * h;

    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    addPart(path, closed({start + p * t, b + p * s, b + p * (h / 2), end, b - p * (h / 2), b - p * s,
                          start - p * t}));
    QPainterPath tail;
    tail.addEllipse(start, t, t);
    addPart(path, tail);
    return path;
}

// `atStart`: also a head at the start, pointing away from the end.
QPainterPath strokedArrow(const QPointF &start, const QPointF &end, double w, bool atStart)
{
    const double h = std::max(w * 4.5, 14.0);
    const QPointF u = (end - start) / std::max(length(end - start), 1.0);
    QPainterPath shaft(atStart ? start + u * (h * 0.8) : start);
    shaft.lineTo(end - u * (h * 0.8));

    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    addPart(path, stroked(shaft, w));
    addPart(path, head(end, u, h));
    if (atStart)
        addPart(path, head(start, -u, h));
    return path;
}

QPainterPath curvedArrow(const Annotation &annotation, double lw)
{
    const QPointF q = annotation.curveControl();
    const QPointF end = annotation.end;
    const double h = std::max(lw * 3.5, 16.0);
    const QPointF u = (end - q) / std::max(length(end - q), 1.0);
    QPainterPath shaft(annotation.start);
    shaft.quadTo(q, end - u * (h * 0.8));

    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    addPart(path, stroked(shaft, std::max(lw * 0.7, 2.0)));
    addPart(path, head(end, u, h));
    return path;
}

} // namespace

QPainterPath arrow(const Annotation &annotation)
{
    const double lw = annotation.lineWidth;
    switch (annotation.style) {
    case 1:
        return strokedArrow(annotation.start, annotation.end, lw * 0.5, false);
    case 2:
        return strokedArrow(annotation.start, annotation.end, lw * 0.6, true);
    case 3:
        return curvedArrow(annotation, lw);
    default: // a style from elsewhere reads as tapered
        return taperedArrow(annotation.start, annotation.end, lw);
    }
}

QPainterPath roundedRect(const QRectF &rect, double rx, double ry)
{
    QPainterPath path;
    path.addRoundedRect(rect, std::min(rx, rect.width() / 2), std::min(ry, rect.height() / 2));
    return path;
}

QPainterPath callout(const Annotation &annotation)
{
    const QRectF rect = annotation.rect();
    const double r = std::min(rect.width(), rect.height()) * 0.2;
    const QPainterPath body = roundedRect(rect, r, r);

    const QPointF c = rect.center();
    const QPointF tip = annotation.tailPoint();
    const double L = std::max(length(tip - c), 1.0);
    const QPointF u = (tip - c) / L;
    const QPointF p = perpendicular(u);
    const double toSide = std::abs(u.x()) > 0.001 ? rect.width() / 2 / std::abs(u.x())
                                                  : std::numeric_limits<double>::infinity();
    const double toEdge =
        std::abs(u.y()) > 0.001 ? std::min(toSide, rect.height() / 2 / std::abs(u.y())) : toSide;
    const double fromCenter = std::max(std::min(toEdge, L) - r * 1.5, 0.0);
    const QPointF base = c + u * fromCenter;

    const QPainterPath tail = closed({base + p * r, tip, base - p * r});
    if (rect.isEmpty())
        return tail;
    return body.united(tail);
}

} // namespace Shapes
