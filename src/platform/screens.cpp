#include "platform/screens.h"

#include <algorithm>

const Screen *screenAt(const QList<Screen> &screens, QPointF point)
{
    auto found = std::find_if(screens.begin(), screens.end(),
                              [point](const Screen &screen) { return screen.holds(point); });
    if (found == screens.end())
        found = std::find_if(screens.begin(), screens.end(),
                             [](const Screen &screen) { return screen.isPrimary; });
    if (found == screens.end())
        found = screens.begin();
    return found == screens.end() ? nullptr : &*found;
}
