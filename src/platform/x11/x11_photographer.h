#pragma once

#include "platform/screen_pictures.h"
#include "platform/x11/x11_survey.h"

#include <memory>

class X11Connection;
class X11ImageReader;
class X11Compositor;

// Takes pictures one after the other, on a thread and a connection of its own. All rectangles are native
// pixels.
class X11Photographer {
public:
    // Error::Kind::Unavailable without a display.
    static Result<std::unique_ptr<X11Photographer>> open();
    ~X11Photographer();

    bool isBroken() const;
    // This part of the desktop without our own windows; what lies outside the desktop is black. `stale` is
    // where windows of ours may still be seen though they are gone.
    Result<QImage> area(const QRect &rect, Pointer pointer, const QRegion &stale);
    // The inner part of a window alone.
    Result<QImage> window(quint32 id, Pointer pointer);
    // Gives kept memory back.
    void trim();

private:
    X11Photographer();
    Result<QImage> areaInside(const QRect &rect, const QRegion &stale);
    Result<QImage> windowOnce(quint32 id, QRect &frame);
    void keepContents();
    void paintPointer(QImage &image, QPoint origin) const;

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11ImageReader> m_reader;
    std::unique_ptr<X11Compositor> m_compositor;
    bool m_keepsContents = false; // the server keeps what lies under other windows
};
