#pragma once

#include "base/result.h"
#include "platform/screen_pictures.h"

#include <QImage>
#include <memory>

class WaylandConnection;
class WaylandOutputs;

// The one way in which a session gives pictures of its screens. For the thread of its connection.
class WaylandCamera {
public:
    virtual ~WaylandCamera() = default;
    // In the screen's own pixels; good until the next one is taken.
    virtual Result<QImage> take(const Screen &screen, Pointer pointer) = 0;
    // Gives kept memory back.
    virtual void trim() {}
};

// The best that this session has. Error::Kind::Unavailable, with a sentence for the user, where it has none.
Result<std::unique_ptr<WaylandCamera>> waylandCamera(WaylandConnection &connection, WaylandOutputs &outputs);
