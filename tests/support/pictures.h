#pragma once

#include <QColor>
#include <QImage>

// A picture of one colour.
inline QImage filled(const QSize &size, const QColor &color = Qt::white,
                     QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(color);
    return image;
}
