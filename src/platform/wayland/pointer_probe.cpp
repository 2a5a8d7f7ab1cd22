#include "platform/wayland/pointer_probe.h"

#include "platform/wayland/shared_picture.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

#include <vector>
#include <wayland-client.h>
#include <wayland_protocols/viewporter.h>
#include <wayland_protocols/wlr-layer-shell-unstable-v1.h>

namespace {

// A compositor draws the surface within its next frame, and tells of the pointer then.
constexpr std::chrono::milliseconds kPatience{120};

struct Sheet {
    WaylandOutput const *output = nullptr;
    wl_surface *surface = nullptr;
    zwlr_layer_surface_v1 *layer = nullptr;
    wp_viewport *viewport = nullptr;
    wl_buffer *buffer = nullptr;
};

class Probe {
public:
    explicit Probe(WaylandConnection &connection)
        : m_connection(connection),
          m_compositor(connection.bind<wl_compositor>(wl_compositor_interface, 4)),
          m_memory(connection.bind<wl_shm>(wl_shm_interface, 1)),
          m_seat(connection.bind<wl_seat>(wl_seat_interface, 1)),
          m_shell(connection.bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, 3)),
          m_viewporter(connection.bind<wp_viewporter>(wp_viewporter_interface, 1))
    {}
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;
    ~Probe()
    {
        for (const Sheet &sheet : m_sheets) {
            wp_viewport_destroy(sheet.viewport);
            zwlr_layer_surface_v1_destroy(sheet.layer);
            wl_surface_destroy(sheet.surface);
        }
        m_picture.reset();
        if (m_pointer)
            wl_pointer_destroy(m_pointer);
        if (m_viewporter)
            wp_viewporter_destroy(m_viewporter);
        if (m_shell && zwlr_layer_shell_v1_get_version(m_shell) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
            zwlr_layer_shell_v1_destroy(m_shell);
        else if (m_shell)
            wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_shell));
        if (m_seat)
            wl_seat_destroy(m_seat);
        if (m_memory)
            wl_shm_destroy(m_memory);
        if (m_compositor)
            wl_compositor_destroy(m_compositor);
        m_connection.roundtrip(); // they are gone when this returns
    }

    std::optional<QPointF> look(const WaylandOutputs &outputs)
    {
        if (!m_compositor || !m_memory || !m_seat || !m_shell || !m_viewporter || !takePointer())
            return std::nullopt;
        // One pixel of nothing, stretched.
        m_picture = SharedPicture::make(m_memory, {WL_SHM_FORMAT_ARGB8888, QSize(1, 1), 4});
        if (!m_picture)
            return std::nullopt;
        m_sheets.reserve(outputs.all().size()); // events point at them
        for (const WaylandOutput &output : outputs.all())
            spread(output);
        m_connection.waitFor([this] { return m_found.has_value(); }, kPatience);
        return m_found;
    }

private:
    static Probe &of(void *self) { return *static_cast<Probe *>(self); }

    bool takePointer()
    {
        static const wl_seat_listener seatListener{
            .capabilities =
                [](void *self, wl_seat *, uint32_t able) {
                    of(self).m_hasPointer = (able & WL_SEAT_CAPABILITY_POINTER) != 0;
                },
            .name = [](void *, wl_seat *, const char *) {},
        };
        // As much of it as the first version of a pointer tells.
        static const wl_pointer_listener pointerListener = [] {
            wl_pointer_listener listener{};
            listener.enter = [](void *self, wl_pointer *, uint32_t, wl_surface *surface, wl_fixed_t x,
                                wl_fixed_t y) { of(self).entered(surface, x, y); };
            listener.leave = [](void *, wl_pointer *, uint32_t, wl_surface *) {};
            listener.motion = [](void *, wl_pointer *, uint32_t, wl_fixed_t, wl_fixed_t) {};
            listener.button = [](void *, wl_pointer *, uint32_t, uint32_t, uint32_t, uint32_t) {};
            listener.axis = [](void *, wl_pointer *, uint32_t, uint32_t, wl_fixed_t) {};
            return listener;
        }();
        wl_seat_add_listener(m_seat, &seatListener, this);
        if (!m_connection.roundtrip() || !m_hasPointer)
            return false;
        m_pointer = wl_seat_get_pointer(m_seat);
        wl_pointer_add_listener(m_pointer, &pointerListener, this);
        return true;
    }

    void spread(const WaylandOutput &output)
    {
        static const zwlr_layer_surface_v1_listener listener{
            .configure =
                [](void *data, zwlr_layer_surface_v1 *layer, uint32_t serial, uint32_t width,
                   uint32_t height) {
                    const auto *sheet = static_cast<const Sheet *>(data);
                    zwlr_layer_surface_v1_ack_configure(layer, serial);
                    wp_viewport_set_destination(sheet->viewport, int32_t(width), int32_t(height));
                    wl_surface_attach(sheet->surface, sheet->buffer, 0, 0);
                    wl_surface_commit(sheet->surface);
                },
            .closed = [](void *, zwlr_layer_surface_v1 *) {},
        };
        Sheet &sheet = m_sheets.emplace_back();
        sheet.output = &output;
        sheet.buffer = m_picture->buffer();
        sheet.surface = wl_compositor_create_surface(m_compositor);
        sheet.viewport = wp_viewporter_get_viewport(m_viewporter, sheet.surface);
        sheet.layer = zwlr_layer_shell_v1_get_layer_surface(m_shell, sheet.surface, output.output,
                                                            ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "pointer");
        zwlr_layer_surface_v1_set_anchor(
            sheet.layer, ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                             ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
        zwlr_layer_surface_v1_set_exclusive_zone(sheet.layer, -1);
        zwlr_layer_surface_v1_add_listener(sheet.layer, &listener, &sheet);
        wl_surface_commit(sheet.surface);
    }

    void entered(const wl_surface *surface, wl_fixed_t x, wl_fixed_t y)
    {
        for (const Sheet &sheet : m_sheets) {
            if (sheet.surface == surface)
                m_found = QPointF(sheet.output->logical.topLeft()) +
                          QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y));
        }
    }

    WaylandConnection &m_connection;
    wl_compositor *m_compositor;
    wl_shm *m_memory;
    wl_seat *m_seat;
    zwlr_layer_shell_v1 *m_shell;
    wp_viewporter *m_viewporter;
    wl_pointer *m_pointer = nullptr;
    bool m_hasPointer = false;
    std::unique_ptr<SharedPicture> m_picture;
    std::vector<Sheet> m_sheets;
    std::optional<QPointF> m_found;
};

} // namespace

std::optional<QPointF> probePointer(WaylandConnection &connection, const WaylandOutputs &outputs)
{
    return Probe(connection).look(outputs);
}
