#include "platform/wayland/wayland_workspace.h"

#include "platform/wayland/wayland_windows.h"

#include <QMetaMethod>
#include <QSocketNotifier>
#include <unistd.h>

WaylandWorkspace::WaylandWorkspace(std::shared_ptr<WaylandWindows> windows, Opener opener)
    : m_windows(std::move(windows)), m_opener(std::move(opener))
{}

WaylandWorkspace::~WaylandWorkspace()
{
    m_notifier.reset();
    if (m_events >= 0)
        close(m_events);
}

std::optional<Workspace::Application> WaylandWorkspace::frontmost() const
{
    if (!m_windows)
        return std::nullopt;
    for (const WaylandWindow &window : m_windows->list()) {
        if (window.hasFocus)
            return Application{window.listed.pid, window.listed.owner};
    }
    return std::nullopt;
}

Result<void> WaylandWorkspace::open(const QUrl &url)
{
    return m_opener.open(url);
}

Result<void> WaylandWorkspace::reveal(const QString &path)
{
    return m_opener.reveal(path);
}

void WaylandWorkspace::rememberActiveWindow()
{
    m_remembered = 0;
    m_filling.clear();
    if (!m_windows)
        return;
    for (const WaylandWindow &window : m_windows->list()) {
        if (window.hasFocus)
            m_remembered = window.listed.id;
        if (window.fillsScreen)
            m_filling.append(window.listed.id);
    }
    m_windows->expectCovers(kScreenCoverTitle);
}

// Where windows aren't told, the compositor gives the keyboard to the one below by itself.
void WaylandWorkspace::restoreActiveWindow()
{
    if (!m_windows)
        return;
    for (const quint32 id : std::exchange(m_filling, {}))
        m_windows->fillScreen(id);
    if (m_remembered != 0)
        m_windows->activate(m_remembered);
}

void WaylandWorkspace::placeFloat(const QString &title, const QRect &frame)
{
    if (m_windows)
        m_windows->expectFloat(title, frame);
}

void WaylandWorkspace::connectNotify(const QMetaMethod &signal)
{
    if (signal != QMetaMethod::fromSignal(&Workspace::activated) || !m_windows || m_notifier)
        return;
    m_events = m_windows->listen();
    if (m_events < 0)
        return;
    m_last = frontmost();
    m_notifier = std::make_unique<QSocketNotifier>(m_events, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &WaylandWorkspace::readEvents);
}

void WaylandWorkspace::readEvents()
{
    if (!m_windows->drain(m_events)) {
        m_notifier->setEnabled(false); // a closed socket would wake it for ever
        return;
    }
    const std::optional<Application> now = frontmost();
    if (now && now != m_last) {
        m_last = now;
        Q_EMIT activated(*now);
    }
}
