#pragma once

#include "base/result.h"

#include <QList>
#include <QRect>
#include <QRectF>
#include <QString>
#include <optional>

// Coordinates. There is one global space in points, origin at the top left, y down. A screen stands in it at
// its native origin, or at the place that the session tells, with its native size divided by its scale:
// frames of screens never overlap, and they equal what the windows of this program see. Images are in backing
// pixels.

// Whether the point lies on one of the pixels that the frame covers: its right and bottom edges are outside.
inline bool holds(const QRectF &frame, QPointF point)
{
    return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
           point.y() < frame.bottom();
}

struct Screen {
    quint32 id = 0;   // stable while the screen stays connected
    QString name;     // connector or monitor name
    QRect native;     // in pixels of the whole desktop
    double scale = 1; // backing pixels for a point
    bool isPrimary = false;
    std::optional<QPoint> place = {}; // in points, where that isn't its native origin

    QPointF origin() const { return place ? QPointF(*place) : QPointF(native.topLeft()); }
    QRectF frame() const { return {origin(), QSizeF(native.width() / scale, native.height() / scale)}; }
    // Each point belongs to at most one screen: the right and bottom edges are the neighbour's.
    bool holds(QPointF point) const { return ::holds(frame(), point); }
    // A global point inside this screen, in pixels of the whole desktop, and back.
    QPointF toNative(QPointF point) const { return QPointF(native.topLeft()) + (point - origin()) * scale; }
    QPointF fromNative(QPointF pixel) const { return origin() + (pixel - QPointF(native.topLeft())) / scale; }
    bool operator==(const Screen &) const = default;
};

struct WindowInfo {
    quint32 id = 0;
    QRectF frame;  // in global points
    QString owner; // name of the owning application; empty if unknown
    QString title = {};
    bool operator==(const WindowInfo &) const = default;
};

// A window as the desktop lists it, before any rule is applied.
struct ListedWindow {
    quint32 id = 0;
    qint64 pid = 0; // 0 if unknown
    int layer = 0;  // 0 for ordinary application windows; docks, desktops, menus and panels have others
    QRectF frame;   // in global points, with title bar and borders, without shadows
    QString owner;
    QString title;
    bool operator==(const ListedWindow &) const = default;
};

// Which screens and windows there are at this moment. Quick; callable from any thread.
class Screens {
public:
    virtual ~Screens() = default;
    // In the desktop's order. Empty when there is no display.
    virtual QList<Screen> screens() const = 0;
    // Windows on screen, front to back, also those of this program.
    virtual QList<ListedWindow> windows() const = 0;
};

// The screen that contains the point, or the primary one, or the first.
const Screen *screenAt(const QList<Screen> &screens, QPointF point);
