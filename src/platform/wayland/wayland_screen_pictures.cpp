#include "platform/wayland/wayland_screen_pictures.h"

#include "base/async.h"
#include "platform/texts.h"
#include "platform/wayland/wayland_photographer.h"
#include "platform/wayland/wayland_windows.h"

#include <QtConcurrentRun>
#include <cmath>

namespace {

// Sizes are truncated; this much of a pixel is the error of a computed scale, not a missing part.
constexpr double kPixelNoise = 1e-6;
constexpr int kLongestSide = 32767;

} // namespace

WaylandScreenPictures::WaylandScreenPictures(std::shared_ptr<WaylandWindows> windows)
    : m_windows(std::move(windows))
{
    m_worker.setMaxThreadCount(1);
}

WaylandScreenPictures::~WaylandScreenPictures()
{
    m_worker.clear();
    m_worker.waitForDone();
}

ScreenPictures::Capabilities WaylandScreenPictures::capabilities() const
{
    Capabilities able;
    if (const auto probe = WaylandPhotographer::open(m_windows); !probe) {
        able.reason = probe.error().message;
        return able;
    }
    able.displays = true;
    able.windows = m_windows != nullptr;
    able.excludesOwn = m_windows && m_windows->canHide();
    if (!able.excludesOwn) {
        able.reason = PlatformTexts::tr(
            "This desktop tells programs of no windows: regions and displays can be captured, and "
            "Lumenpost's own windows are in their pictures.");
    }
    return able;
}

Result<WaylandPhotographer *> WaylandScreenPictures::photographer()
{
    if (m_photographer && m_photographer->isBroken())
        m_photographer.reset();
    if (!m_photographer) {
        auto opened = WaylandPhotographer::open(m_windows);
        if (!opened)
            return std::unexpected(opened.error());
        m_photographer = std::move(*opened);
    }
    return m_photographer.get();
}

template <typename Work>
QFuture<Result<QImage>> WaylandScreenPictures::take(Work work)
{
    return QtConcurrent::run(&m_worker, [this, work = std::move(work)]() -> Result<QImage> {
        const auto open = photographer();
        if (!open)
            return std::unexpected(open.error());
        Result<QImage> image = work(**open);
        (*open)->trim(); // a picture's worth of memory isn't kept for the next one
        return image;
    });
}

QFuture<Result<QImage>> WaylandScreenPictures::display(const Screen &screen, Pointer pointer)
{
    return take([screen, pointer](WaylandPhotographer &photographer) {
        return photographer.display(screen, pointer);
    });
}

QFuture<Result<QImage>> WaylandScreenPictures::region(const Screen &screen, const QRectF &region,
                                                      Pointer pointer)
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
    return take([screen, rect, pointer](WaylandPhotographer &photographer) {
        return photographer.region(screen, rect, pointer);
    });
}

QFuture<Result<QImage>> WaylandScreenPictures::window(quint32 id, Pointer pointer, WindowPart part)
{
    return take([id, pointer, part](WaylandPhotographer &photographer) {
        return photographer.window(id, pointer, part);
    });
}
