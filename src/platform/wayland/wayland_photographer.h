#pragma once

#include "platform/screen_pictures.h"

#include <memory>

class WaylandCamera;
class WaylandConnection;
class WaylandOutputs;
class WaylandWindows;

// Takes pictures one after the other, on a thread and a connection of its own.
class WaylandPhotographer {
public:
    // Error::Kind::Unavailable, with a sentence for the user, where the session lets no program do it.
    static Result<std::unique_ptr<WaylandPhotographer>> open(std::shared_ptr<WaylandWindows> windows);
    ~WaylandPhotographer();

    bool isBroken() const;
    // Without this program's own windows, where these can be hidden.
    Result<QImage> display(const Screen &screen, Pointer pointer);
    // `rect` in pixels from the screen's corner, wherever that now is; black where there is no screen.
    Result<QImage> region(const Screen &screen, const QRect &rect, Pointer pointer);
    // A window alone.
    Result<QImage> window(quint32 id, Pointer pointer, WindowPart part);
    void trim();

private:
    explicit WaylandPhotographer(std::shared_ptr<WaylandWindows> windows);

    Result<Screen> current(const Screen &screen);
    Result<QImage> shoot(const Screen &screen, Pointer pointer);
    Result<QImage> shootArea(const QRect &area, Pointer pointer);
    QList<quint32> ownWindowsIn(const QRectF &area) const;

    std::shared_ptr<WaylandWindows> m_windows; // may be null
    std::unique_ptr<WaylandConnection> m_connection;
    std::unique_ptr<WaylandOutputs> m_outputs;
    std::unique_ptr<WaylandCamera> m_camera;
};
