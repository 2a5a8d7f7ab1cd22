#include "platform/screens.h"

#include <algorithm>

const Screen *screenAt(const QList<Screen> &screens, QPointF point)
{
    const auto contains = [point](const Screen &screen) {
        const QRectF frame = screen.frame();
        return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
               point.y() < frame.bottom();
    };
    auto found = std::find_if(screens.begin(), screens.end(), contains);
    if (found == screens.end())
        found = std::find_if(screens.begin(), screens.end(),
                             [](const Screen &screen) { return screen.isPrimary; });
    if (found == screens.end())
        found = screens.begin();
    return found == screens.end() ? nullptr : &*found;
}
