#pragma once

#include "recording/video_editor_model.h"

#include <QImage>
#include <QList>
#include <QTimer>
#include <QWidget>

class TrimHandle;

// The line of time of a film: small pictures of it, where it stands, and the part that is used. While the
// part is chosen it has two handles, which are dragged or moved with the keys.
class FilmTimeline : public QWidget {
    Q_OBJECT
public:
    explicit FilmTimeline(VideoEditorModel &model, QWidget *parent = nullptr);

    void setPictures(const QList<QImage> &pictures);
    void setPosition(double seconds);
    // How the pictures are best made: their number for a film of those proportions, and their size in pixels.
    int pictureCount(QSize film) const;
    QSize pictureSize() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void seeked(double seconds);
    // So many pictures forward, or back.
    void stepped(int pictures);
    // A handle was moved to that time, which is to be looked at.
    void edgeMoved(VideoEditorModel::Edge edge, double seconds);
    void edgeStepped(VideoEditorModel::Edge edge, int pictures);
    // The pictures no longer fit, a moment after the last change of the size.
    void picturesWanted();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRectF strip() const;
    double timeAt(double x) const;
    double placeOf(double seconds) const;
    void follow();
    void paintPictures(QPainter &painter) const;

    VideoEditorModel &m_model;
    QList<QImage> m_pictures;
    double m_position = 0;
    TrimHandle *m_from;
    TrimHandle *m_to;
    QTimer m_settled;
};
