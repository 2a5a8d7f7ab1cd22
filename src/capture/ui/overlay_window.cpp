#include "capture/ui/overlay_window.h"

#include "capture/ui/capture_overlay.h"
#include "capture/ui/overlay_view.h"
#include "capture/ui/texts.h"
#include "platform/workspace.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

// No program places its windows there, but each may ask to fill a screen.
bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

// Both sides keep a screen's origin, so it tells which is which.
QScreen *screenOf(const Screen &screen)
{
    for (QScreen *candidate : QGuiApplication::screens()) {
        if (candidate->geometry().topLeft() == screen.origin().toPoint())
            return candidate;
    }
    return nullptr;
}

} // namespace

OverlayWindow::OverlayWindow(const DisplaySnapshot &snapshot, CaptureOverlayController &controller)
    : m_controller(controller)
{
    setWindowTitle(QString::fromLatin1(kScreenCoverTitle));
    setAccessibleName(controller.selectionOnly() ? CaptureUiTexts::tr("Choose an area or a window")
                                                 : CaptureUiTexts::tr("Choose what to capture"));
    setWindowFlags(isWayland() ? Qt::Window | Qt::FramelessWindowHint
                               : Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                                     Qt::BypassWindowManagerHint | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    m_view = new OverlayView(snapshot, controller, this);
    setFocusProxy(m_view);
    if (QScreen *screen = screenOf(snapshot.screen)) {
        setScreen(screen);
        setGeometry(screen->geometry());
    } else {
        setGeometry(snapshot.screen.frame().toRect());
    }
}

void OverlayWindow::cover()
{
    if (isWayland())
        showFullScreen();
    else
        show();
    raise();
}

// Nobody closes it but the program, when it ends.
void OverlayWindow::closeEvent(QCloseEvent *)
{
    m_controller.finish(CaptureOverlayController::Cancelled{});
}

void OverlayWindow::resizeEvent(QResizeEvent *)
{
    m_view->setGeometry(rect());
}
