#pragma once

#include <QByteArray>
#include <QImage>

// A lossless PNG of the image, fast enough for a capture at the press of a key: the picture is cut into
// strips that are compressed on several threads and joined into one stream. Three channels when the image is
// opaque, four otherwise; no metadata. Empty for a null image.
QByteArray encodePng(const QImage &image);
