#include "document/cutout.h"

#include "document/soft_shadow.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace {

// A zigzag along the seam at `position`, `length` pixels long.
QPainterPath tornEdge(int position, int length, bool columns)
{
    constexpr int kStep = 14;
    constexpr int kAmplitude = 5;
    const auto at = [&](int along, int across) {
        return columns ? QPointF(position + across, along) : QPointF(along, position + across);
    };
    QPainterPath path(at(0, 0));
    bool before = true;
    for (int t = 0; t <= length;) {
        t += kStep;
        path.lineTo(at(std::min(t, length), before ? -kAmplitude : kAmplitude));
        before = !before;
    }
    return path;
}

void drawTornEdge(QPainter &painter, const QPainterPath &path)
{
    const QPen paper(Qt::white, 4, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    const SoftShadow shadow{4, QColor::fromRgbF(0, 0, 0, 0.45f), {}};
    painter.setRenderHint(QPainter::Antialiasing);
    shadow.paint(painter, path.boundingRect().adjusted(-8, -8, 8, 8),
                 [&](QPainter &mask) { mask.strokePath(path, paper); });
    painter.strokePath(path, paper);
    painter.strokePath(
        path, QPen(QColor::fromRgbF(0.75f, 0.75f, 0.75f), 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

} // namespace

std::optional<Cutout> Cutout::make(const QImage &base, const QRectF &rect, bool columns)
{
    const int length = columns ? base.width() : base.height();
    const int across = columns ? base.height() : base.width();
    const double a = columns ? rect.left() : rect.top();
    const double b = columns ? rect.right() : rect.bottom();
    if (!std::isfinite(a) || !std::isfinite(b))
        return {};
    const double lo = std::min(std::round(a), double(length));
    const double hi = std::min(std::round(b), double(length));
    if (hi < 0)
        return {};
    const int from = static_cast<int>(std::max(lo, 0.0));
    const int to = static_cast<int>(hi);
    const int removed = to - from;
    if (removed < 4 || length - removed < 8)
        return {};

    const QSize size = columns ? QSize(length - removed, across) : QSize(across, length - removed);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const auto part = [&](int start, int end) {
        return columns ? QRect(start, 0, end - start, across) : QRect(0, start, across, end - start);
    };
    if (lo > 0)
        painter.drawImage(QPoint(0, 0), base, part(0, from));
    if (length > to)
        painter.drawImage(part(from, from).topLeft(), base, part(to, length));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (lo > 0 && from < length - removed)
        drawTornEdge(painter, tornEdge(from, across, columns));
    painter.end();
    return Cutout{image, from, to};
}
