#include "platform/x11/x11_pointer_control.h"

#include "platform/screens.h"
#include "platform/texts.h"
#include "platform/x11/x11_connection.h"

#include <QMutexLocker>
#include <QThread>
#include <QtConcurrentRun>
#include <algorithm>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

constexpr int kButtonUp = 4;
constexpr int kButtonDown = 5;
constexpr int kBetweenClicks = 8; // milliseconds; programs merge or drop what comes faster

} // namespace

X11PointerControl::X11PointerControl(const Screens &screens) : m_screens(screens)
{
    m_wheel.setMaxThreadCount(1);
}

X11PointerControl::~X11PointerControl()
{
    m_wheel.clear();
    m_wheel.waitForDone();
}

X11Connection *X11PointerControl::connection() const
{
    if (m_connection && m_connection->isBroken())
        m_connection.reset();
    if (!m_connection) {
        auto opened = X11Connection::open(X11Extension::XTest);
        if (opened)
            m_connection = std::move(*opened);
    }
    return m_connection.get();
}

QPointF X11PointerControl::position() const
{
    QPoint native;
    {
        QMutexLocker lock(&m_mutex);
        const X11Connection *open = connection();
        if (!open)
            return {};
        const XcbOwned<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(open->xcb(), xcb_query_pointer(open->xcb(), open->root()), nullptr));
        if (!reply)
            return {};
        native = QPoint(reply->root_x, reply->root_y);
    }
    for (const Screen &screen : m_screens.screens()) {
        if (screen.native.contains(native))
            return screen.fromNative(native);
    }
    return native;
}

void X11PointerControl::warp(QPointF point)
{
    const QList<Screen> screens = m_screens.screens();
    const Screen *screen = screenAt(screens, point);
    QMutexLocker lock(&m_mutex);
    const X11Connection *open = connection();
    if (!screen || !open)
        return;
    const QPointF wanted = screen->toNative(point);
    const QRect &limits = screen->native;
    const int x = std::clamp(qRound(wanted.x()), limits.left(), limits.right());
    const int y = std::clamp(qRound(wanted.y()), limits.top(), limits.bottom());
    xcb_warp_pointer(open->xcb(), XCB_NONE, open->root(), 0, 0, 0, 0, qint16(x), qint16(y));
    // Its answer tells that the pointer has arrived.
    const XcbOwned<xcb_query_pointer_reply_t> arrived(
        xcb_query_pointer_reply(open->xcb(), xcb_query_pointer(open->xcb(), open->root()), nullptr));
}

bool X11PointerControl::canScroll() const
{
    QMutexLocker lock(&m_mutex);
    const X11Connection *open = connection();
    return open && open->has(X11Extension::XTest);
}

QFuture<Result<void>> X11PointerControl::wheel(int clicks)
{
    return QtConcurrent::run(&m_wheel, [this, clicks]() -> Result<void> {
        if (!canScroll()) {
            return fail(
                Error::Kind::Unavailable,
                PlatformTexts::tr("This display doesn't let programs turn the wheel: scroll by hand."));
        }
        const int button = clicks > 0 ? kButtonDown : kButtonUp;
        for (int i = 0; i < std::abs(clicks); ++i) {
            if (i > 0)
                QThread::msleep(kBetweenClicks);
            QMutexLocker lock(&m_mutex);
            const X11Connection *open = connection();
            if (!open)
                return fail(PlatformTexts::tr("The display has gone away."));
            for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
                xcb_test_fake_input(open->xcb(), quint8(type), quint8(button), XCB_CURRENT_TIME, XCB_NONE, 0,
                                    0, 0);
            xcb_flush(open->xcb());
        }
        return {};
    });
}
