#pragma once

#include "base/result.h"
#include "platform/screen_pictures.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QRegion>
#include <chrono>
#include <functional>
#include <memory>

// What is new on the screen at one moment. All rectangles have even edges, as films halve the colours.
struct FilmFrame {
    QImage picture;  // QImage::Format_RGB32; good during the call only; null when nothing changed
    QPoint at;       // of its top left in the film
    QRegion changed; // in pixels of the film, inside the picture: what may differ from the frame before
    std::chrono::steady_clock::time_point time;
};

struct FilmRequest {
    // In pixels of the whole desktop, with an even size; what of it lies outside the desktop is black.
    QRect area;
    Pointer pointer = Pointer::Hidden;
    QList<quint32> keptOut;   // windows of this program that must not be in the film
    int framesPerSecond = 30; // at most
};

// Called on a thread of the film's own.
struct FilmReceiver {
    std::function<void(const FilmFrame &)> frame;
    std::function<void(const Error &)> ended; // at most once, when it can't go on; no frame follows
};

// A running film. Stops when it is destroyed; nothing is called after that.
class ScreenFilm {
public:
    virtual ~ScreenFilm() = default;
};

// Films of what is on the screen. Frames come when something has changed, never closer than the rate allows
// and never later than the next tick of it, so that nothing that is shown for longer than a tick is missed.
// While nothing changes, one comes each half second with nothing changed, so that time is seen to pass.
class ScreenFilms {
public:
    virtual ~ScreenFilms() = default;
    // The first frame, all of it changed, comes at once. Error::Kind::Unavailable, with a sentence that the
    // user can act on, where the screen can't be filmed.
    virtual Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &request, FilmReceiver receiver) = 0;
};
