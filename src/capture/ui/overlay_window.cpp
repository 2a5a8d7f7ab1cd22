#include "capture/ui/overlay_window.h"

#include "capture/ui/capture_overlay.h"
#include "capture/ui/overlay_view.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

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
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
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

// Nobody closes it but the program, when it ends.
void OverlayWindow::closeEvent(QCloseEvent *)
{
    m_controller.finish(CaptureOverlayController::Cancelled{});
}

void OverlayWindow::resizeEvent(QResizeEvent *)
{
    m_view->setGeometry(rect());
}
