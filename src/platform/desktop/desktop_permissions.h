#pragma once

#include "platform/permissions.h"

// A desktop of this kind asks nobody: what the display, the device files and the sound server let through is
// granted.
class DesktopPermissions : public Permissions {
public:
    explicit DesktopPermissions(bool hasScreen) : m_hasScreen(hasScreen) {}
    PermissionStatus status(Permission permission) const override;
    void request(Permission permission) override;
    void openSettings(Permission permission) override;

private:
    bool m_hasScreen;
};
