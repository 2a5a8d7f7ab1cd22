#pragma once

#include "platform/screen_films.h"
#include "platform/x11/x11_survey.h"

#include <memory>

class X11Connection;
class X11ImageReader;
class X11Compositor;

// Reads parts of one area of the screen, on a connection that it shares with nobody else. All rectangles are
// in pixels of the film, whose origin is the area's.
class X11FilmEye {
public:
    X11FilmEye(const X11Connection &connection, const FilmRequest &request);
    ~X11FilmEye();

    // The root window has this size now.
    void setRoot(QSize size) { m_root = QRect(QPoint(), size); }
    // Where the pointer and what lay under it changed since the last call; empty when it rested, or isn't
    // wanted.
    QRegion movePointer();
    // `rect` as the screen shows it, with the pointer, without the windows that are kept out. It may lie in
    // memory that the next one overwrites.
    Result<QImage> look(const QRect &rect);

private:
    struct Cursor {
        quint32 serial = 0; // of its shape
        QRect rect;
        QImage picture;
    };

    Result<QImage> readScreen(const QRect &native);
    Result<QImage> readWithoutKeptOut(const QRect &native);
    bool markKeptOut(X11Survey &survey) const;
    void keepContents();

    const X11Connection &m_connection;
    FilmRequest m_request;
    QRect m_root;
    std::unique_ptr<X11ImageReader> m_reader;
    std::unique_ptr<X11Compositor> m_compositor;
    Cursor m_cursor;
    bool m_keepsContents = false; // the server keeps what lies under other windows
};
