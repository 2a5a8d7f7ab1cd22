#include "document/opaque.h"

QImage opaque(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image;
    const QImage source = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (source.isNull())
        return image;
    qint64 opacity = 0;
    qint64 light = 0;
    for (int y = 0; y < source.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        for (int x = 0; x < source.width(); ++x) {
            opacity += qAlpha(line[x]);
            light += qGray(line[x]);
        }
    }
    const bool isBright = 2 * light > opacity;
    QImage result(source.size(), QImage::Format_RGB32);
    for (int y = 0; y < result.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        auto *to = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const int rest = isBright ? 0 : 255 - qAlpha(from[x]);
            to[x] = qRgb(qRed(from[x]) + rest, qGreen(from[x]) + rest, qBlue(from[x]) + rest);
        }
    }
    return result;
}
