#include "platform/wayland/wayland_windows.h"

#include "platform/wayland/kwin_windows.h"
#include "platform/wayland/sway_ipc.h"
#include "platform/wayland/sway_windows.h"

std::shared_ptr<WaylandWindows> waylandWindows()
{
    if (SwayIpc::isOffered())
        return std::make_shared<SwayWindows>();
    if (qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE"))
        return std::make_shared<KWinWindows>();
    return nullptr;
}
