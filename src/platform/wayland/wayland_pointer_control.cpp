#include "platform/wayland/wayland_pointer_control.h"

#include "base/async.h"
#include "platform/texts.h"
#include "platform/wayland/pointer_probe.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

#include <chrono>
#include <cmath>
#include <linux/input-event-codes.h>
#include <wayland-client.h>
#include <wayland_protocols/wlr-virtual-pointer-unstable-v1.h>

namespace {

// What a wheel of 15 degrees a click says.
constexpr int kClickLength = 15;
// For so long the pointer is taken to be where it was put: to look for it takes a frame, and takes it from
// the window that it is on.
constexpr int kTrust = 3000; // milliseconds
// Parts of a point that a place is told in.
constexpr int kFine = 64;

quint32 now()
{
    using namespace std::chrono;
    return quint32(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

} // namespace

struct WaylandPointerControl::Device {
    std::unique_ptr<WaylandConnection> connection;
    std::unique_ptr<WaylandOutputs> outputs;
    zwlr_virtual_pointer_manager_v1 *manager = nullptr;
    zwlr_virtual_pointer_v1 *pointer = nullptr;

    Device() = default;
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;
    ~Device()
    {
        if (pointer)
            zwlr_virtual_pointer_v1_destroy(pointer);
        if (manager)
            zwlr_virtual_pointer_manager_v1_destroy(manager);
    }
    // A pointer of its own, from the first time that it is to move.
    bool canPlay()
    {
        if (!pointer && manager) {
            pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager, nullptr);
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
        m_device->manager = m_device->connection->bind<zwlr_virtual_pointer_manager_v1>(
            zwlr_virtual_pointer_manager_v1_interface, 1);
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
    const QPointF at = (point - all.topLeft()) * kFine;
    const QSize whole = (all.size() * kFine).toSize();
    if (at.x() < 0 || at.y() < 0 || at.x() > whole.width() || at.y() > whole.height())
        return;
    zwlr_virtual_pointer_v1_motion_absolute(open->pointer, now(), quint32(std::lround(at.x())),
                                            quint32(std::lround(at.y())), quint32(whole.width()),
                                            quint32(whole.height()));
    zwlr_virtual_pointer_v1_frame(open->pointer);
    open->connection->roundtrip();
    m_put = point;
    m_sincePut.start();
}

bool WaylandPointerControl::canScroll() const
{
    const Device *open = device();
    return open && open->manager;
}

QFuture<Result<void>> WaylandPointerControl::wheel(int clicks)
{
    Device *open = device();
    if (!open || !open->canPlay()) {
        return readyFuture<Result<void>>(fail(
            Error::Kind::Unavailable, PlatformTexts::tr("This desktop lets no program turn the wheel.")));
    }
    // Where a surface has just gone, the compositor finds the window below only when the pointer moves.
    zwlr_virtual_pointer_v1_motion(open->pointer, now(), 0, 0);
    zwlr_virtual_pointer_v1_frame(open->pointer);
    const int direction = clicks < 0 ? -1 : 1;
    for (int i = 0; i < std::abs(clicks); ++i) {
        zwlr_virtual_pointer_v1_axis_source(open->pointer, WL_POINTER_AXIS_SOURCE_WHEEL);
        zwlr_virtual_pointer_v1_axis_discrete(open->pointer, now(), WL_POINTER_AXIS_VERTICAL_SCROLL,
                                              wl_fixed_from_int(direction * kClickLength), direction);
        zwlr_virtual_pointer_v1_frame(open->pointer);
    }
    open->connection->roundtrip();
    return readyFuture<Result<void>>({});
}
