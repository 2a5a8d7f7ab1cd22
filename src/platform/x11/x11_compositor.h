#pragma once

#include "platform/x11/x11_survey.h"

#include <QHash>
#include <optional>

class X11Connection;

// Paints a part of the desktop anew, from the kept contents of all windows but ours. To be used while the
// server is grabbed.
class X11Compositor {
public:
    explicit X11Compositor(const X11Connection &connection);

    // A pixmap of the root's depth with the picture of `area`; 0 when a window's contents aren't kept. To be
    // freed with release().
    quint32 paint(const X11Survey &survey, const QRect &area);
    void release(quint32 pixmap);

private:
    void paintWallpaper(const X11Survey &survey, quint32 target, const QRect &area);
    quint32 sampledWallpaper(const X11Survey &survey) const;
    void paintWindow(const X11Survey::TopLevel &window, quint32 target, const QRect &area);
    bool drainErrors();
    void learnFormats();

    const X11Connection &m_connection;
    QHash<quint32, quint32> m_formats; // by visual
};
