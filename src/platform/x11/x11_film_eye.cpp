#include "platform/x11/x11_film_eye.h"

#include "platform/texts.h"
#include "platform/x11/x11_compositor.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_image_reader.h"
#include "platform/x11/x11_server_grab.h"

#include <QPainter>
#include <QThread>
#include <xcb/composite.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace {

// How far a compositing manager's shadow may reach out of a window.
constexpr int kShadowReach = 40;
// How long windows may take to repaint what the server has begun to keep of them, in milliseconds.
constexpr int kRepaintTime = 80;

void paste(QImage &onto, const QImage &part, QPoint at, const QRegion &only)
{
    QPainter painter(&onto);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setClipRegion(only);
    painter.drawImage(at, part);
}

} // namespace

X11FilmEye::X11FilmEye(const X11Connection &connection, const FilmRequest &request)
    : m_connection(connection),
      m_request(request),
      m_root(0, 0, connection.screen()->width_in_pixels, connection.screen()->height_in_pixels),
      m_reader(std::make_unique<X11ImageReader>(connection)),
      m_compositor(std::make_unique<X11Compositor>(connection))
{}

X11FilmEye::~X11FilmEye() = default;

QRegion X11FilmEye::movePointer()
{
    if (m_request.pointer == Pointer::Hidden || !m_connection.has(X11Extension::XFixes))
        return {};
    xcb_connection_t *xcb = m_connection.xcb();
    const XcbOwned<xcb_xfixes_get_cursor_image_reply_t> reply(
        xcb_xfixes_get_cursor_image_reply(xcb, xcb_xfixes_get_cursor_image(xcb), nullptr));
    if (!reply)
        return {};
    const QRect rect(QPoint(reply->x - reply->xhot, reply->y - reply->yhot) - m_request.area.topLeft(),
                     QSize(reply->width, reply->height));
    if (rect == m_cursor.rect && reply->cursor_serial == m_cursor.serial)
        return {};
    QRegion changed = m_cursor.rect;
    changed += rect;
    m_cursor.rect = rect;
    if (reply->cursor_serial != m_cursor.serial || m_cursor.picture.isNull()) {
        m_cursor.serial = reply->cursor_serial;
        m_cursor.picture =
            QImage(reinterpret_cast<const uchar *>(xcb_xfixes_get_cursor_image_cursor_image(reply.get())),
                   reply->width, reply->height, reply->width * 4, QImage::Format_ARGB32_Premultiplied)
                .copy();
    }
    return changed;
}

Result<QImage> X11FilmEye::look(const QRect &rect)
{
    const QRect native = rect.translated(m_request.area.topLeft());
    const QRect inside = native.intersected(m_root);
    Result<QImage> image = inside.isEmpty() ? QImage() : readScreen(inside);
    if (!image)
        return image;
    if (inside != native) {
        QImage whole(rect.size(), QImage::Format_RGB32);
        if (whole.isNull())
            return fail(PlatformTexts::tr("There is not enough memory for a film of this size."));
        whole.fill(Qt::black);
        if (!image->isNull())
            paste(whole, *image, inside.topLeft() - native.topLeft(), QRect(QPoint(), rect.size()));
        image = whole;
    }
    if (!m_cursor.picture.isNull() && m_cursor.rect.intersects(rect)) {
        QPainter painter(&*image);
        painter.drawImage(m_cursor.rect.topLeft() - rect.topLeft(), m_cursor.picture);
    }
    return image;
}

Result<QImage> X11FilmEye::readScreen(const QRect &native)
{
    if (m_request.keptOut.isEmpty())
        return m_reader->read(m_connection.root(), native);
    return readWithoutKeptOut(native);
}

Result<QImage> X11FilmEye::readWithoutKeptOut(const QRect &native)
{
    if (!m_keepsContents)
        keepContents();
    const X11ServerGrab grab(m_connection.xcb());
    X11Survey survey = X11Survey::take(m_connection, true);
    if (survey.root.isEmpty())
        return fail(PlatformTexts::tr("The display has gone away."));
    const QRect target = native.intersected(survey.root);
    if (target != native) // the screen has just become smaller
        return fail(Error::Kind::Cancelled, QString());
    if (!markKeptOut(survey))
        return m_reader->read(m_connection.root(), native);
    const int reach = survey.isComposited ? kShadowReach : 0;
    QRegion hidden;
    for (const QRect &each : survey.own)
        hidden += each.adjusted(-reach, -reach, reach, reach);
    hidden &= native;
    if (hidden.isEmpty())
        return m_reader->read(m_connection.root(), native);
    const QRect under = hidden.boundingRect();
    const quint32 pixmap = m_compositor->paint(survey, under);
    if (pixmap == 0) // a window with its contents kept by nobody: better seen than no film
        return m_reader->read(m_connection.root(), native);
    const Result<QImage> part = m_reader->read(pixmap, QRect(QPoint(), under.size()));
    m_compositor->release(pixmap);
    if (!part)
        return part;
    Result<QImage> whole = m_reader->read(m_connection.root(), native);
    if (whole)
        paste(*whole, *part, under.topLeft() - native.topLeft(), hidden.translated(-native.topLeft()));
    return whole;
}

// Of all windows of this program only those that are to be kept out count as such. Whether one is shown.
bool X11FilmEye::markKeptOut(X11Survey &survey) const
{
    QList<quint32> topLevels;
    for (const quint32 window : m_request.keptOut)
        topLevels.append(X11Survey::topLevelOf(m_connection, window));
    survey.own = QRegion();
    for (X11Survey::TopLevel &window : survey.windows) {
        window.isOwn = topLevels.contains(window.id);
        if (window.isOwn)
            survey.own += window.outer;
    }
    return !survey.own.isEmpty();
}

// Without a compositing manager nobody keeps what windows show under other windows. From now on the server
// does; it asks the windows to paint those parts.
void X11FilmEye::keepContents()
{
    m_keepsContents = true;
    if (!m_connection.has(X11Extension::Composite) || X11Survey::take(m_connection, false).isComposited)
        return;
    xcb_composite_redirect_subwindows(m_connection.xcb(), m_connection.root(),
                                      XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(m_connection.xcb());
    QThread::msleep(kRepaintTime);
}
