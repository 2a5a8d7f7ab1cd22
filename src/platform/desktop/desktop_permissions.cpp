#include "platform/desktop/desktop_permissions.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <unistd.h>

namespace {

// A camera that is there but not for this user.
bool isCameraBarred()
{
    const QStringList cameras =
        QDir(QStringLiteral("/dev")).entryList({QStringLiteral("video*")}, QDir::System | QDir::Files);
    for (const QString &camera : cameras) {
        if (access(QFile::encodeName(QStringLiteral("/dev/") + camera).constData(), R_OK | W_OK) == 0)
            return false;
    }
    return !cameras.isEmpty();
}

} // namespace

PermissionStatus DesktopPermissions::status(Permission permission) const
{
    switch (permission) {
    case Permission::ScreenRecording:
    case Permission::Accessibility:
        return m_hasScreen ? PermissionStatus::Granted : PermissionStatus::Denied;
    case Permission::Camera:
        return isCameraBarred() ? PermissionStatus::Denied : PermissionStatus::Granted;
    case Permission::Microphone:
    case Permission::Speech:
        return PermissionStatus::Granted;
    }
    return PermissionStatus::Denied;
}

void DesktopPermissions::request(Permission permission)
{
    if (status(permission) != PermissionStatus::Granted)
        openSettings(permission);
}

void DesktopPermissions::openSettings(Permission permission)
{
    const QString gnomePage = permission == Permission::Microphone      ? QStringLiteral("sound")
                              : permission == Permission::Accessibility ? QStringLiteral("universal-access")
                                                                        : QStringLiteral("privacy");
    for (const auto &[program, words] :
         {std::pair<QString, QStringList>{QStringLiteral("gnome-control-center"), {gnomePage}},
          {QStringLiteral("systemsettings"), {}},
          {QStringLiteral("xfce4-settings-manager"), {}}}) {
        const QString found = QStandardPaths::findExecutable(program);
        if (!found.isEmpty() && QProcess::startDetached(found, words))
            return;
    }
}
