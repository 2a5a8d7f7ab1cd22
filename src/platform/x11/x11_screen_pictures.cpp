#include "platform/x11/x11_screen_pictures.h"

#include "base/async.h"
#include "platform/texts.h"
#include "platform/wayland_session.h"
#include "platform/x11/own_window_trails.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_photographer.h"

#include <QGuiApplication>
#include <QThread>
#include <QTimer>
#include <QtConcurrentRun>
#include <algorithm>
#include <cmath>

namespace {

// Sizes are truncated; this much of a pixel is the error of a computed scale, not a missing part.
constexpr double kPixelNoise = 1e-6;
constexpr int kIdleTime = 5000;     // milliseconds without a picture, after which its memory isn't kept
constexpr int kLongestSide = 32767; // the protocol counts in 16 bits

bool isOneColour(const QImage &image)
{
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [first](QRgb pixel) { return pixel != first; }))
            return false;
    }
    return true;
}

} // namespace

X11ScreenPictures::X11ScreenPictures()
{
    m_worker.setMaxThreadCount(1);
    watchOwnWindows();
}

X11ScreenPictures::~X11ScreenPictures()
{
    m_worker.clear();
    m_worker.waitForDone();
}

ScreenPictures::Capabilities X11ScreenPictures::capabilities() const
{
    const auto probe =
        X11Connection::open(X11Extension::Composite | X11Extension::Render | X11Extension::XFixes);
    if (!probe)
        return {.displays = false, .windows = false, .excludesOwn = false, .reason = probe.error().message};
    Capabilities able{.displays = true,
                      .windows = (*probe)->has(X11Extension::Composite),
                      .excludesOwn = false,
                      .reason = {}};
    able.excludesOwn =
        able.windows && (*probe)->has(X11Extension::Render) && (*probe)->has(X11Extension::XFixes);
    if (!able.excludesOwn) {
        able.reason = PlatformTexts::tr(
            "This X server lacks an extension (Composite, Render or XFixes): what lies over a "
            "window, Lumenpost's own windows too, is in its picture.");
    }
    return able;
}

// A program without the toolkit's application object has no windows.
void X11ScreenPictures::watchOwnWindows()
{
    auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!m_trails && application && QThread::currentThread() == application->thread()) {
        m_trails = std::make_unique<OwnWindowTrails>();
        m_idle = std::make_unique<QTimer>();
        m_idle->setSingleShot(true);
        m_idle->setInterval(kIdleTime);
        QObject::connect(m_idle.get(), &QTimer::timeout, m_idle.get(), [this] {
            m_worker.start([this] {
                if (m_photographer)
                    m_photographer->trim();
            });
        });
    }
}

Result<X11Photographer *> X11ScreenPictures::photographer()
{
    if (m_photographer && m_photographer->isBroken())
        m_photographer.reset();
    if (!m_photographer) {
        auto opened = X11Photographer::open();
        if (!opened)
            return std::unexpected(opened.error());
        m_photographer = std::move(*opened);
    }
    return m_photographer.get();
}

template <typename Work>
QFuture<Result<QImage>> X11ScreenPictures::take(Work work)
{
    return QtConcurrent::run(&m_worker, [this, work = std::move(work)]() -> Result<QImage> {
        const auto open = photographer();
        if (!open)
            return std::unexpected(open.error());
        Result<QImage> image = work(**open);
        if (!image && m_photographer->isBroken())
            return fail(PlatformTexts::tr("The display has gone away."), image.error().detail);
        // What Wayland windows show doesn't reach the X server beside them: the picture is black.
        if (image && (*open)->isXwayland() && isOneColour(*image))
            return fail(Error::Kind::Unavailable, whyNoWaylandScreen());
        return image;
    });
}

template <typename Work>
QFuture<Result<QImage>> X11ScreenPictures::takeWithoutOurs(Work work)
{
    watchOwnWindows();
    if (m_idle && m_idle->thread() == QThread::currentThread())
        m_idle->start();
    const OwnWindowTrails *trails = m_trails.get();
    return take([work = std::move(work), trails](X11Photographer &photographer) {
        return work(photographer, trails ? trails->region() : QRegion());
    });
}

QFuture<Result<QImage>> X11ScreenPictures::display(const Screen &screen, Pointer pointer)
{
    return takeWithoutOurs([screen, pointer](X11Photographer &photographer, const QRegion &stale) {
        return photographer.display(screen, pointer, stale);
    });
}

QFuture<Result<QImage>> X11ScreenPictures::region(const Screen &screen, const QRectF &region, Pointer pointer)
{
    const QRectF scaled(region.topLeft() * screen.scale, region.size() * screen.scale);
    const double width = std::floor(scaled.width() + kPixelNoise);
    const double height = std::floor(scaled.height() + kPixelNoise);
    const bool isSound = width >= 1 && height >= 1 && width <= kLongestSide && height <= kLongestSide &&
                         std::abs(scaled.x()) <= kLongestSide && std::abs(scaled.y()) <= kLongestSide;
    if (!isSound) {
        return readyFuture<Result<QImage>>(
            fail(Error::Kind::Invalid, PlatformTexts::tr("The region is empty or too large.")));
    }
    const QRect rect(scaled.topLeft().toPoint(), QSize(int(width), int(height)));
    return takeWithoutOurs([screen, rect, pointer](X11Photographer &photographer, const QRegion &stale) {
        return photographer.region(screen, rect, pointer, stale);
    });
}

QFuture<Result<QImage>> X11ScreenPictures::window(quint32 id, Pointer pointer, WindowPart part)
{
    return take([id, pointer, part](X11Photographer &photographer) {
        return photographer.window(id, pointer, part);
    });
}
