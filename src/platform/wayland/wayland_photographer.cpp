#include "platform/wayland/wayland_photographer.h"

#include "platform/texts.h"
#include "platform/wayland/wayland_camera.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"
#include "platform/wayland/wayland_windows.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>

namespace {

std::unexpected<Error> screenIsGone()
{
    return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
}

} // namespace

WaylandPhotographer::WaylandPhotographer(std::shared_ptr<WaylandWindows> windows)
    : m_windows(std::move(windows))
{}

WaylandPhotographer::~WaylandPhotographer() = default;

Result<std::unique_ptr<WaylandPhotographer>>
WaylandPhotographer::open(std::shared_ptr<WaylandWindows> windows)
{
    auto connection = WaylandConnection::open();
    if (!connection)
        return std::unexpected(connection.error());
    std::unique_ptr<WaylandPhotographer> photographer(new WaylandPhotographer(std::move(windows)));
    photographer->m_connection = std::move(*connection);
    photographer->m_outputs = std::make_unique<WaylandOutputs>(*photographer->m_connection);
    auto camera = waylandCamera(*photographer->m_connection, *photographer->m_outputs);
    if (!camera)
        return std::unexpected(camera.error());
    photographer->m_camera = std::move(*camera);
    return photographer;
}

bool WaylandPhotographer::isBroken() const
{
    return m_connection->isBroken();
}

void WaylandPhotographer::trim()
{
    m_camera->trim();
}

Result<Screen> WaylandPhotographer::current(const Screen &screen)
{
    if (!m_connection->roundtrip() || !m_connection->roundtrip())
        return noCompositor();
    for (const Screen &each : m_outputs->screens()) {
        if (each.id == screen.id)
            return each;
    }
    return screenIsGone();
}

Result<QImage> WaylandPhotographer::shoot(const Screen &screen, Pointer pointer)
{
    return m_camera->take(screen, pointer);
}

QList<quint32> WaylandPhotographer::ownWindowsIn(const QRectF &area) const
{
    QList<quint32> own;
    if (!m_windows || !m_windows->canHide() || !QCoreApplication::instance())
        return own;
    // A program without the toolkit's windows has none to hide.
    if (!QCoreApplication::instance()->inherits("QGuiApplication"))
        return own;
    for (const WaylandWindow &window : m_windows->list()) {
        if (window.listed.pid == QCoreApplication::applicationPid() && window.listed.frame.intersects(area))
            own.append(window.listed.id);
    }
    return own;
}

Result<QImage> WaylandPhotographer::display(const Screen &screen, Pointer pointer)
{
    const auto now = current(screen);
    if (!now)
        return std::unexpected(now.error());
    if (now->native.size() != screen.native.size())
        return screenIsGone();
    const QList<quint32> own = ownWindowsIn(now->frame());
    const std::unique_ptr<WaylandVeil> veil = own.isEmpty() ? nullptr : m_windows->hide(own);
    const auto picture = shoot(*now, pointer);
    return picture ? Result<QImage>(picture->convertToFormat(QImage::Format_RGB32).copy()) : picture;
}

Result<QImage> WaylandPhotographer::region(const Screen &screen, const QRect &rect, Pointer pointer)
{
    const auto now = current(screen);
    if (!now)
        return std::unexpected(now.error());
    const QRectF points(now->origin() + QPointF(rect.topLeft()) / now->scale,
                        QSizeF(rect.size()) / now->scale);
    const QList<quint32> own = ownWindowsIn(points);
    const std::unique_ptr<WaylandVeil> veil = own.isEmpty() ? nullptr : m_windows->hide(own);
    const auto picture = shoot(*now, pointer);
    if (!picture)
        return picture;
    // The copy is black where there is no picture.
    return picture->copy(rect).convertToFormat(QImage::Format_RGB32);
}

// `area` in global points, at the sharpest of the scales of the screens that show it.
Result<QImage> WaylandPhotographer::shootArea(const QRect &area, Pointer pointer)
{
    const QList<Screen> screens = m_outputs->screens();
    double scale = 0;
    for (const Screen &screen : screens) {
        if (screen.frame().intersects(area))
            scale = std::max(scale, screen.scale);
    }
    QImage whole((QSizeF(area.size()) * scale).toSize(), QImage::Format_RGB32);
    if (whole.isNull())
        return screenIsGone();
    whole.fill(Qt::black);
    QPainter painter(&whole);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const Screen &screen : screens) {
        if (!screen.frame().intersects(area))
            continue;
        const auto picture = shoot(screen, pointer);
        if (!picture)
            return picture;
        const QPointF at = (screen.origin() - QPointF(area.topLeft())) * scale;
        if (screen.scale == scale)
            painter.drawImage(at.toPoint(), *picture);
        else
            painter.drawImage(QRectF(at, screen.frame().size() * scale), *picture, QRectF(picture->rect()));
    }
    return whole;
}

Result<QImage> WaylandPhotographer::window(quint32 id, Pointer pointer, WindowPart part)
{
    if (!m_windows) {
        return fail(
            Error::Kind::Unavailable,
            PlatformTexts::tr("This desktop tells programs of no windows: capture a region instead."));
    }
    if (!m_connection->roundtrip())
        return noCompositor();
    const QList<WaylandWindow> windows = m_windows->list();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [id](const WaylandWindow &window) { return window.listed.id == id; });
    if (found == windows.end())
        return fail(Error::Kind::NotFound, PlatformTexts::tr("That window is no longer available."));
    if (auto alone = m_windows->picture(id, pointer, part))
        return *std::move(alone);
    QList<quint32> above;
    for (auto each = windows.begin(); each != found; ++each) {
        if (each->listed.frame.intersects(found->listed.frame))
            above.append(each->listed.id);
    }
    const std::unique_ptr<WaylandVeil> veil = above.isEmpty() ? nullptr : m_windows->hide(above);
    return shootArea(part == WindowPart::Framed ? found->listed.frame.toAlignedRect() : found->content,
                     pointer);
}
