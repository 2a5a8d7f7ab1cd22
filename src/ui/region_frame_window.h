#pragma once

#include <QColor>
#include <QRectF>
#include <QWidget>

// A border around a region that is being captured. It lies outside the region, lets clicks through and never
// takes the keyboard.
class RegionFrameWindow : public QWidget {
    Q_OBJECT
public:
    // `region` in global points.
    RegionFrameWindow(const QRectF &region, const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QColor m_color;
};
