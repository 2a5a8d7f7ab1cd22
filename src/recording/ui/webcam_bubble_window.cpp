#include "recording/ui/webcam_bubble_window.h"

#include "base/async.h"
#include "base/log.h"
#include "base/notice.h"
#include "platform/cameras.h"
#include "recording/recording_extras.h"
#include "recording/ui/texts.h"
#include "ui/floating.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <mutex>

// What the camera's thread and the window share. The stream is set up and ended on workers, since both take a
// moment.
struct WebcamBubbleWindow::Link {
    std::mutex mutex;
    WebcamBubbleWindow *window; // null when it has gone
    QImage news;
    std::unique_ptr<CameraStream> stream;
};

WebcamBubbleWindow::WebcamBubbleWindow(Cameras &cameras, NoticeBoard &notices, const QRectF &region)
    : m_notices(notices), m_link(std::make_shared<Link>())
{
    Floating::prepare(this);
    setGeometry(WebcamBubble::frame(region).toRect());
    m_link->window = this;
    const int side = int(WebcamBubble::kSize * devicePixelRatioF());
    const auto take = [link = m_link](const QImage &picture) {
        const std::lock_guard lock(link->mutex);
        const bool isTold = !std::exchange(link->news, picture).isNull();
        if (link->window && !isTold)
            QMetaObject::invokeMethod(link->window, &WebcamBubbleWindow::takePicture, Qt::QueuedConnection);
    };
    const auto lost = [link = m_link] {
        const std::lock_guard lock(link->mutex);
        if (link->window)
            QMetaObject::invokeMethod(link->window, &WebcamBubbleWindow::tellUnavailable,
                                      Qt::QueuedConnection);
    };
    const auto opened = runInBackground([&cameras, link = m_link, side, take, lost]() -> Result<void> {
        auto stream = cameras.open(side, take, lost);
        if (!stream)
            return std::unexpected(stream.error());
        const std::lock_guard lock(link->mutex);
        if (link->window)
            link->stream = std::move(*stream);
        return {};
    });
    whenDone(opened, this, [this](const Result<void> &result) {
        if (result)
            return;
        Log::error(QStringLiteral("Recording without the webcam"), result.error());
        tellUnavailable();
    });
}

WebcamBubbleWindow::~WebcamBubbleWindow()
{
    const std::lock_guard lock(m_link->mutex);
    m_link->window = nullptr;
    if (m_link->stream)
        runInBackground([stream = std::shared_ptr<CameraStream>(std::move(m_link->stream))] {});
}

void WebcamBubbleWindow::takePicture()
{
    {
        const std::lock_guard lock(m_link->mutex);
        m_picture = std::exchange(m_link->news, {});
    }
    if (!isVisible())
        show();
    update();
}

void WebcamBubbleWindow::tellUnavailable()
{
    hide();
    m_notices.post(RecordingUiTexts::tr("Webcam unavailable — check Camera permission in Settings"),
                   QStringLiteral("video.slash"));
}

void WebcamBubbleWindow::paintEvent(QPaintEvent *)
{
    constexpr double kHalf = WebcamBubble::kBorder / 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QPainterPath circle;
    circle.addEllipse(rect());
    painter.save();
    painter.setClipPath(circle);
    painter.translate(width(), 0); // as in a mirror
    painter.scale(-1, 1);
    painter.drawImage(rect(), m_picture);
    painter.restore();
    painter.setPen(QPen(Qt::white, WebcamBubble::kBorder));
    painter.drawEllipse(QRectF(rect()).adjusted(kHalf, kHalf, -kHalf, -kHalf));
}

void WebcamBubbleWindow::resizeEvent(QResizeEvent *)
{
    Floating::applyShape(this, width() / 2.0);
}

void WebcamBubbleWindow::mousePressEvent(QMouseEvent *event)
{
    m_grip = event->globalPosition().toPoint() - pos();
}

void WebcamBubbleWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        move(event->globalPosition().toPoint() - m_grip);
}
