#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QWidget>
#include <memory>

// What a floating control panel of a scrolling capture, a recording or a steps session shows.
class HUDState : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    const QString &message() const { return m_message; }
    int frames() const { return m_frames; }
    double elapsed() const { return m_elapsed; } // seconds
    bool drawing() const { return m_drawing; }
    void setMessage(const QString &message);
    void setFrames(int frames);
    void setElapsed(double elapsed);
    void setDrawing(bool drawing);

Q_SIGNALS:
    void changed();

private:
    QString m_message;
    int m_frames = 0;
    double m_elapsed = 0;
    bool m_drawing = false;
};

// Where a panel of `size` goes for the region `rect` on a screen whose usable part is `visible`, all in
// global points with y down: 12 under the region; else 12 above it, but at least 8 inside the usable part's
// top; else, for a region that fills the screen, 40 above the usable part's bottom. Centred on the region, 8
// inside left and right.
QPointF hudPosition(const QRectF &rect, const QRectF &visible, const QSizeF &size);

// A small floating panel of dark material that never takes the keyboard. It can be dragged by its background.
class HUDPanel : public QWidget {
    Q_OBJECT
public:
    // Takes over `content`, which is laid out to its fitting size. Not shown yet. `rect` is in global points.
    static std::unique_ptr<HUDPanel> make(const QRectF &rect, const QRectF &visible, QWidget *content);
    ~HUDPanel() override;

    // Places the panel anew, after the region or the content changed.
    void placeNear(const QRectF &rect, const QRectF &visible);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    explicit HUDPanel(QWidget *content);

    QPoint m_grip;
};
