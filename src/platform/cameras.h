#pragma once

#include "base/result.h"

#include <QImage>
#include <functional>
#include <memory>

// Stops when it is destroyed, which may take a moment; nothing is called after that.
class CameraStream {
public:
    virtual ~CameraStream() = default;
};

// The cameras of this machine.
class Cameras {
public:
    virtual ~Cameras() = default;
    // The middle of what the first camera sees, as squares of so many pixels (Format_RGB32), on a thread of
    // the stream's own. `lost` is called there at most once, when no more pictures come. Blocks until the
    // camera has started. Error::Kind::Unavailable when there is none that can be used.
    virtual Result<std::unique_ptr<CameraStream>> open(int side, std::function<void(const QImage &)> picture,
                                                       std::function<void()> lost) = 0;
};
