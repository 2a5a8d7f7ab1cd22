#include "platform/x11/x11_toolkit.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

bool isToolkitDisconnected()
{
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!application)
        return false;
    auto *native = application->nativeInterface<QNativeInterface::QX11Application>();
    return native && native->connection() && xcb_connection_has_error(native->connection()) != 0;
}
