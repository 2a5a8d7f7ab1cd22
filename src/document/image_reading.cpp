#include "document/image_files.h"

#include "base/read_file.h"
#include "document/heic.h"
#include "document/image_header.h"
#include "document/png_decoder.h"
#include "document/png_reader.h"
#include "document/texts.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QLibrary>
#include <QLoggingCategory>
#include <QPixelFormat>
#include <algorithm>
#include <mutex>
#include <unistd.h>

namespace {

using ImageHeader::Format;

constexpr qint64 kHeadBytes = 65536;

std::unexpected<Error> unreadable(const QString &name, const QString &sentence, const QString &detail = {})
{
    return fail(Error::Kind::Invalid, sentence.arg(name.isEmpty() ? DocumentTexts::tr("The picture") : name),
                detail);
}
std::unexpected<Error> cutOff(const QString &name)
{
    return unreadable(name, DocumentTexts::tr("%1 is cut off: its end is missing."));
}
std::unexpected<Error> damaged(const QString &name, const QString &detail = {})
{
    return unreadable(name, DocumentTexts::tr("%1 is damaged."), detail);
}
std::unexpected<Error> tooLarge(const QString &name, QSize size)
{
    return unreadable(
        name, DocumentTexts::tr("%1 is too large: it has %2 × %3 pixels, and at most %4 million "
                                "pixels can be worked with.")
                  .arg(QStringLiteral("%1"), QString::number(size.width()), QString::number(size.height()),
                       QString::number(ImageFiles::mostPixels() / 1'000'000)));
}
std::unexpected<Error> foreign(const QString &name, const QByteArray &head)
{
    if (head.isEmpty())
        return unreadable(name, DocumentTexts::tr("%1 is empty."));
    return unreadable(name, DocumentTexts::tr("%1 is not a picture that Lumenpost can read."));
}

bool isTooLarge(QSize size, int bytesPerPixel)
{
    return qint64(size.width()) * size.height() * std::max(bytesPerPixel, 4) > ImageFiles::mostPixels() * 4;
}

// What a decoder has to say about a broken file is told by the answer alone, never on the terminal. The
// library behind the TIFF decoder is loaded only with the first TIFF, so it isn't linked.
void silenceDecoders()
{
    static std::once_flag once;
    std::call_once(once, [] { QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false")); });
}

void silenceTiff()
{
    static std::once_flag once;
    std::call_once(once, [] {
        using SetHandler = void *(*)(void *);
        QLibrary library(QStringLiteral("tiff"), 6);
        for (const char *name : {"TIFFSetErrorHandler", "TIFFSetWarningHandler"}) {
            if (const auto set = reinterpret_cast<SetHandler>(library.resolve(name)))
                set(nullptr);
        }
    });
}

QByteArray decoderOf(Format format)
{
    silenceDecoders();
    switch (format) {
    case Format::Jpeg:
        return "jpeg";
    case Format::Gif:
        return "gif";
    case Format::Bmp:
        return "bmp";
    case Format::Tiff:
        silenceTiff();
        return "tiff";
    case Format::Webp:
        return "webp";
    case Format::Png:
    case Format::Heic:
        break;
    }
    return {};
}

Result<QImage> decodePng(const QByteArray &bytes, const QString &name, int longestEdge)
{
    const auto size = PngDecoder::pixelSize(bytes.left(kHeadBytes));
    if (!size)
        return damaged(name);
    if (isTooLarge(*size, 4))
        return tooLarge(name, *size);
    if (longestEdge > 0) {
        if (auto image = readReducedPng(bytes, longestEdge))
            return *std::move(image);
    }
    if (auto image = readPng(bytes)) // of the usual kinds, and undamaged
        return *std::move(image);
    PngDecoder::Failure failure{};
    QImage image = PngDecoder::decode(bytes, &failure);
    if (!image.isNull())
        return image;
    switch (failure) {
    case PngDecoder::Failure::CutOff:
        return cutOff(name);
    case PngDecoder::Failure::NoMemory:
        return tooLarge(name, *size);
    case PngDecoder::Failure::Damaged:
        return damaged(name);
    }
    Q_UNREACHABLE();
}

Result<QImage> decodeHeic(const QByteArray &bytes, const QString &name)
{
    const auto size = Heic::pixelSize(bytes);
    if (size && isTooLarge(*size, 4))
        return tooLarge(name, *size);
    auto image = size ? Heic::decode(bytes) : std::unexpected(size.error());
    if (!image && image.error().kind == Error::Kind::Invalid)
        return damaged(name, image.error().detail);
    return image;
}

Result<QImage> decodeOther(const QByteArray &bytes, Format format, const QString &name, int longestEdge)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    // In megabytes, for what a header does not tell.
    QImageReader::setAllocationLimit(static_cast<int>(ImageFiles::mostPixels() * 4 / 1048576 + 1));
    QImageReader reader(&buffer, decoderOf(format));
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isEmpty())
        return damaged(name, reader.errorString());
    if (isTooLarge(size, QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel() / 8))
        return tooLarge(name, size);
    if (longestEdge > 0 && format == Format::Jpeg &&
        std::max(size.width(), size.height()) > longestEdge * 2) {
        // The JPEG decoder can leave pixels out while it decodes; twice the size keeps the last step smooth.
        reader.setScaledSize(size.scaled(longestEdge * 2, longestEdge * 2, Qt::KeepAspectRatio));
    }
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return damaged(name, reader.errorString());
    image.setDevicePixelRatio(1);
    // In place where it can be: a second copy of a large picture may not fit.
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image;
}

// `longestEdge` 0 decodes in full size; another one only makes sure that the longer side is no shorter.
Result<QImage> decodeNamed(const QByteArray &bytes, const QString &name, int longestEdge)
{
    const auto format = ImageHeader::formatOf(bytes.left(16));
    if (!format)
        return foreign(name, bytes);
    if (ImageHeader::isCutOff(bytes, *format))
        return cutOff(name);
    switch (*format) {
    case Format::Png:
        return decodePng(bytes, name, longestEdge);
    case Format::Heic:
        return decodeHeic(bytes, name);
    case Format::Jpeg:
    case Format::Gif:
    case Format::Bmp:
    case Format::Tiff:
    case Format::Webp:
        return decodeOther(bytes, *format, name, longestEdge);
    }
    Q_UNREACHABLE();
}

Result<QImage> readNamed(const QString &path, int longestEdge)
{
    const QString name = QFileInfo(path).fileName();
    // What is no picture isn't read to its end.
    const auto head = ReadFile::head(path, 16);
    if (!head)
        return std::unexpected(head.error());
    if (!ImageHeader::formatOf(*head))
        return foreign(name, *head);
    const auto bytes = ReadFile::whole(path, ImageFiles::kMostBytes);
    if (!bytes)
        return std::unexpected(bytes.error());
    return decodeNamed(*bytes, name, longestEdge);
}

QImage withLongestEdge(const QImage &image, int longestEdge)
{
    if (std::max(image.width(), image.height()) <= longestEdge)
        return image;
    // A very long picture keeps a pixel of its short side.
    const QSize size = image.size().scaled(longestEdge, longestEdge, Qt::KeepAspectRatio);
    return image.scaled(size.expandedTo({1, 1}), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

qint64 ImageFiles::mostPixels()
{
    // Rendering a project takes 16 bytes for a pixel (6.2 GB were measured for 400 million), so that half of
    // a machine's memory stays free.
    static const qint64 most = [] {
        const qint64 memory = qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
        return std::clamp<qint64>(memory / 32, 64'000'000, 250'000'000);
    }();
    return most;
}

Result<QImage> ImageFiles::read(const QString &path)
{
    return readNamed(path, 0);
}

Result<QImage> ImageFiles::decode(const QByteArray &bytes)
{
    return decodeNamed(bytes, {}, 0);
}

std::optional<QSize> ImageFiles::pixelSize(const QString &path)
{
    const auto head = ReadFile::head(path, kHeadBytes);
    if (!head || !ImageHeader::formatOf(*head))
        return std::nullopt;
    // Mostly the start tells; a large profile or a directory at the end can stand before it.
    if (const auto size = pixelSizeOf(*head); size || head->size() < kHeadBytes)
        return size;
    const auto bytes = ReadFile::whole(path, ImageFiles::kMostBytes);
    return bytes ? pixelSizeOf(*bytes) : std::nullopt;
}

std::optional<QSize> ImageFiles::pixelSizeOf(const QByteArray &bytes)
{
    const auto format = ImageHeader::formatOf(bytes.left(16));
    if (!format)
        return std::nullopt;
    QSize size;
    switch (*format) {
    case Format::Png:
        size = PngDecoder::pixelSize(bytes).value_or(QSize());
        break;
    case Format::Heic:
        size = Heic::pixelSize(bytes).value_or(QSize());
        break;
    case Format::Jpeg:
    case Format::Gif:
    case Format::Bmp:
    case Format::Tiff:
    case Format::Webp: {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, decoderOf(*format));
        reader.setAutoDetectImageFormat(false);
        size = reader.size();
        if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90))
            size.transpose();
    }
    }
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

std::optional<QImage> ImageFiles::thumbnail(const QString &path, int maxPixels)
{
    if (maxPixels <= 0)
        return std::nullopt;
    const auto image = readNamed(path, maxPixels);
    return image ? std::optional(withLongestEdge(*image, maxPixels)) : std::nullopt;
}
