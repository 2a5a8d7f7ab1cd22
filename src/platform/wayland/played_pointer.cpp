#include "platform/wayland/played_pointer.h"

#include "platform/wayland/wayland_connection.h"

#include <chrono>
#include <cmath>
#include <wayland-client.h>
#include <wayland_protocols/fake-input.h>
#include <wayland_protocols/wlr-virtual-pointer-unstable-v1.h>

namespace {

// What a wheel of 15 degrees a click says.
constexpr int kClickLength = 15;
// Parts of a point that a place is told in.
constexpr int kFine = 64;

quint32 now()
{
    using namespace std::chrono;
    return quint32(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

// Where a surface has just gone, a compositor finds the window below only when the pointer moves: both begin
// the wheel with a motion by nothing.
class VirtualPointer : public PlayedPointer {
public:
    explicit VirtualPointer(WaylandConnection &connection)
        : m_manager(
              connection.bind<zwlr_virtual_pointer_manager_v1>(zwlr_virtual_pointer_manager_v1_interface, 1)),
          m_pointer(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(m_manager, nullptr))
    {}
    ~VirtualPointer() override
    {
        zwlr_virtual_pointer_v1_destroy(m_pointer);
        zwlr_virtual_pointer_manager_v1_destroy(m_manager);
    }
    VirtualPointer(const VirtualPointer &) = delete;
    VirtualPointer &operator=(const VirtualPointer &) = delete;

    void move(QPointF to, const QRectF &all) override
    {
        const QPointF at = (to - all.topLeft()) * kFine;
        const QSize whole = (all.size() * kFine).toSize();
        zwlr_virtual_pointer_v1_motion_absolute(m_pointer, now(), quint32(std::lround(at.x())),
                                                quint32(std::lround(at.y())), quint32(whole.width()),
                                                quint32(whole.height()));
        zwlr_virtual_pointer_v1_frame(m_pointer);
    }
    void wheel(int clicks) override
    {
        zwlr_virtual_pointer_v1_motion(m_pointer, now(), 0, 0);
        zwlr_virtual_pointer_v1_frame(m_pointer);
        const int direction = clicks < 0 ? -1 : 1;
        for (int i = 0; i < std::abs(clicks); ++i) {
            zwlr_virtual_pointer_v1_axis_source(m_pointer, WL_POINTER_AXIS_SOURCE_WHEEL);
            zwlr_virtual_pointer_v1_axis_discrete(m_pointer, now(), WL_POINTER_AXIS_VERTICAL_SCROLL,
                                                  wl_fixed_from_int(direction * kClickLength), direction);
            zwlr_virtual_pointer_v1_frame(m_pointer);
        }
    }

private:
    zwlr_virtual_pointer_manager_v1 *m_manager;
    zwlr_virtual_pointer_v1 *m_pointer;
};

// KWin's, for programs whose installed launcher asks for it.
class FakeInput : public PlayedPointer {
public:
    explicit FakeInput(WaylandConnection &connection)
        : m_input(connection.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 3))
    {
        org_kde_kwin_fake_input_authenticate(m_input, "Lumenpost", "scrolling captures");
    }
    ~FakeInput() override { wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_input)); }
    FakeInput(const FakeInput &) = delete;
    FakeInput &operator=(const FakeInput &) = delete;

    void move(QPointF to, const QRectF &) override
    {
        if (wl_proxy_get_version(reinterpret_cast<wl_proxy *>(m_input)) >= 3) {
            org_kde_kwin_fake_input_pointer_motion_absolute(m_input, wl_fixed_from_double(to.x()),
                                                            wl_fixed_from_double(to.y()));
        }
    }
    void wheel(int clicks) override
    {
        org_kde_kwin_fake_input_pointer_motion(m_input, 0, 0);
        for (int i = 0; i < std::abs(clicks); ++i)
            org_kde_kwin_fake_input_axis(m_input, WL_POINTER_AXIS_VERTICAL_SCROLL,
                                         wl_fixed_from_int(clicks < 0 ? -kClickLength : kClickLength));
    }

private:
    org_kde_kwin_fake_input *m_input;
};

} // namespace

bool PlayedPointer::isOffered(const WaylandConnection &connection)
{
    return connection.offers(zwlr_virtual_pointer_manager_v1_interface) ||
           connection.offers(org_kde_kwin_fake_input_interface);
}

std::unique_ptr<PlayedPointer> PlayedPointer::make(WaylandConnection &connection)
{
    if (connection.offers(zwlr_virtual_pointer_manager_v1_interface))
        return std::make_unique<VirtualPointer>(connection);
    if (connection.offers(org_kde_kwin_fake_input_interface))
        return std::make_unique<FakeInput>(connection);
    return nullptr;
}
