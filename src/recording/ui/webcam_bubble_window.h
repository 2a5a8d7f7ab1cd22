#pragma once

#include <QImage>
#include <QPoint>
#include <QRectF>
#include <QWidget>
#include <memory>

class Cameras;
class NoticeBoard;

// A camera's picture, round and mirrored, which can be dragged about. Shows up with the first picture;
// without a camera a notice says so and it never does.
class WebcamBubbleWindow : public QWidget {
    Q_OBJECT
public:
    WebcamBubbleWindow(Cameras &cameras, NoticeBoard &notices, const QRectF &region);
    ~WebcamBubbleWindow() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    struct Link;

    void takePicture();
    void tellUnavailable();

    NoticeBoard &m_notices;
    std::shared_ptr<Link> m_link;
    QImage m_picture;
    QPoint m_grip;
};
