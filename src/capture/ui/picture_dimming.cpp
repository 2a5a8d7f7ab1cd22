#include "capture/ui/picture_dimming.h"

#include <QPainter>

namespace {

// One step of eight bits is what a screen can show, so black at 0.38 leaves 158 of 255.
constexpr quint16 kLeft = 255 - 97;
constexpr int kCachedPixels = 1 << 16; // 256 KB

void dimRow(const uchar *from, uchar *to, int pixels)
{
    for (int i = 0; i < pixels * 4; ++i) {
        const auto scaled = quint16(from[i] * kLeft + 127);
        to[i] = uchar(quint16(scaled + 1 + (scaled >> 8)) >> 8); // divided by 255, exactly
    }
    auto *colors = reinterpret_cast<quint32 *>(to);
    for (int i = 0; i < pixels; ++i)
        colors[i] |= 0xff000000;
}

} // namespace

void drawDimmed(QPainter &painter, const QImage &picture, const QRect &part)
{
    Q_ASSERT(picture.format() == QImage::Format_RGB32);
    const QRect visible = part & picture.rect();
    if (visible.isEmpty())
        return;
    const int rows = std::clamp(kCachedPixels / visible.width(), 1, visible.height());
    QImage strip(visible.width(), rows, QImage::Format_RGB32);
    for (int top = visible.top(); top <= visible.bottom(); top += rows) {
        const int count = std::min(rows, visible.bottom() + 1 - top);
        for (int row = 0; row < count; ++row)
            dimRow(picture.constScanLine(top + row) + qsizetype(visible.left()) * 4, strip.scanLine(row),
                   visible.width());
        painter.drawImage(QPoint(visible.left(), top), strip, QRect(0, 0, visible.width(), count));
    }
}
