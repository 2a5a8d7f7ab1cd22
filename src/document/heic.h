#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QImage>

// HEIC pictures. The codec is opened at the first use; Error::Kind::Unavailable when it is missing.
namespace Heic {

bool isHeic(const QByteArray &head);
// Quality is 0 to 1.
Result<QByteArray> encode(const QImage &image, double quality);
// RGB32 or ARGB32_Premultiplied, orientation applied.
Result<QImage> decode(const QByteArray &bytes);
Result<QSize> pixelSize(const QByteArray &bytes);

} // namespace Heic
