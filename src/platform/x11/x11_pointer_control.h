#pragma once

#include "platform/pointer_control.h"

#include <QMutex>
#include <QThreadPool>
#include <memory>

class Screens;
class X11Connection;

// The pointer of an X server. `screens` tell how points and pixels relate.
class X11PointerControl : public PointerControl {
public:
    explicit X11PointerControl(const Screens &screens);
    ~X11PointerControl() override;
    QPointF position() const override;
    void warp(QPointF point) override;
    bool canScroll() const override;
    QFuture<Result<void>> wheel(int clicks) override;

private:
    X11Connection *connection() const;

    const Screens &m_screens;
    mutable QMutex m_mutex;
    mutable std::unique_ptr<X11Connection> m_connection;
    QThreadPool m_wheel; // one thread: clicks keep their order
};
