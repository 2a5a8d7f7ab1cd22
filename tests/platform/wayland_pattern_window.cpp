#include "platform/pattern.h"
#include "platform/wayland/shared_picture.h"
#include "platform/wayland/wayland_connection.h"

#include <QCoreApplication>
#include <cstdio>
#include <wayland-client.h>
#include <wayland_protocols/viewporter.h>
#include <wayland_protocols/xdg-shell.h>

// platform_wayland_pattern_window SEED WIDTH HEIGHT [SCALE]
// Shows a window of so many points with pattern(SEED), one pixel of it on one of a screen with that scale,
// says so once it is shown, and stays until it is killed. Says "wheel N" when its wheel was turned to N
// clicks in all.

namespace {

struct Window {
    wl_surface *surface = nullptr;
    wl_buffer *buffer = nullptr;
    bool isShown = false;
    int clicks = 0;
};

void listenToWheel(WaylandConnection &connection, Window &window)
{
    static const wl_pointer_listener listener = [] {
        wl_pointer_listener all{};
        all.enter = [](void *, wl_pointer *, uint32_t, wl_surface *, wl_fixed_t, wl_fixed_t) {};
        all.leave = [](void *, wl_pointer *, uint32_t, wl_surface *) {};
        all.motion = [](void *, wl_pointer *, uint32_t, wl_fixed_t, wl_fixed_t) {};
        all.button = [](void *, wl_pointer *, uint32_t, uint32_t, uint32_t, uint32_t) {};
        all.axis = [](void *, wl_pointer *, uint32_t, uint32_t, wl_fixed_t) {};
        all.frame = [](void *, wl_pointer *) {};
        all.axis_source = [](void *, wl_pointer *, uint32_t) {};
        all.axis_stop = [](void *, wl_pointer *, uint32_t, uint32_t) {};
        all.axis_discrete = [](void *data, wl_pointer *, uint32_t, int32_t clicks) {
            std::printf("wheel %d\n", static_cast<Window *>(data)->clicks += clicks);
        };
        return all;
    }();
    static const wl_seat_listener seatListener{
        .capabilities =
            [](void *data, wl_seat *seat, uint32_t able) {
                if ((able & WL_SEAT_CAPABILITY_POINTER) != 0)
                    wl_pointer_add_listener(wl_seat_get_pointer(seat), &listener, data);
            },
        .name = [](void *, wl_seat *, const char *) {},
    };
    if (auto *seat = connection.bind<wl_seat>(wl_seat_interface, 5))
        wl_seat_add_listener(seat, &seatListener, &window);
}

void show(WaylandConnection &connection, Window &window, QSize points)
{
    auto *compositor = connection.bind<wl_compositor>(wl_compositor_interface, 4);
    auto *shell = connection.bind<xdg_wm_base>(xdg_wm_base_interface, 1);
    auto *viewporter = connection.bind<wp_viewporter>(wp_viewporter_interface, 1);
    static const xdg_wm_base_listener shellListener{
        .ping = [](void *, xdg_wm_base *base, uint32_t serial) { xdg_wm_base_pong(base, serial); }};
    static const xdg_toplevel_listener toplevelListener = [] {
        xdg_toplevel_listener listener{};
        listener.configure = [](void *, xdg_toplevel *, int32_t, int32_t, wl_array *) {};
        listener.close = [](void *, xdg_toplevel *) { std::exit(0); };
        return listener;
    }();
    static const xdg_surface_listener surfaceListener{
        .configure = [](void *data, xdg_surface *surface, uint32_t serial) {
            auto &shown = *static_cast<Window *>(data);
            xdg_surface_ack_configure(surface, serial);
            wl_surface_attach(shown.surface, shown.buffer, 0, 0);
            wl_surface_commit(shown.surface);
            shown.isShown = true;
        }};
    window.surface = wl_compositor_create_surface(compositor);
    wp_viewport_set_destination(wp_viewporter_get_viewport(viewporter, window.surface), points.width(),
                                points.height());
    xdg_wm_base_add_listener(shell, &shellListener, nullptr);
    xdg_surface *surface = xdg_wm_base_get_xdg_surface(shell, window.surface);
    xdg_surface_add_listener(surface, &surfaceListener, &window);
    xdg_toplevel *toplevel = xdg_surface_get_toplevel(surface);
    xdg_toplevel_add_listener(toplevel, &toplevelListener, nullptr);
    xdg_toplevel_set_app_id(toplevel, "platform_pattern_window");
    wl_surface_commit(window.surface);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 4)
        return 2;
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QSize points(words[2].toInt(), words[3].toInt());
    const QSize pixels = (QSizeF(points) * words.value(4, "1").toDouble()).toSize();
    const auto connection = WaylandConnection::open();
    if (!connection)
        return 1;
    auto *memory = (*connection)->bind<wl_shm>(wl_shm_interface, 1);
    const auto picture = SharedPicture::make(memory, {WL_SHM_FORMAT_XRGB8888, pixels, pixels.width() * 4});
    const QImage drawn = pattern(pixels, words[1].toInt());
    std::copy_n(drawn.constBits(), drawn.sizeInBytes(), picture->bytes());
    Window window;
    window.buffer = picture->buffer();
    listenToWheel(**connection, window);
    show(**connection, window, points);
    (*connection)->waitFor([&] { return window.isShown; });
    std::puts("shown");
    (*connection)->waitFor([] { return false; }, std::chrono::hours(1));
    return 0;
}
