#pragma once

#include <QList>
#include <QRect>
#include <QRegion>

class X11Connection;

// What stands on the screen at one moment, and which of it is this program's.
struct X11Survey {
    struct TopLevel {
        quint32 id = 0;
        QRect outer; // with its border, in native pixels
        int depth = 0;
        quint32 visual = 0;
        bool isOwn = false;
        double opacity = 1;
    };

    QRect root;
    bool isComposited = false; // a compositing manager paints the screen
    quint32 rootPixmap = 0;    // the wallpaper; 0 if none was told
    QList<TopLevel>
        windows; // visible children of the root, bottom to top; only if wanted or one of ours is among them
    QRegion own; // where our own windows are

    // Best taken while the server is grabbed, so that it stays true.
    static X11Survey take(const X11Connection &connection, bool listsWindows);
    // The child of the root that `window` stands in; itself if it is one. 0 when it is gone.
    static quint32 topLevelOf(const X11Connection &connection, quint32 window);
};

// Which windows belong to this process, by the clients of the server that have its process id.
class X11OwnClients {
public:
    static X11OwnClients ask(const X11Connection &connection);
    bool owns(quint32 window) const;

private:
    friend struct X11Survey;
    QList<quint32> m_bases;
    quint32 m_mask = 0;
};
