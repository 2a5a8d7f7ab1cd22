#include "platform/wayland/wayland_screens.h"

#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"
#include "platform/wayland/wayland_windows.h"

#include <QMutexLocker>

WaylandScreens::WaylandScreens(std::shared_ptr<WaylandWindows> windows) : m_windows(std::move(windows)) {}

WaylandScreens::~WaylandScreens() = default;

QList<Screen> WaylandScreens::screens() const
{
    const QMutexLocker lock(&m_mutex);
    if (m_connection && !m_connection->roundtrip()) {
        m_outputs.reset();
        m_connection.reset();
    }
    if (!m_connection) {
        auto opened = WaylandConnection::open();
        if (!opened)
            return {};
        m_connection = std::move(*opened);
        m_outputs = std::make_unique<WaylandOutputs>(*m_connection);
    } else {
        m_connection->roundtrip(); // the extents of outputs that have just come
    }
    return m_outputs->screens();
}

QList<ListedWindow> WaylandScreens::windows() const
{
    QList<ListedWindow> listed;
    if (m_windows) {
        for (const WaylandWindow &window : m_windows->list())
            listed.append(window.listed);
    }
    return listed;
}
