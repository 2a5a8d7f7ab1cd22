#pragma once

#include "platform/screen_pictures.h"
#include "platform/screens.h"

#include <QList>
#include <functional>
#include <memory>
#include <optional>

// A window of the session as its compositor tells it.
struct WaylandWindow {
    ListedWindow listed;
    bool hasFocus = false;
    bool fillsScreen = false;
    QRect content; // of the program itself, in global points
};

// Makes windows invisible without closing or moving them, until it is destroyed.
class WaylandVeil {
public:
    virtual ~WaylandVeil() = default;
};

// The one thing about windows that no common protocol tells: each compositor has its own way. Callable from
// any thread.
class WaylandWindows {
public:
    virtual ~WaylandWindows() = default;
    // Front to back; empty where the session doesn't tell.
    virtual QList<WaylandWindow> list() const = 0;
    virtual void activate(quint32 id) = 0;
    // Windows of this program with that title will cover screens: the others shall stay as they are.
    virtual void expectCovers(const QByteArray &title) = 0;
    // One with that title will float over the others there, without the keyboard.
    virtual void expectFloat(const QString &title, const QRect &frame) = 0;
    // Lets a window fill its screen again after that was covered.
    virtual void fillScreen(quint32 id) = 0;
    // Null where windows can't be hidden.
    virtual std::unique_ptr<WaylandVeil> hide(const QList<quint32> &ids) = 0;
    virtual bool canHide() const = 0;
    // A window alone, where the compositor makes such pictures; else nothing.
    virtual std::optional<Result<QImage>> picture(quint32 id, Pointer pointer, WindowPart part) = 0;
    // A file that becomes readable when another window is active; -1 where there is none. Whoever asks closes
    // it.
    virtual int listen() = 0;
    // Takes in what has arrived there; false when the other side is gone.
    virtual bool drain(int file) = 0;
};

// What this session's compositor has for it; null when it tells nothing.
std::shared_ptr<WaylandWindows> waylandWindows();
