#include "capture/screen_capturer.h"

#include "base/async.h"
#include "capture/texts.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>

namespace {

constexpr double kSmallestWindow = 40; // in points; utility windows are smaller

Result<QList<DisplaySnapshot>> collected(const QList<Screen> &screens,
                                         const QList<QFuture<Result<QImage>>> &pictures)
{
    QList<DisplaySnapshot> snapshots;
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        if (pictures[i].resultCount() == 0)
            return cancelled();
        const Result<QImage> picture = pictures[i].result();
        if (picture)
            snapshots.append({screens[i], *picture});
        else if (picture.error().kind != Error::Kind::NotFound) // a display that has just been unplugged
            return std::unexpected(picture.error());
    }
    if (snapshots.isEmpty())
        return std::unexpected(captureError(CaptureError::NoDisplays));
    return snapshots;
}

// What one display shows of a wanted region.
struct RegionPart {
    Screen screen;
    QRectF rect; // in global points
};

Result<QImage> stitched(const QList<RegionPart> &parts, double scale,
                        const QList<QFuture<Result<QImage>>> &pictures)
{
    QRectF united;
    for (const RegionPart &part : parts)
        united = united.united(part.rect);
    QImage whole((united.size() * scale).toSize(), QImage::Format_RGB32);
    if (whole.isNull())
        return fail(Error::Kind::Invalid, CaptureTexts::tr("The region is too large."));
    whole.fill(Qt::black);
    QPainter painter(&whole);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (pictures[i].resultCount() == 0)
            return cancelled();
        const Result<QImage> picture = pictures[i].result();
        if (!picture)
            return picture;
        const QPointF corner = (parts[i].rect.topLeft() - united.topLeft()) * scale;
        painter.drawImage(QRectF(corner, parts[i].rect.size() * scale), *picture, QRectF(picture->rect()));
    }
    return whole;
}

Result<QImage> windowPicture(const QFuture<Result<QImage>> &picture)
{
    if (picture.resultCount() == 0)
        return cancelled();
    Result<QImage> result = picture.result();
    if (!result && result.error().kind == Error::Kind::NotFound)
        return std::unexpected(captureError(CaptureError::WindowNotFound));
    return result;
}

} // namespace

Error captureError(CaptureError error)
{
    switch (error) {
    case CaptureError::WindowNotFound:
        return {Error::Kind::NotFound, CaptureTexts::tr("That window is no longer available."), {}};
    case CaptureError::NoDisplays:
        break;
    }
    return {Error::Kind::Unavailable,
            CaptureTexts::tr("No displays could be captured. Check Screen Recording permission."),
            {}};
}

ScreenCapturer::ScreenCapturer(const Screens &screens, ScreenPictures &pictures)
    : m_screens(screens), m_pictures(pictures)
{}

Error ScreenCapturer::noDisplays() const
{
    Error error = captureError(CaptureError::NoDisplays);
    const ScreenPictures::Capabilities able = m_pictures.capabilities();
    if (!able.displays && !able.reason.isEmpty())
        error.message = able.reason;
    return error;
}

QList<WindowInfo> ScreenCapturer::onScreenWindows() const
{
    QList<WindowInfo> windows;
    for (const ListedWindow &window : m_screens.windows()) {
        const bool isOrdinary = window.layer == 0 && window.pid != QCoreApplication::applicationPid();
        const bool isTiny =
            window.frame.width() <= kSmallestWindow || window.frame.height() <= kSmallestWindow;
        if (isOrdinary && !isTiny)
            windows.append({window.id, window.frame, window.owner, window.title});
    }
    return windows;
}

QFuture<Result<QList<DisplaySnapshot>>> ScreenCapturer::captureAllDisplays(Pointer pointer)
{
    using Snapshots = Result<QList<DisplaySnapshot>>;
    const QList<Screen> screens = m_screens.screens();
    if (screens.isEmpty())
        return readyFuture<Snapshots>(std::unexpected(noDisplays()));
    QList<QFuture<Result<QImage>>> pictures;
    for (const Screen &screen : screens)
        pictures.append(m_pictures.display(screen, pointer));
    return QtFuture::whenAll(pictures.begin(), pictures.end())
        .then([screens](const QList<QFuture<Result<QImage>>> &finished) {
            return collected(screens, finished);
        });
}

QFuture<Result<QImage>> ScreenCapturer::captureWindow(quint32 id, Pointer pointer, WindowPart part)
{
    return m_pictures.window(id, pointer, part).then([](const QFuture<Result<QImage>> &picture) {
        return windowPicture(picture);
    });
}

Result<Screen> ScreenCapturer::displayFilter(const Screen &screen) const
{
    const QList<Screen> screens = m_screens.screens();
    const auto found = std::find_if(screens.begin(), screens.end(),
                                    [&screen](const Screen &each) { return each.id == screen.id; });
    if (found == screens.end())
        return std::unexpected(captureError(CaptureError::NoDisplays));
    return *found;
}

QFuture<Result<QImage>> ScreenCapturer::captureRegion(const QRectF &rect, const Screen &display)
{
    return m_pictures.region(display, rect, Pointer::Hidden);
}

QFuture<Result<QImage>> ScreenCapturer::captureArea(const QRectF &region, Pointer pointer)
{
    const QList<Screen> screens = m_screens.screens();
    if (screens.isEmpty())
        return readyFuture<Result<QImage>>(std::unexpected(noDisplays()));
    QList<RegionPart> parts;
    double scale = 0;
    for (const Screen &screen : screens) {
        const QRectF rect = screen.frame().intersected(region);
        if (rect.isEmpty())
            continue;
        parts.append({screen, rect});
        scale = std::max(scale, screen.scale);
    }
    if (parts.isEmpty())
        return readyFuture<Result<QImage>>(
            fail(Error::Kind::NotFound, CaptureTexts::tr("No display shows anything of that region.")));
    QList<QFuture<Result<QImage>>> pictures;
    for (const RegionPart &part : std::as_const(parts)) {
        pictures.append(
            m_pictures.region(part.screen, part.rect.translated(-part.screen.frame().topLeft()), pointer));
    }
    if (parts.size() == 1)
        return pictures.first();
    return QtFuture::whenAll(pictures.begin(), pictures.end())
        .then([parts, scale](const QList<QFuture<Result<QImage>>> &finished) {
            return stitched(parts, scale, finished);
        });
}
