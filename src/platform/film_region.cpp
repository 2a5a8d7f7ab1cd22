#include "platform/film_region.h"

// More rectangles than this cost more to handle one by one than as a whole.
static constexpr int kMostRectangles = 24;

QRegion filmRegion(const QRegion &region, QSize film)
{
    const QRect all(QPoint(), film);
    const QRegion inside = region & all;
    const auto even = [&](const QRect &rect) {
        return QRect(QPoint(rect.left() & ~1, rect.top() & ~1), QPoint(rect.right() | 1, rect.bottom() | 1)) &
               all;
    };
    if (inside.rectCount() > kMostRectangles)
        return even(inside.boundingRect());
    QRegion result;
    for (const QRect &rect : inside)
        result += even(rect);
    return result;
}
