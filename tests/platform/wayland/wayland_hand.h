#pragma once

#include "platform/wayland/wayland_connection.h"

#include <QPointF>
#include <QSize>
#include <QTest>
#include <linux/input-event-codes.h>
#include <wayland-client.h>
#include <wayland_protocols/wlr-virtual-pointer-unstable-v1.h>

// A person's hand on the mouse, as far as the compositor can tell.
class WaylandHand {
public:
    // `desktop` is the size of all screens together, in points.
    explicit WaylandHand(QSize desktop) : m_desktop(desktop)
    {
        m_connection = std::move(*WaylandConnection::open());
        m_pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(
            m_connection->bind<zwlr_virtual_pointer_manager_v1>(zwlr_virtual_pointer_manager_v1_interface, 1),
            nullptr);
        m_connection->roundtrip();
    }
    void move(QPointF to)
    {
        zwlr_virtual_pointer_v1_motion_absolute(m_pointer, ++m_time, uint32_t(to.x() * 10),
                                                uint32_t(to.y() * 10), uint32_t(m_desktop.width()) * 10,
                                                uint32_t(m_desktop.height()) * 10);
        finish();
    }
    void button(bool isDown)
    {
        zwlr_virtual_pointer_v1_button(m_pointer, ++m_time, BTN_LEFT, isDown ? 1 : 0);
        finish();
    }
    void drag(QPointF from, QPointF to)
    {
        move(from);
        button(true);
        for (const double part : {0.3, 0.7, 1.0})
            move(from + (to - from) * part);
        button(false);
    }

private:
    void finish()
    {
        zwlr_virtual_pointer_v1_frame(m_pointer);
        m_connection->roundtrip();
        QTest::qWait(30); // a frame, in which the one who is pointed at learns of it
    }

    QSize m_desktop;
    std::unique_ptr<WaylandConnection> m_connection;
    zwlr_virtual_pointer_v1 *m_pointer = nullptr;
    uint32_t m_time = 0;
};
