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
    // The server only serves the X programs of a Wayland session.
    bool isXwayland() const { return m_isXwayland; }
    // A screen without our own windows. Error::Kind::NotFound when it is gone or another one than was told.
    // `stale` is where windows of ours may still be seen though they are gone.
    Result<QImage> display(const Screen &screen, Pointer pointer, const QRegion &stale);
    // The same of a part of the screen, counted from its corner wherever that now is; what lies outside the
    // desktop is black.
    Result<QImage> region(const Screen &screen, const QRect &rect, Pointer pointer, const QRegion &stale);
    // A window alone.
    Result<QImage> window(quint32 id, Pointer pointer, WindowPart part);
    // Does now what the first picture under windows of ours would have to wait for.
    void prepare();
    // Gives kept memory back.
    void trim();

private:
    X11Photographer();
    // A picture and where it lies on the desktop.
    struct Placed {
        QImage image;
        QRect rect;
    };

    static Result<Placed> placed(Result<QImage> image, const QRect &rect);
    Result<QImage> area(const QRect &rect, Pointer pointer, const QRegion &stale);
    Result<Placed> areaOnScreen(const QRect &wanted, const QRegion &stale);
    Result<Placed> windowOnce(quint32 id, WindowPart part);
    void keepContents();
    void paintPointer(QImage &image, QPoint origin) const;

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11ImageReader> m_reader;
    std::unique_ptr<X11Compositor> m_compositor;
    bool m_isXwayland = false;
    bool m_keepsContents = false; // the server keeps what lies under other windows
};
