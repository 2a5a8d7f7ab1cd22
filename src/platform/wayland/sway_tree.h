#pragma once

#include "platform/screens.h"

#include <QJsonObject>

// What sway's tree of containers tells.
namespace SwayTree {

struct Window {
    ListedWindow listed;
    bool hasFocus = false;
    bool fillsScreen = false;
    QRect content; // of the program itself, without what sway drew around it
};

// Windows that are on screen, front to back.
QList<Window> windows(const QJsonObject &root);

} // namespace SwayTree
