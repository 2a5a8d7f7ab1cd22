#include "ui/region_frame_window.h"

#include "ui/floating.h"

#include <QPainter>
#include <QPainterPath>

namespace {
constexpr int kBorderWidth = 3;
constexpr double kCornerRadius = 4;
} // namespace

RegionFrameWindow::RegionFrameWindow(const QRectF &region, const QColor &color) : m_color(color)
{
    Floating::prepare(this);
    setWindowFlag(Qt::WindowTransparentForInput);
    setGeometry(region.toAlignedRect().adjusted(-kBorderWidth, -kBorderWidth, kBorderWidth, kBorderWidth));
}

void RegionFrameWindow::resizeEvent(QResizeEvent *)
{
    // Nothing of the window covers the region, so that it stays clear without a compositor too.
    setMask(QRegion(rect()) - rect().adjusted(kBorderWidth, kBorderWidth, -kBorderWidth, -kBorderWidth));
}

void RegionFrameWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    QPainterPath ring;
    ring.addRoundedRect(rect(), kCornerRadius, kCornerRadius);
    ring.addRect(rect().adjusted(kBorderWidth, kBorderWidth, -kBorderWidth, -kBorderWidth));
    painter.drawPath(ring);
}
