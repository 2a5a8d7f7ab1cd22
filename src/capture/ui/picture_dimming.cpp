#include "capture/ui/picture_dimming.h"

namespace {

// One step of eight bits is what a screen can show, so black at 0.38 leaves 158 of 255.
constexpr quint32 left = 255 - 97;

void dimRow(const uchar *from, uchar *to, int pixels)
{
    for (int i = 0; i < pixels * 4; ++i)
        to[i] = uchar((quint32(from[i]) * left + 127) / 255);
    auto *colors = reinterpret_cast<quint32 *>(to);
    for (int i = 0; i < pixels; ++i)
        colors[i] |= 0xff000000;
}

} // namespace

QImage dimmed(const QImage &picture)
{
    Q_ASSERT(picture.isNull() || picture.format() == QImage::Format_RGB32);
    QImage dark(picture.size(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        dimRow(picture.constScanLine(y), dark.scanLine(y), picture.width());
    return dark;
}
