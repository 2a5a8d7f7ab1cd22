#pragma once

#include "platform/screens.h"

#include <QFuture>
#include <QObject>
#include <QPointF>
#include <functional>
#include <optional>

class PointerControl;
template <typename T>
class Result;

// Takes what was scrolled back to where it was: a few clicks at a time, as long as its window is there and
// nobody else needs the pointer.
class ScrollBack : public QObject {
    Q_OBJECT
public:
    struct Ports {
        Screens &screens;
        PointerControl &pointer;
        std::function<QFuture<Result<void>>(int milliseconds)> pause;
    };
    struct Place {
        QPointF target;                // where the wheel is turned, in global points
        std::optional<quint32> window; // that has to be there; nothing for the desktop itself
    };

    ScrollBack(const Ports &ports, const Place &place, QObject *parent = nullptr);

    // Once. `done` follows from the event loop, however far it came.
    void start(int clicks, const std::function<void()> &done);
    // The rest isn't turned.
    void cancel() { m_isCancelled = true; }

private:
    void turnSome();
    void end();

    Ports m_ports;
    Place m_place;
    std::function<void()> m_done;
    QPointF m_before; // where the pointer was
    QPointF m_aimedAt;
    int m_clicks = 0; // still to be turned
    bool m_isCancelled = false;
};
