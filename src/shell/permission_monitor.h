#pragma once

#include "platform/permissions.h"

#include <QHash>
#include <QObject>
#include <QTimer>

// The permissions in the order in which they are shown.
inline constexpr Permission kPermissions[] = {Permission::ScreenRecording, Permission::Accessibility,
                                              Permission::Microphone, Permission::Camera, Permission::Speech};

// Keeps a table of what the session lets the program do, looked at once a second while it lives.
class PermissionMonitor : public QObject {
    Q_OBJECT
public:
    explicit PermissionMonitor(const Permissions &permissions, QObject *parent = nullptr);

    PermissionStatus status(Permission permission) const { return m_statuses.value(permission); }
    void refresh();

Q_SIGNALS:
    // Only when some status is another one than before.
    void changed();

private:
    const Permissions &m_permissions;
    QHash<Permission, PermissionStatus> m_statuses;
    QTimer m_timer;
};
