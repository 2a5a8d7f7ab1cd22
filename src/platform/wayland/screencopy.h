#pragma once

#include "base/result.h"
#include "platform/screen_pictures.h"

#include <QImage>
#include <QRegion>
#include <memory>

class SharedPicture;
class WaylandConnection;
struct WaylandOutput;
struct wl_shm;
struct zwlr_screencopy_manager_v1;

// Copies of what an output shows, in its own pixels. For the thread of its connection.
class Screencopy {
public:
    enum class Wait { No, ForDamage };
    struct Copy {
        QImage image;   // upright, not copied: good until the next copy
        QRegion damage; // in its pixels; all of it where the compositor doesn't tell
    };

    explicit Screencopy(WaylandConnection &connection);
    ~Screencopy();
    Screencopy(const Screencopy &) = delete;
    Screencopy &operator=(const Screencopy &) = delete;

    static bool isOffered(const WaylandConnection &connection);
    // Error::Kind::NotFound when the output has gone, Cancelled when `wake` was readable first.
    Result<Copy> take(const WaylandOutput &output, Pointer pointer, Wait wait = Wait::No, int wake = -1);
    // Gives kept memory back.
    void trim();

private:
    WaylandConnection &m_connection;
    zwlr_screencopy_manager_v1 *m_manager = nullptr;
    wl_shm *m_memory = nullptr;
    std::unique_ptr<SharedPicture> m_picture;
};
