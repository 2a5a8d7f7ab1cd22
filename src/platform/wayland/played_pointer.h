#pragma once

#include <QPointF>
#include <QRectF>
#include <memory>

class WaylandConnection;

// A pointer that a program plays, on the connection that it was made with.
class PlayedPointer {
public:
    virtual ~PlayedPointer() = default;
    // To a global point; `all` is the frame of all screens together.
    virtual void move(QPointF to, const QRectF &all) = 0;
    // Downwards, or upwards when negative.
    virtual void wheel(int clicks) = 0;

    static bool isOffered(const WaylandConnection &connection);
    // Null where the compositor lets no program play one.
    static std::unique_ptr<PlayedPointer> make(WaylandConnection &connection);
};
