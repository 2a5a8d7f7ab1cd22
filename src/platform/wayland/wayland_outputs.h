#pragma once

#include "platform/screens.h"
#include "platform/wayland/wayland_connection.h"

#include <list>

struct wl_output;
struct zxdg_output_manager_v1;
struct zxdg_output_v1;

// A screen as the compositor tells it.
struct WaylandOutput {
    quint32 global = 0;
    wl_output *output = nullptr;
    zxdg_output_v1 *extent = nullptr;
    QString name;
    QRect logical; // in points; empty where the compositor doesn't tell
    QPoint corner; // in the compositor's own count, where `logical` isn't told
    QSize mode;    // in pixels, before it is turned
    int transform = 0;
    int roundedScale = 1;

    // In pixels, as it is seen.
    QSize pixels() const { return transform % 2 == 0 ? mode : mode.transposed(); }
};

// The outputs of a connection, kept up to date by its events.
class WaylandOutputs : public WaylandGlobals {
public:
    explicit WaylandOutputs(WaylandConnection &connection);
    ~WaylandOutputs() override;
    WaylandOutputs(const WaylandOutputs &) = delete;
    WaylandOutputs &operator=(const WaylandOutputs &) = delete;

    // Those that have told all of themselves, the primary one first.
    QList<Screen> screens() const;
    // The output of a screen; null when it is gone.
    const WaylandOutput *find(quint32 screenId) const;
    const std::list<WaylandOutput> &all() const { return m_outputs; }

    void added(const WaylandGlobal &global) override;
    void removed(quint32 name) override;

private:
    void destroy(WaylandOutput &output);

    WaylandConnection &m_connection;
    zxdg_output_manager_v1 *m_extents = nullptr;
    std::list<WaylandOutput> m_outputs; // events point at them
};

// The pixels for a point on a screen that shows so many pixels on so many points. The compositor rounds the
// points down, so the plainest scale that gives them is meant.
double plainScale(QSize pixels, QSize points);
