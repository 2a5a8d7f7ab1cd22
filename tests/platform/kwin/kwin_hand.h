#pragma once

#include "platform/wayland/wayland_connection.h"

#include <QList>
#include <QPointF>
#include <QTest>
#include <linux/input-event-codes.h>
#include <wayland-client.h>
#include <wayland_protocols/fake-input.h>

// A person's hands on mouse and keyboard, as far as KWin can tell.
class KWinHand {
public:
    KWinHand()
    {
        m_connection = std::move(*WaylandConnection::open());
        m_input = m_connection->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 4);
        org_kde_kwin_fake_input_authenticate(m_input, "test", "test");
        finish();
    }
    void move(QPointF to)
    {
        org_kde_kwin_fake_input_pointer_motion_absolute(m_input, wl_fixed_from_double(to.x()),
                                                        wl_fixed_from_double(to.y()));
        finish();
    }
    void button(bool isDown)
    {
        org_kde_kwin_fake_input_button(m_input, BTN_LEFT, isDown ? 1 : 0);
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
    // All of them down, and up again.
    void type(const QList<int> &keys)
    {
        for (const int key : keys)
            press(key, true);
        for (const int key : keys)
            press(key, false);
    }

private:
    void press(int key, bool isDown)
    {
        org_kde_kwin_fake_input_keyboard_key(m_input, uint32_t(key), isDown ? 1 : 0);
        finish();
    }
    void finish()
    {
        m_connection->roundtrip();
        QTest::qWait(20); // a frame, in which the one who is pointed at learns of it
    }

    std::unique_ptr<WaylandConnection> m_connection;
    org_kde_kwin_fake_input *m_input = nullptr;
};
