#pragma once

#include <QImage>
#include <QPoint>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <optional>

// The picture of a film on a grey ground. A click plays or pauses; dragging takes the film's file along.
class FilmCanvas : public QWidget {
    Q_OBJECT
public:
    explicit FilmCanvas(QWidget *parent = nullptr);

    void setFile(const QUrl &file) { m_file = file; }
    void setPicture(const QImage &picture);
    // In pixels: what a picture has to fill.
    QSize pixels() const;

Q_SIGNALS:
    void clicked();
    // A moment after the last of several changes.
    void pixelsChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QRectF pictureRect() const;
    void dragFile();

    QUrl m_file;
    QImage m_picture;
    std::optional<QPoint> m_press;
    QTimer m_settled;
};
