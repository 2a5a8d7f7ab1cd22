#pragma once

#include "base/result.h"

#include <QImage>
#include <QRegion>
#include <functional>
#include <memory>

// Where a media server has a stream of what a screen shows.
struct CastSource {
    quint32 node = 0;
    int remote = -1; // an open connection to the server, which stays the caller's; -1 for the session's own
};

// Called on a thread of the cast's own.
struct CastReceiver {
    // A picture of the whole screen in Format_RGB32, good during the call only, and what may differ in it.
    std::function<void(const QImage &picture, const QRegion &changed)> picture;
    std::function<void(const Error &)> ended; // at most once; no picture follows
};

// A running cast. Stops when it is destroyed; nothing is called after that.
class ScreenCast {
public:
    virtual ~ScreenCast() = default;
};

// Streams of screens, as desktops give them that show programs nothing by themselves. Pictures come when
// something has changed.
class ScreenCasts {
public:
    virtual ~ScreenCasts() = default;
    virtual Result<std::unique_ptr<ScreenCast>> open(const CastSource &source, int framesPerSecond,
                                                     CastReceiver receiver) = 0;
};
