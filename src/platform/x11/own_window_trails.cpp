#include "platform/x11/own_window_trails.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMutexLocker>
#include <QScreen>
#include <QWindow>

namespace {

// Longer than a compositing manager's fading, in milliseconds.
constexpr qint64 kTrailTime = 800;

// A screen keeps its native origin; only sizes and distances inside it are scaled.
QRect nativeRect(const QWindow &window)
{
    const QRect rect = window.geometry();
    const QPoint origin = window.screen() ? window.screen()->geometry().topLeft() : QPoint();
    const double scale = window.devicePixelRatio();
    return QRectF(QPointF(origin) + QPointF(rect.topLeft() - origin) * scale, QSizeF(rect.size()) * scale)
        .toAlignedRect();
}

} // namespace

OwnWindowTrails::OwnWindowTrails()
{
    m_clock.start();
    for (const QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible())
            m_shown.insert(window, nativeRect(*window));
    }
    QCoreApplication::instance()->installEventFilter(this);
}

QRegion OwnWindowTrails::region() const
{
    QMutexLocker lock(&m_mutex);
    QRegion region;
    for (const Trail &trail : m_trails) {
        if (m_clock.elapsed() - trail.left < kTrailTime)
            region += trail.rect;
    }
    return region;
}

bool OwnWindowTrails::eventFilter(QObject *object, QEvent *event)
{
    if (!object->isWindowType())
        return false;
    const auto *window = static_cast<const QWindow *>(object);
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize:
        update(window);
        break;
    case QEvent::Hide:
    case QEvent::PlatformSurface: // made, or about to be destroyed: nothing to see before or after
        leave(window);
        break;
    default:
        break;
    }
    return false;
}

void OwnWindowTrails::update(const QWindow *window)
{
    if (window->parent() || !window->isVisible())
        return;
    QRect &shown = m_shown[window];
    const QRect now = nativeRect(*window);
    if (!shown.isEmpty() && shown != now)
        addTrail(shown);
    shown = now;
}

void OwnWindowTrails::leave(const QWindow *window)
{
    const QRect shown = m_shown.take(window);
    if (!shown.isEmpty())
        addTrail(shown);
}

void OwnWindowTrails::addTrail(const QRect &rect)
{
    QMutexLocker lock(&m_mutex);
    const qint64 now = m_clock.elapsed();
    m_trails.removeIf([now](const Trail &trail) { return now - trail.left >= kTrailTime; });
    m_trails.append({rect, now});
}
