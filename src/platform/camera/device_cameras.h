#pragma once

#include "platform/cameras.h"

// Cameras as the system's video devices, by the FFmpeg libraries. LUMENPOST_CAMERA names a device, or a film
// that stands for one.
class DeviceCameras : public Cameras {
public:
    Result<std::unique_ptr<CameraStream>> open(int side, std::function<void(const QImage &)> picture,
                                               std::function<void()> lost) override;
};
