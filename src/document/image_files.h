#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <optional>

// Image files: encoding by extension, reading, a JPEG of bounded size, the pixel size, thumbnails and their
// disk cache. Stateless; callable from any thread.
namespace ImageFiles {

enum class Type { Png, Jpeg, Heic, Tiff };

// By the lower-cased extension: "jpg" and "jpeg", "heic", and PNG for anything else.
Type type(const QString &path);

// Writes the image in the type of the path, JPEG and HEIC at quality 90 of 100, beside the target and
// renamed. No metadata goes into the file.
Result<void> write(const QImage &image, const QString &path);
// The encoded bytes; empty when the encoder fails. Quality is 0 to 1, for JPEG and HEIC.
QByteArray encode(const QImage &image, Type type, double quality = 0.9);

// Decodes the first picture of a file, orientation applied, as RGB32 or ARGB32_Premultiplied. Truncated,
// broken and foreign files fail with a sentence; so do pictures that would not fit in memory.
Result<QImage> read(const QString &path);
// The same for bytes that come from elsewhere.
Result<QImage> decode(const QByteArray &bytes);

// Writes `<temporary directory>/<name>.png`.
std::optional<QString> temporaryPNG(const QImage &image, const QString &name);

// A JPEG whose longer edge is at most maxEdge pixels; never enlarged. Quality is 0 to 1.
QByteArray jpegData(const QImage &image, double maxEdge, double quality);

// Pixel size of image 0 without decoding it.
std::optional<QSize> pixelSize(const QString &path);
std::optional<QSize> pixelSizeOf(const QByteArray &bytes);

// Freshly decoded, orientation applied, longest edge at most maxPixels.
std::optional<QImage> thumbnail(const QString &path, int maxPixels);
// Where the cached thumbnail of the file's present state lies: beside it, in ".lumenpost/thumbs/".
QString cacheURL(const QString &path, int maxPixels);
// From the cache, or made and stored there; sizes share buckets of 256 pixels.
std::optional<QImage> cachedThumbnail(const QString &path, int maxPixels);

} // namespace ImageFiles
