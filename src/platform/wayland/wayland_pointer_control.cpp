#include "platform/wayland/wayland_pointer_control.h"

#include "base/async.h"
#include "platform/texts.h"
#include "platform/wayland/played_pointer.h"
#include "platform/wayland/pointer_probe.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

namespace {

// For so long the pointer is taken to be where it was put: to look for it takes a frame, and takes it from
// the window that it is on.
constexpr int kTrust = 3000; // milliseconds
} // namespace

struct WaylandPointerControl::Device {
    std::unique_ptr<WaylandConnection> connection;
    std::unique_ptr<WaylandOutputs> outputs;
    std::unique_ptr<PlayedPointer> pointer;

    // A pointer of its own, from the first time that it is to move.
    bool canPlay()
    {
        if (!pointer) {
            pointer = PlayedPointer::make(*connection);
            connection->roundtrip();
        }
        return pointer != nullptr;
    }
};

WaylandPointerControl::WaylandPointerControl(const Screens &screens) : m_screens(screens) {}

WaylandPointerControl::~WaylandPointerControl() = default;

WaylandPointerControl::Device *WaylandPointerControl::device() const
{
    if (m_device && (m_device->connection->isBroken() || !m_device->connection->roundtrip()))
        m_device.reset();
    if (!m_device) {
        auto opened = WaylandConnection::open();
        if (!opened)
            return nullptr;
        m_device = std::make_unique<Device>();
        m_device->connection = std::move(*opened);
        m_device->outputs = std::make_unique<WaylandOutputs>(*m_device->connection);
    }
    return m_device.get();
}

QPointF WaylandPointerControl::position() const
{
    if (m_sincePut.isValid() && m_sincePut.elapsed() < kTrust)
        return m_put;
    if (Device *open = device()) {
        if (const auto found = probePointer(*open->connection, *open->outputs))
            return *found;
    }
    const QList<Screen> screens = m_screens.screens();
    return screens.isEmpty() ? QPointF() : screens.first().frame().center();
}

void WaylandPointerControl::warp(QPointF point)
{
    Device *open = device();
    if (!open || !open->canPlay())
        return;
    QRectF all;
    for (const Screen &screen : m_screens.screens())
        all |= screen.frame();
    if (!all.contains(point))
        return;
    open->pointer->move(point, all);
    open->connection->roundtrip();
    m_put = point;
    m_sincePut.start();
}

bool WaylandPointerControl::canScroll() const
{
    const Device *open = device();
    return open && PlayedPointer::isOffered(*open->connection);
}

QFuture<Result<void>> WaylandPointerControl::wheel(int clicks)
{
    Device *open = device();
    if (!open || !open->canPlay()) {
        return readyFuture<Result<void>>(fail(
            Error::Kind::Unavailable, PlatformTexts::tr("This desktop lets no program turn the wheel.")));
    }
    open->pointer->wheel(clicks);
    open->connection->roundtrip();
    return readyFuture<Result<void>>({});
}
