#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QWidget>
#include <memory>

struct Screen;

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

    // The part of the screen that bars of the desktop leave free, in global points.
    static QRectF usableFrame(const Screen &screen);

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
