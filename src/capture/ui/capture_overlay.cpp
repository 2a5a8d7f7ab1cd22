#include "capture/ui/capture_overlay.h"

#include "capture/ui/keyboard_hold.h"
#include "capture/ui/overlay_marks.h"
#include "capture/ui/overlay_view.h"
#include "capture/ui/overlay_window.h"
#include "platform/pointer_control.h"
#include "platform/workspace.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

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

CaptureOverlayController::~CaptureOverlayController()
{
    m_finished = true;
    if (!m_windows.empty())
        close();
}

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
    // Where it isn't known, the windows are told of it as they come up.
    std::optional<QPointF> pointer;
    if (m_ports.pointer.isPositionKnown())
        pointer = m_ports.pointer.position();
    m_ports.workspace.rememberActiveWindow();
    for (const DisplaySnapshot &snapshot : m_snapshots)
        m_windows.push_back(std::make_unique<OverlayWindow>(snapshot, *this));

    OverlayWindow *key = nullptr;
    for (const auto &window : m_windows) {
        const Screen &screen = window->overlayView().snapshot().screen;
        if (!key && pointer && screen.holds(*pointer)) {
            key = window.get();
            key->overlayView().pointerMoved(*pointer - screen.frame().topLeft());
        }
        window->cover();
    }
    if (!key && !m_windows.empty())
        key = m_windows.front().get();
    if (key)
        m_keyboard = std::make_unique<KeyboardHold>(key->overlayView());
    watchScreens();
}

// The pictures are of the screens as they were: when these change, nothing of them can be picked any more.
void CaptureOverlayController::watchScreens()
{
    const auto cancel = [this] { finish(Cancelled{}); };
    connect(qGuiApp, &QGuiApplication::screenAdded, this, cancel);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, cancel);
    for (const QScreen *screen : QGuiApplication::screens())
        connect(screen, &QScreen::geometryChanged, this, cancel);
}

void CaptureOverlayController::close()
{
    m_keyboard.reset();
    for (auto &window : m_windows) {
        window->overlayView().setEnabled(
            false); // events on their way must not reach a controller that is gone
        window->hide();
        window.release()->deleteLater(); // one of them may be in the middle of an event
    }
    m_windows.clear();
    m_ports.workspace.restoreActiveWindow();
}

void CaptureOverlayController::finish(const Outcome &outcome)
{
    if (m_finished)
        return;
    m_finished = true;
    disconnect(qGuiApp, nullptr, this, nullptr);
    close();
    const Completion completion = std::move(m_completion);
    const Outcome kept = outcome;
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

void CaptureOverlayController::endMove(OverlayView &keyView)
{
    viewUnderPointer(keyView).endMove();
}

void CaptureOverlayController::accept(OverlayView &keyView)
{
    for (const auto &window : m_windows) {
        if (window->overlayView().selection())
            return window->overlayView().accept();
    }
    viewUnderPointer(keyView).accept();
}

OverlayView &CaptureOverlayController::viewUnderPointer(OverlayView &otherwise)
{
    // A drag goes on when the pointer has left its display.
    for (const auto &window : m_windows) {
        if (window->overlayView().dragStart())
            return window->overlayView();
    }
    if (!m_ports.pointer.isPositionKnown()) {
        for (const auto &window : m_windows) {
            if (window->overlayView().mouse())
                return window->overlayView();
        }
        return otherwise;
    }
    const QPointF pointer = m_ports.pointer.position();
    for (const auto &window : m_windows) {
        if (window->overlayView().snapshot().screen.holds(pointer))
            return window->overlayView();
    }
    return otherwise;
}
