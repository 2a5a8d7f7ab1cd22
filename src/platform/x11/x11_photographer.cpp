#include "platform/x11/x11_photographer.h"

#include "platform/texts.h"
#include "platform/wayland_session.h"
#include "platform/x11/x11_compositor.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_image_reader.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_server_grab.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QThread>
#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace {

// How far a compositing manager's shadow may reach out of a window of ours.
constexpr int kShadowReach = 40;
// How long windows may take to repaint what the server has begun to keep of them.
constexpr int kRepaintTime = 80;
constexpr int kLongestRepaintTime = 400;
constexpr int kBetweenSamples = 20;

void paste(QImage &onto, const QImage &part, QPoint at, const QRegion &only)
{
    QPainter painter(&onto);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setClipRegion(only);
    painter.drawImage(at, part);
}

bool hasTransparency(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) != 255)
                return true;
        }
    }
    return false;
}

std::unexpected<Error> windowGone()
{
    return fail(Error::Kind::NotFound, PlatformTexts::tr("That window is no longer available."));
}

std::unexpected<Error> displayGone()
{
    return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
}

// The shape of a window, from its upper left corner inside the border; nothing for a plain rectangle.
std::optional<QRegion> shapeOf(const X11Connection &connection, quint32 window)
{
    if (!connection.has(X11Extension::Shape))
        return std::nullopt;
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_shape_query_extents_reply_t> extents(
        xcb_shape_query_extents_reply(xcb, xcb_shape_query_extents(xcb, window), nullptr));
    if (!extents || !extents->bounding_shaped)
        return std::nullopt;
    const XcbOwned<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        xcb, xcb_shape_get_rectangles(xcb, window, XCB_SHAPE_SK_BOUNDING), nullptr));
    if (!reply)
        return std::nullopt;
    QRegion shape;
    const xcb_rectangle_t *rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
        const xcb_rectangle_t &each = rectangles[i];
        shape += QRect(each.x, each.y, each.width, each.height);
    }
    return shape;
}

QImage cutOut(QImage image, const QRegion &shape)
{
    const QRegion outside = QRegion(image.rect()) - shape;
    if (outside.isEmpty())
        return image;
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect &part : outside)
        painter.fillRect(part, Qt::transparent);
    return image;
}

} // namespace

Result<std::unique_ptr<X11Photographer>> X11Photographer::open()
{
    auto connection = X11Connection::open(X11Extension::Shm | X11Extension::XFixes | X11Extension::Composite |
                                          X11Extension::Render | X11Extension::Res | X11Extension::Shape |
                                          X11Extension::RandR);
    if (!connection)
        return std::unexpected(connection.error());
    std::unique_ptr<X11Photographer> photographer(new X11Photographer);
    photographer->m_connection = std::move(*connection);
    photographer->m_reader = std::make_unique<X11ImageReader>(*photographer->m_connection);
    photographer->m_compositor = std::make_unique<X11Compositor>(*photographer->m_connection);
    photographer->m_isXwayland = isWaylandSession() || X11Desktop::isXwayland(*photographer->m_connection);
    return photographer;
}

X11Photographer::X11Photographer() = default;
X11Photographer::~X11Photographer() = default;

bool X11Photographer::isBroken() const
{
    return m_connection->isBroken();
}

void X11Photographer::prepare()
{
    const bool canKeep = m_connection->has(X11Extension::Composite);
    if (canKeep && !m_keepsContents && !X11Survey::take(*m_connection, false).isComposited)
        keepContents();
}

void X11Photographer::trim()
{
    m_reader->trim();
}

Result<QImage> X11Photographer::display(const Screen &screen, Pointer pointer, const QRegion &stale)
{
    if (X11Desktop::screenRect(*m_connection, screen.id) != screen.native)
        return displayGone();
    return area(screen.native, pointer, stale);
}

Result<QImage> X11Photographer::region(const Screen &screen, const QRect &rect, Pointer pointer,
                                       const QRegion &stale)
{
    const auto now = X11Desktop::screenRect(*m_connection, screen.id);
    if (!now)
        return displayGone();
    return area(rect.translated(now->topLeft()), pointer, stale);
}

