#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

// A rectangle that reaches further by that much on every side.
inline QRectF outset(const QRectF &rect, double x, double y)
{
    return rect.adjusted(-x, -y, x, y);
}
inline QRectF outset(const QRectF &rect, double by)
{
    return outset(rect, by, by);
}

// The top left corner of what has this size and this middle.
inline QPointF centered(const QSizeF &size, const QPointF &middle)
{
    return {middle.x() - size.width() / 2, middle.y() - size.height() / 2};
}
