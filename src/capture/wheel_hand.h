#pragma once

#include "platform/screens.h"

#include <QLineF>
#include <algorithm>
#include <optional>

// What whoever turns the wheel for the user has to keep to.
namespace WheelHand {

constexpr int kAimPause = 60;       // milliseconds until the window under the pointer knows that it is there
constexpr double kHandDistance = 4; // points; less is rounding

// Whether the user took the pointer elsewhere.
inline bool isAway(QPointF pointer, QPointF aimedAt)
{
    return QLineF(pointer, aimedAt).length() > kHandDistance;
}

// Turning the wheel over whatever lay under a closed window would do anything but scroll.
inline bool isThere(const Screens &screens, const std::optional<quint32> &window)
{
    return !window || std::ranges::any_of(screens.windows(),
                                          [&](const ListedWindow &listed) { return listed.id == *window; });
}

} // namespace WheelHand
