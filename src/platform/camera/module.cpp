#include "platform/camera/device_cameras.h"

extern "C" {
#include <libavutil/log.h>
}

// The entry of the loadable module.
extern "C" Q_DECL_EXPORT Cameras *lumenpost_cameras()
{
    av_log_set_level(AV_LOG_QUIET); // its remarks would mix with our own words
    return new DeviceCameras;
}