Result<QImage> X11Photographer::area(const QRect &rect, Pointer pointer, const QRegion &stale)
{
    Result<Placed> seen = areaOnScreen(rect, stale);
    if (!seen)
        return std::unexpected(seen.error());
    QImage image = std::move(seen->image);
    if (seen->rect != rect) {
        QImage whole(rect.size(), QImage::Format_RGB32);
        if (whole.isNull())
            return fail(Error::Kind::Invalid, PlatformTexts::tr("The region is too large."));
        whole.fill(Qt::black);
        paste(whole, image, seen->rect.topLeft() - rect.topLeft(), QRect(QPoint(), rect.size()));
        image = whole;
    }
    if (pointer == Pointer::Shown)
        paintPointer(image, rect.topLeft());
    return image;
}

Result<X11Photographer::Placed> X11Photographer::placed(Result<QImage> image, const QRect &rect)
{
    return image ? Result<Placed>(Placed{std::move(*image), rect}) : std::unexpected(image.error());
}

// Of the wanted rectangle what the desktop has now.
Result<X11Photographer::Placed> X11Photographer::areaOnScreen(const QRect &wanted, const QRegion &stale)
{
    const bool canCompose = m_connection->has(X11Extension::Composite) &&
                            m_connection->has(X11Extension::Render) &&
                            m_connection->has(X11Extension::XFixes);
    QElapsedTimer sinceKept;
    QImage lastSample;
    while (true) {
        bool mustKeep = false;
        {
            const X11ServerGrab grab(m_connection->xcb());
            const X11Survey survey = X11Survey::take(*m_connection, !stale.isEmpty());
            if (survey.root.isEmpty())
                return fail(PlatformTexts::tr("The display has gone away."));
            const QRect rect = wanted.intersected(survey.root);
            if (rect.isEmpty())
                return fail(Error::Kind::Invalid, PlatformTexts::tr("The region lies outside the screen."));
            const int reach = survey.isComposited ? kShadowReach : 0;
            QRegion ours;
            for (const QRect &each : survey.own + stale)
                ours += each.adjusted(-reach, -reach, reach, reach);
            ours &= rect;
            if (ours.isEmpty() || !canCompose)
                return placed(m_reader->read(m_connection->root(), rect), rect);
            if (!survey.isComposited && !m_keepsContents) {
                mustKeep = true;
            } else {
                const QRect under = ours.boundingRect();
                const quint32 pixmap = m_compositor->paint(survey, under);
                if (pixmap == 0 && !m_keepsContents) {
                    mustKeep = true; // a window that the compositing manager leaves alone
                } else if (pixmap == 0) {
                    return fail(
                        PlatformTexts::tr("The screen could not be read without Lumenpost's own windows."));
                } else {
                    Result<QImage> part = m_reader->read(pixmap, QRect(QPoint(), under.size()));
                    m_compositor->release(pixmap);
                    if (!part)
                        return std::unexpected(part.error());
                    const bool isSettled = !sinceKept.isValid() ||
                                           sinceKept.hasExpired(kLongestRepaintTime) ||
                                           (sinceKept.hasExpired(kRepaintTime) && *part == lastSample);
                    if (isSettled) {
                        Result<QImage> whole = m_reader->read(m_connection->root(), rect);
                        if (whole)
                            paste(*whole, *part, under.topLeft() - rect.topLeft(),
                                  ours.translated(-rect.topLeft()));
                        return placed(std::move(whole), rect);
                    }
                    lastSample = *part;
                }
            }
        }
        if (mustKeep) {
            keepContents();
            sinceKept.start();
        }
        QThread::msleep(kBetweenSamples);
    }
}

