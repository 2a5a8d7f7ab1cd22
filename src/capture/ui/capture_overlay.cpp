#include "capture/ui/capture_overlay.h"

#include "capture/ui/overlay_marks.h"
#include "capture/ui/overlay_view.h"
#include "capture/ui/overlay_window.h"
#include "platform/pointer_control.h"
#include "platform/workspace.h"

#include <QPainter>

CaptureOverlayController::CaptureOverlayController(Ports ports, QList<WindowInfo> windowInfos,
                                                   bool selectionOnly, QString hint,
                                                   QList<DisplaySnapshot> snapshots, Completion completion,
                                                   QObject *parent)
    : QObject(parent),
      m_ports(ports),
      m_windowInfos(std::move(windowInfos)),
      m_selectionOnly(selectionOnly),
      m_hint(std::move(hint)),
      m_snapshots(std::move(snapshots)),
      m_completion(std::move(completion))
{}

CaptureOverlayController::~CaptureOverlayController() = default;

void CaptureOverlayController::warmUp()
{
    QImage canvas(1, 1, QImage::Format_RGB32);
    const OverlayLayout layout(QSizeF(canvas.size()), canvas);
    QPainter painter(&canvas);
    OverlayDrawing::drawHint(painter, layout.hint(QStringLiteral("Aa·")));
    OverlayDrawing::drawBadge(painter, layout.sizeBadge(QRectF(0, 0, 1, 1)));
}

void CaptureOverlayController::show()
{
    const QPointF pointer = m_ports.pointer.position();
    m_ports.workspace.rememberActiveWindow();
    for (const DisplaySnapshot &snapshot : m_snapshots)
        m_windows.push_back(std::make_unique<OverlayWindow>(snapshot, *this));

    OverlayWindow *key = nullptr;
    for (const auto &window : m_windows) {
        const QRectF frame = window->overlayView().snapshot().screen.frame();
        if (!key && frame.contains(pointer)) {
            key = window.get();
            key->overlayView().pointerMoved(pointer - frame.topLeft());
        }
        window->show();
        window->raise();
    }
    if (!key && !m_windows.empty())
        key = m_windows.front().get();
    if (key)
        key->makeKey();
}

void CaptureOverlayController::finish(const Result &result)
{
    if (m_finished)
        return;
    m_finished = true;
    for (auto &window : m_windows) {
        window->overlayView().setEnabled(
            false); // events on their way must not reach a controller that is gone
        window->hide();
        window.release()->deleteLater(); // one of them may be in the middle of an event
    }
    m_windows.clear();
    m_ports.workspace.restoreActiveWindow();
    const Completion completion = std::move(m_completion);
    const Result kept = result;
    completion(kept);
}

void CaptureOverlayController::nudge(OverlayView &keyView, int dx, int dy)
{
    viewUnderPointer(keyView).nudge(dx, dy);
}

void CaptureOverlayController::toggleSelection(OverlayView &keyView)
{
    viewUnderPointer(keyView).toggleSelection();
}

void CaptureOverlayController::warpPointer(const QPointF &globalPoint)
{
    m_ports.pointer.warp(globalPoint);
}

OverlayView &CaptureOverlayController::viewUnderPointer(OverlayView &otherwise)
{
    for (const auto &window : m_windows) {
        if (window->overlayView().mouse())
            return window->overlayView();
    }
    return otherwise;
}
