#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <functional>
#include <optional>

// Image files: encoding by extension, reading, a JPEG of bounded size, the pixel size, thumbnails and their
// disk cache. Stateless; callable from any thread.
namespace ImageFiles {

enum class Type { Png, Jpeg, Heic, Tiff };

// By the lower-cased extension: "jpg" and "jpeg", "heic", and PNG for anything else.
Type type(const QString &path);
// Whether the extension is one of a type, or none, so that the file is what its name says.
bool isWritable(const QString &path);
// In pixels: what the files of a type can hold.
int longestSide(Type type);
// The path itself, or with "png" for its extension when the file could not hold a picture of that size.
QString pathThatHolds(const QString &path, QSize size);

// Writes the image in the type of the path, JPEG and HEIC at quality 90 of 100, beside the target and
// renamed. No metadata goes into the file. Refuses a path of another extension, and a picture that the type
// can't hold.
Result<void> write(const QImage &image, const QString &path);
// The encoded bytes; empty when the encoder fails, or the type can't hold the picture. Quality is 0 to 1, for
// JPEG and HEIC.
QByteArray encode(const QImage &image, Type type, double quality = 0.9);

// The largest file of a picture; one of as many pixels as are decoded is smaller in every usual format.
constexpr qint64 kMostBytes = 1'000'000'000;
// The largest picture that is decoded: 250 million pixels, fewer where the machine has less than 8 GB of
// memory. Decided by the header, before anything of that size is made.
qint64 mostPixels();
// Decodes the first picture of a regular file, orientation applied, as RGB32 or ARGB32_Premultiplied.
// Truncated, broken and foreign files fail with a sentence; so do pictures that are too large.
Result<QImage> read(const QString &path);
// The same for bytes that come from elsewhere.
Result<QImage> decode(const QByteArray &bytes);

// Writes `<name>.png` for other programs to read while this one runs; see TemporaryFiles.
std::optional<QString> temporaryPNG(const QImage &image, const QString &name);

// A JPEG whose longer edge is at most maxEdge pixels; never enlarged. Quality is 0 to 1.
QByteArray jpegData(const QImage &image, double maxEdge, double quality);

// Pixel size of image 0, orientation applied, without decoding it.
std::optional<QSize> pixelSize(const QString &path);
std::optional<QSize> pixelSizeOf(const QByteArray &bytes);

// Freshly decoded, orientation applied, longest edge at most maxPixels.
std::optional<QImage> thumbnail(const QString &path, int maxPixels);
// Where the cached thumbnail of the file's present state lies: in a folder for each folder of pictures among
// the user's caches, since people synchronise their pictures, and what can be made anew need not go with
// them.
QString cachePath(const QString &path, int maxPixels);
// From the cache, or made and stored there; sizes share buckets of 256 pixels.
std::optional<QImage> cachedThumbnail(const QString &path, int maxPixels);
// The same for what isn't an image: `make` gets the longest edge of the bucket.
std::optional<QImage> cachedThumbnail(const QString &path, int maxPixels,
                                      const std::function<std::optional<QImage>(int)> &make);

} // namespace ImageFiles
