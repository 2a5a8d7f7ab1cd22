#pragma once

#include "base/result.h"
#include "platform/screen_pictures.h"
#include "platform/wayland/wayland_connection.h"

#include <QImage>
#include <QRegion>
#include <memory>

class SharedPicture;
struct WaylandOutput;
struct wl_shm;
struct zwlr_screencopy_manager_v1;

// Copies of what an output shows, in its own pixels. For the thread of its connection.
class Screencopy {
public:
    struct Copy {
        QImage image;   // upright, not copied: good until the next copy
        QRegion damage; // in its pixels; all of it where the compositor doesn't tell
    };

    explicit Screencopy(WaylandConnection &connection);
    ~Screencopy();
    Screencopy(const Screencopy &) = delete;
    Screencopy &operator=(const Screencopy &) = delete;

    static bool isOffered(const WaylandConnection &connection);
    Result<Copy> take(const WaylandOutput &output, Pointer pointer)
    {
        return copy(output, pointer, Wait::No, -1, WaylandConnection::kPatience);
    }
    // Once something has changed since the copy before. Error::Kind::Cancelled when nothing did for so long,
    // or when the file `wake` was readable first.
    Result<Copy> takeChange(const WaylandOutput &output, Pointer pointer, int wake,
                            std::chrono::milliseconds patience)
    {
        return copy(output, pointer, Wait::ForDamage, wake, patience);
    }
    // Gives kept memory back.
    void trim();

private:
    enum class Wait { No, ForDamage };
    Result<Copy> copy(const WaylandOutput &output, Pointer pointer, Wait wait, int wake,
                      std::chrono::milliseconds patience);

    WaylandConnection &m_connection;
    zwlr_screencopy_manager_v1 *m_manager = nullptr;
    wl_shm *m_memory = nullptr;
    std::unique_ptr<SharedPicture> m_picture;
};
