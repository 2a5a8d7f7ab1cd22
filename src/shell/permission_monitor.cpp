#include "shell/permission_monitor.h"

namespace {
constexpr int kInterval = 1000; // milliseconds
} // namespace

PermissionMonitor::PermissionMonitor(const Permissions &permissions, QObject *parent)
    : QObject(parent), m_permissions(permissions)
{
    connect(&m_timer, &QTimer::timeout, this, &PermissionMonitor::refresh);
    m_timer.start(kInterval);
    refresh();
}

void PermissionMonitor::refresh()
{
    QHash<Permission, PermissionStatus> statuses;
    for (const Permission permission : kPermissions)
        statuses.insert(permission, m_permissions.status(permission));
    if (std::exchange(m_statuses, statuses) != statuses)
        Q_EMIT changed();
}
