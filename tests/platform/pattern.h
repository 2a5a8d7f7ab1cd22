#pragma once

#include <QImage>

// A picture in which every pixel differs from its neighbours and tells its place, so that a shift, a stale or
// a foreign pixel shows. `seed` makes pictures of different windows differ.
inline QImage pattern(QSize size, int seed)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = qRgb((x * 7 + seed * 50) % 200, (y * 5 + seed * 90) % 200, (x + y + seed * 20) % 200);
    }
    return image;
}
