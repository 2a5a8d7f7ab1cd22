#include "ui/region_frame_window.h"

#include "ui/floating.h"

#include <QPainter>
#include <QPainterPath>

namespace {
constexpr int borderWidth = 3;
constexpr double cornerRadius = 4;
} // namespace

RegionFrameWindow::RegionFrameWindow(const QRectF &region, const QColor &color) : m_color(color)
{
    Floating::prepare(this);
    setWindowFlag(Qt::WindowTransparentForInput);
    setGeometry(region.toAlignedRect().adjusted(-borderWidth, -borderWidth, borderWidth, borderWidth));
}

void RegionFrameWindow::resizeEvent(QResizeEvent *)
{
    // Nothing of the window covers the region, so that it stays clear without a compositor too.
    setMask(QRegion(rect()) - rect().adjusted(borderWidth, borderWidth, -borderWidth, -borderWidth));
}

void RegionFrameWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    QPainterPath ring;
    ring.addRoundedRect(rect(), cornerRadius, cornerRadius);
    ring.addRect(rect().adjusted(borderWidth, borderWidth, -borderWidth, -borderWidth));
    painter.drawPath(ring);
}
