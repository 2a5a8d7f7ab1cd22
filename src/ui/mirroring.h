#pragma once

#include <QPainter>

// Where words run from the right, what stands at the left of an area stands at its right. Words need no more than
// that: to painters, AlignLeft is the side where words begin.
inline QRectF mirrored(const QRectF &place, const QRectF &area, Qt::LayoutDirection direction)
{
    if (direction != Qt::RightToLeft)
        return place;
    return {area.left() + area.right() - place.right(), place.top(), place.width(), place.height()};
}
