#include "platform/wayland/wayland_outputs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <wayland-client.h>
#include <wayland_protocols/xdg-output-unstable-v1.h>

namespace {

WaylandOutput &outputOf(void *data)
{
    return *static_cast<WaylandOutput *>(data);
}

const wl_output_listener kOutputListener{
    .geometry =
        [](void *data, wl_output *, int32_t x, int32_t y, int32_t, int32_t, int32_t, const char *,
           const char *, int32_t transform) {
            outputOf(data).corner = QPoint(x, y);
            outputOf(data).transform = transform;
        },
    .mode =
        [](void *data, wl_output *, uint32_t flags, int32_t width, int32_t height, int32_t) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) != 0)
                outputOf(data).mode = QSize(width, height);
        },
    .done = [](void *, wl_output *) {},
    .scale = [](void *data, wl_output *, int32_t factor) { outputOf(data).roundedScale = factor; },
    .name = [](void *data, wl_output *, const char *name) { outputOf(data).name = QString::fromUtf8(name); },
    .description = [](void *, wl_output *, const char *) {},
};

const zxdg_output_v1_listener kExtentListener{
    .logical_position = [](void *data, zxdg_output_v1 *, int32_t x,
                           int32_t y) { outputOf(data).logical.moveTopLeft(QPoint(x, y)); },
    .logical_size = [](void *data, zxdg_output_v1 *, int32_t width,
                       int32_t height) { outputOf(data).logical.setSize(QSize(width, height)); },
    .done = [](void *, zxdg_output_v1 *) {},
    .name =
        [](void *data, zxdg_output_v1 *, const char *name) {
            if (outputOf(data).name.isEmpty())
                outputOf(data).name = QString::fromUtf8(name);
        },
    .description = [](void *, zxdg_output_v1 *, const char *) {},
};

QRect logicalOf(const WaylandOutput &output)
{
    if (!output.logical.isEmpty())
        return output.logical;
    return {output.corner, output.pixels() / std::max(1, output.roundedScale)};
}

} // namespace

double plainScale(QSize pixels, QSize points)
{
    const double exact = double(pixels.width()) / std::max(1, points.width());
    // In quarters as people choose it, then in the steps that the protocol of fractional scales counts in.
    for (const double steps : {1.0, 2.0, 4.0, 120.0}) {
        const double plain = std::round(exact * steps) / steps;
        if (plain > 0 && std::abs(pixels.width() / plain - points.width()) < 1 &&
            std::abs(pixels.height() / plain - points.height()) < 1)
            return plain;
    }
    return exact;
}

WaylandOutputs::WaylandOutputs(WaylandConnection &connection) : m_connection(connection)
{
    m_extents = connection.bind<zxdg_output_manager_v1>(zxdg_output_manager_v1_interface, 3);
    connection.setListener(this);
    connection.roundtrip();
    // What the extents answer comes after what the outputs did.
    connection.roundtrip();
}

WaylandOutputs::~WaylandOutputs()
{
    m_connection.setListener(nullptr);
    for (WaylandOutput &output : m_outputs)
        destroy(output);
    if (m_extents)
        zxdg_output_manager_v1_destroy(m_extents);
}

void WaylandOutputs::destroy(WaylandOutput &output)
{
    if (output.extent)
        zxdg_output_v1_destroy(output.extent);
    if (wl_output_get_version(output.output) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
        wl_output_release(output.output);
    else
        wl_output_destroy(output.output);
}

void WaylandOutputs::added(const WaylandGlobal &global)
{
    if (global.interface != wl_output_interface.name)
        return;
    WaylandOutput &output = m_outputs.emplace_back();
    output.global = global.name;
    output.output = static_cast<wl_output *>(wl_registry_bind(
        m_connection.registry(), global.name, &wl_output_interface, std::min(global.version, 4U)));
    wl_output_add_listener(output.output, &kOutputListener, &output);
    if (m_extents) {
        output.extent = zxdg_output_manager_v1_get_xdg_output(m_extents, output.output);
        zxdg_output_v1_add_listener(output.extent, &kExtentListener, &output);
    }
}

void WaylandOutputs::removed(quint32 name)
{
    const auto found = std::find_if(m_outputs.begin(), m_outputs.end(),
                                    [name](const WaylandOutput &each) { return each.global == name; });
    if (found == m_outputs.end())
        return;
    destroy(*found);
    m_outputs.erase(found);
}

const WaylandOutput *WaylandOutputs::find(quint32 screenId) const
{
    const auto found =
        std::find_if(m_outputs.begin(), m_outputs.end(),
                     [screenId](const WaylandOutput &each) { return each.global == screenId; });
    return found == m_outputs.end() ? nullptr : &*found;
}

QList<Screen> WaylandOutputs::screens() const
{
    QList<Screen> screens;
    double largest = 1;
    for (const WaylandOutput &output : m_outputs) {
        const QRect logical = logicalOf(output);
        if (output.mode.isEmpty() || logical.isEmpty())
            continue;
        Screen screen;
        screen.id = output.global;
        screen.name = output.name.isEmpty() ? QStringLiteral("screen") : output.name;
        screen.scale = plainScale(output.pixels(), logical.size());
        screen.native = QRect(logical.topLeft(), output.pixels());
        largest = std::max(largest, screen.scale);
        screens.append(screen);
    }
    // In pixels the screens must not overlap either, whatever their scales.
    for (Screen &screen : screens) {
        screen.place = screen.native.topLeft();
        screen.native.moveTopLeft((QPointF(*screen.place) * largest).toPoint());
    }
    const auto primary =
        std::min_element(screens.begin(), screens.end(), [](const Screen &a, const Screen &b) {
            return a.place->manhattanLength() < b.place->manhattanLength();
        });
    if (primary != screens.end()) {
        primary->isPrimary = true;
        std::rotate(screens.begin(), primary, primary + 1);
    }
    return screens;
}
