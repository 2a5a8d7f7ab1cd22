#pragma once

#include <QString>

enum class Permission { ScreenRecording, Accessibility, Camera, Microphone, Speech };
enum class PermissionStatus { Granted, Denied, NotAsked };

// What the session lets this program do.
class Permissions {
public:
    virtual ~Permissions() = default;
    virtual PermissionStatus status(Permission permission) const = 0;
    virtual void request(Permission permission) = 0;
    virtual void openSettings(Permission permission) = 0;
};