// Without a compositing manager nobody keeps what windows show under other windows. From now on the server
// does; it asks the windows to paint those parts, which takes them a moment.
void X11Photographer::keepContents()
{
    xcb_composite_redirect_subwindows(m_connection->xcb(), m_connection->root(),
                                      XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(m_connection->xcb());
    m_keepsContents = true;
}

Result<QImage> X11Photographer::window(quint32 id, Pointer pointer, WindowPart part)
{
    Result<Placed> taken = windowOnce(id, part);
    if (!taken && taken.error().kind == Error::Kind::Unavailable && !m_keepsContents &&
        m_connection->has(X11Extension::Composite)) {
        keepContents();
        QElapsedTimer sinceKept;
        sinceKept.start();
        QImage lastSample;
        do {
            QThread::msleep(kBetweenSamples);
            lastSample = taken ? taken->image : QImage();
            taken = windowOnce(id, part);
        } while (taken && !sinceKept.hasExpired(kLongestRepaintTime) &&
                 !(sinceKept.hasExpired(kRepaintTime) && taken->image == lastSample));
    }
    if (!taken)
        return std::unexpected(taken.error());
    if (pointer == Pointer::Shown)
        paintPointer(taken->image, taken->rect.topLeft());
    return taken->image;
}

// Error::Kind::Unavailable when the contents aren't kept yet.
Result<X11Photographer::Placed> X11Photographer::windowOnce(quint32 id, WindowPart part)
{
    xcb_connection_t *xcb = m_connection->xcb();
    const X11ServerGrab grab(xcb);
    const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, id), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT || id == m_connection->root() ||
        X11OwnClients::ask(*m_connection).owns(id))
        return windowGone();
    const QRect frame = X11Desktop::visibleFrame(*m_connection, id, part);
    const quint32 top = X11Survey::topLevelOf(*m_connection, id);
    const XcbOwned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, top), nullptr));
    if (frame.isEmpty() || top == 0 || !geometry)
        return windowGone();
    const int border = geometry->border_width;
    const QRect outer(geometry->x, geometry->y, geometry->width + 2 * border, geometry->height + 2 * border);
    const QRect rect = frame.intersected(outer);
    if (rect.isEmpty())
        return windowGone();
    if (!m_connection->has(X11Extension::Composite)) {
        const XcbOwned<xcb_get_geometry_reply_t> root(
            xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, m_connection->root()), nullptr));
        const QRect seen = root ? rect.intersected(QRect(0, 0, root->width, root->height)) : QRect();
        return seen.isEmpty() ? windowGone() : placed(m_reader->read(m_connection->root(), seen), seen);
    }

    const quint32 pixmap = xcb_generate_id(xcb);
    const XcbOwned<xcb_generic_error_t> unkept(
        xcb_request_check(xcb, xcb_composite_name_window_pixmap_checked(xcb, top, pixmap)));
    if (unkept)
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("The window's picture is not kept by this display."));
    Result<QImage> image = m_reader->read(pixmap, rect.translated(-outer.topLeft()));
    xcb_free_pixmap(xcb, pixmap);
    if (!image)
        return std::unexpected(image.error());
    if (image->format() != QImage::Format_RGB32 && !hasTransparency(*image))
        image->reinterpretAsFormat(QImage::Format_RGB32);
    if (const auto shape = shapeOf(*m_connection, top))
        *image = cutOut(*image, shape->translated(outer.topLeft() + QPoint(border, border) - rect.topLeft()));
    return Placed{*image, rect};
}

void X11Photographer::paintPointer(QImage &image, QPoint origin) const
{
    if (!m_connection->has(X11Extension::XFixes))
        return;
    xcb_connection_t *xcb = m_connection->xcb();
    const XcbOwned<xcb_xfixes_get_cursor_image_reply_t> cursor(
        xcb_xfixes_get_cursor_image_reply(xcb, xcb_xfixes_get_cursor_image(xcb), nullptr));
    if (!cursor || cursor->width == 0 || cursor->height == 0)
        return;
    const QImage picture(
        reinterpret_cast<const uchar *>(xcb_xfixes_get_cursor_image_cursor_image(cursor.get())),
        cursor->width, cursor->height, cursor->width * 4, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.drawImage(QPoint(cursor->x - cursor->xhot, cursor->y - cursor->yhot) - origin, picture);
}
