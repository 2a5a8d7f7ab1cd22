#include "document/image_files.h"

#include "base/atomic_file.h"
#include "document/heic.h"
#include "document/png_encoder.h"
#include "document/png_reader.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <tuple>
#include <turbojpeg.h>
#include <unistd.h>
#include <zlib.h>

namespace {

// A file of the machine's size must not take the machine's memory with it.
int allocationLimitMegabytes()
{
    static const int limit = [] {
        const qint64 memory = qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
        return static_cast<int>(std::clamp<qint64>(memory / 3 / 1048576, 256, 2000));
    }();
    return limit;
}

// The name by which the decoder is asked, told by the first bytes alone; empty for foreign files.
QByteArray sniffedFormat(const QByteArray &head)
{
    if (head.startsWith("\x89PNG\r\n\x1a\n"))
        return "png";
    if (head.startsWith("\xff\xd8\xff"))
        return "jpeg";
    if (head.startsWith("GIF87a") || head.startsWith("GIF89a"))
        return "gif";
    if (head.startsWith("BM"))
        return "bmp";
    if (head.startsWith(QByteArray("II*\0", 4)) || head.startsWith(QByteArray("MM\0*", 4)))
        return "tiff";
    if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP")
        return "webp";
    if (Heic::isHeic(head))
        return "heic";
    return {};
}

// Whether a TIFF's directory, which mostly stands at its end, lies within it.
bool holdsItsDirectory(const QByteArray &bytes)
{
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const bool isLittle = bytes.startsWith('I');
    const auto read16 = [=](qint64 at) {
        return isLittle ? qFromLittleEndian<quint16>(data + at) : qFromBigEndian<quint16>(data + at);
    };
    if (bytes.size() < 8)
        return false;
    const qint64 at = isLittle ? qFromLittleEndian<quint32>(data + 4) : qFromBigEndian<quint32>(data + 4);
    constexpr qint64 Entry = 12;
    return at + 2 <= bytes.size() && at + 2 + Entry * read16(at) + 4 <= bytes.size();
}

// Decoders fill the missing rest of a cut-off file with grey and call it done; the end marker tells.
bool isCutOff(const QByteArray &bytes, const QByteArray &format)
{
    if (format == "jpeg")
        return bytes.lastIndexOf("\xff\xd9") < 0;
    if (format == "png")
        return bytes.lastIndexOf("IEND") < 0;
    if (format == "tiff")
        return !holdsItsDirectory(bytes);
    return false;
}

// Whether a critical chunk of a PNG isn't what its checksum says, or the picture has no pixels. The decoder
// would notice too, but tell it on the standard error output by itself.
bool isDamagedPng(const QByteArray &bytes)
{
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    constexpr qsizetype Width = 16; // after the signature, and the length and type of the first chunk
    if (bytes.size() < Width + 8 || qFromBigEndian<quint32>(data + Width) == 0 ||
        qFromBigEndian<quint32>(data + Width + 4) == 0)
        return true;
    qsizetype at = 8;
    while (at + 12 <= bytes.size()) {
        const qsizetype length = qFromBigEndian<quint32>(data + at);
        if (length > bytes.size() - at - 12)
            return true;
        const uchar *type = data + at + 4;
        const bool critical = (type[0] & 0x20) == 0;
        if (critical &&
            crc32(0, type, static_cast<uInt>(length + 4)) != qFromBigEndian<quint32>(type + 4 + length))
            return true;
        if (std::memcmp(type, "IEND", 4) == 0)
            return false;
        at += length + 12;
    }
    return true;
}

std::unexpected<Error> unreadable(const QString &name, const QString &what, const QString &detail = {})
{
    const QString subject = name.isEmpty() ? QStringLiteral("The picture") : name;
    return fail(Error::Kind::Invalid, QStringLiteral("%1 %2.").arg(subject, what), detail);
}

// In place where it can be: a second copy of a large picture may not fit.
QImage inWorkingFormat(QImage image)
{
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image;
}

// `longestEdge` 0 decodes in full size.
Result<QImage> decodeNamed(const QByteArray &bytes, const QString &name, int longestEdge)
{
    const QByteArray format = sniffedFormat(bytes.left(16));
    if (bytes.isEmpty())
        return unreadable(name, QStringLiteral("is empty"));
    if (format.isEmpty())
        return unreadable(name, QStringLiteral("is not a picture that Lumenpost can read"));
    if (isCutOff(bytes, format))
        return unreadable(name, QStringLiteral("is cut off: its end is missing"));
    if (format == "png" && isDamagedPng(bytes))
        return unreadable(name, QStringLiteral("is damaged"));
    if (format == "heic") {
        auto decoded = Heic::decode(bytes);
        if (!decoded && decoded.error().kind == Error::Kind::Invalid)
            return unreadable(name, QStringLiteral("is damaged"), decoded.error().detail);
        return decoded;
    }
    if (format == "png") {
        if (const auto image = readPng(bytes))
            return *image;
    }
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader::setAllocationLimit(allocationLimitMegabytes());
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() &&
        qint64(size.width()) * size.height() * 4 > qint64(allocationLimitMegabytes()) * 1048576)
        return unreadable(
            name, QStringLiteral("is too large: %1 × %2 pixels").arg(size.width()).arg(size.height()));
    if (longestEdge > 0 && format == "jpeg" && std::max(size.width(), size.height()) > longestEdge * 2) {
        // The JPEG decoder can leave pixels out while it decodes; twice the size keeps the last step smooth.
        reader.setScaledSize(size.scaled(longestEdge * 2, longestEdge * 2, Qt::KeepAspectRatio));
    }
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return unreadable(name, QStringLiteral("is damaged"), reader.errorString());
    image.setDevicePixelRatio(1);
    return inWorkingFormat(std::move(image));
}

Result<QByteArray> readBytes(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    QFile file(path);
    if (!file.exists())
        return fail(Error::Kind::NotFound, QStringLiteral("There is no file %1.").arg(name), path);
    if (QFileInfo(path).isDir())
        return fail(Error::Kind::Invalid, QStringLiteral("%1 is a folder.").arg(name), path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("Couldn't read %1: %2.").arg(name, file.errorString()), path);
    return file.readAll();
}

std::optional<QSize> sizeIn(QIODevice &device)
{
    const QByteArray format = sniffedFormat(device.peek(16));
    if (format.isEmpty())
        return std::nullopt;
    QSize size;
    if (format == "heic") {
        size = Heic::pixelSize(device.readAll()).value_or(QSize());
    } else {
        QImageReader reader(&device, format);
        reader.setAutoDetectImageFormat(false);
        size = reader.size();
    }
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

QImage withLongestEdge(const QImage &image, int longestEdge)
{
    if (std::max(image.width(), image.height()) <= longestEdge)
        return image;
    // A very long picture keeps a pixel of its short side.
    const QSize size = image.size().scaled(longestEdge, longestEdge, Qt::KeepAspectRatio);
    return image.scaled(size.expandedTo({1, 1}), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// JPEG knows no transparency: what shows through is white.
QImage flattenedOnWhite(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image.convertToFormat(QImage::Format_RGB32);
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, image);
    return flat;
}

QByteArray encodeJpeg(const QImage &image, double quality)
{
    const QImage flat = flattenedOnWhite(image);
    if (flat.isNull())
        return {};
    const std::unique_ptr<void, int (*)(tjhandle)> encoder(tjInitCompress(), tjDestroy);
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    const int percent = std::clamp(static_cast<int>(std::lround(quality * 100)), 1, 100);
    // Full chroma where quality is asked for: coloured text on screens smears otherwise.
    const int sampling = percent >= 85 ? TJSAMP_444 : TJSAMP_420;
    const int failed =
        tjCompress2(encoder.get(), flat.constBits(), flat.width(), static_cast<int>(flat.bytesPerLine()),
                    flat.height(), TJPF_BGRX, &bytes, &size, sampling, percent, 0);
    QByteArray result;
    if (!failed)
        result = QByteArray(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    tjFree(bytes);
    return result;
}

QByteArray encodeTiff(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    writer.setCompression(1); // LZW
    return writer.write(image) ? buffer.data() : QByteArray();
}

} // namespace

ImageFiles::Type ImageFiles::type(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("jpg") || extension == QLatin1String("jpeg"))
        return Type::Jpeg;
    return extension == QLatin1String("heic") ? Type::Heic : Type::Png;
}

QByteArray ImageFiles::encode(const QImage &image, Type type, double quality)
{
    if (image.isNull())
        return {};
    switch (type) {
    case Type::Png:
        return encodePng(image);
    case Type::Jpeg:
        return encodeJpeg(image, quality);
    case Type::Heic:
        return Heic::encode(image, quality).value_or(QByteArray());
    case Type::Tiff:
        return encodeTiff(image);
    }
    Q_UNREACHABLE();
}

Result<void> ImageFiles::write(const QImage &image, const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    if (image.isNull())
        return fail(QStringLiteral("Couldn't write %1: there is no picture.").arg(name));
    if (type(path) == Type::Heic) {
        const auto bytes = Heic::encode(image, 0.9);
        return bytes ? AtomicFile::write(path, *bytes) : std::unexpected(bytes.error());
    }
    const QByteArray bytes = encode(image, type(path));
    if (bytes.isEmpty())
        return fail(QStringLiteral("Couldn't write %1: the picture could not be encoded.").arg(name));
    return AtomicFile::write(path, bytes);
}

Result<QImage> ImageFiles::read(const QString &path)
{
    const auto bytes = readBytes(path);
    if (!bytes)
        return std::unexpected(bytes.error());
    return decodeNamed(*bytes, QFileInfo(path).fileName(), 0);
}

Result<QImage> ImageFiles::decode(const QByteArray &bytes)
{
    return decodeNamed(bytes, {}, 0);
}

std::optional<QString> ImageFiles::temporaryPNG(const QImage &image, const QString &name)
{
    const QString path = QDir(QDir::tempPath()).filePath(name + QStringLiteral(".png"));
    if (!write(image, path))
        return std::nullopt;
    return path;
}

QByteArray ImageFiles::jpegData(const QImage &image, double maxEdge, double quality)
{
    if (image.isNull())
        return {};
    const double scale = maxEdge / std::max(image.width(), image.height());
    if (scale >= 1)
        return encodeJpeg(image, quality);
    const QSize size(static_cast<int>(image.width() * scale), static_cast<int>(image.height() * scale));
    const QImage scaled = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return encodeJpeg(scaled.isNull() ? image : scaled, quality);
}

std::optional<QSize> ImageFiles::pixelSize(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? sizeIn(file) : std::nullopt;
}

std::optional<QSize> ImageFiles::pixelSizeOf(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return sizeIn(buffer);
}

std::optional<QImage> ImageFiles::thumbnail(const QString &path, int maxPixels)
{
    if (maxPixels <= 0)
        return std::nullopt;
    const auto bytes = readBytes(path);
    if (!bytes)
        return std::nullopt;
    if (const auto reduced = readReducedPng(*bytes, maxPixels))
        return withLongestEdge(*reduced, maxPixels);
    const auto image = decodeNamed(*bytes, QFileInfo(path).fileName(), maxPixels);
    if (!image)
        return std::nullopt;
    return withLongestEdge(*image, maxPixels);
}

QString ImageFiles::cacheURL(const QString &path, int maxPixels)
{
    const QFileInfo info(path);
    const qint64 seconds = info.exists() ? info.lastModified().toMSecsSinceEpoch() / 1000 : 0;
    const QChar bar = QLatin1Char('|');
    const QString key = info.fileName() + bar + QString::number(info.exists() ? info.size() : 0) + bar +
                        QString::number(seconds) + bar + QString::number(maxPixels);
    const QByteArray hash =
        QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha256).left(12).toHex();
    return info.dir().filePath(QStringLiteral(".lumenpost/thumbs/%1.jpg").arg(QLatin1String(hash)));
}

std::optional<QImage> ImageFiles::cachedThumbnail(const QString &path, int maxPixels)
{
    const int bucket = std::max(static_cast<int>(std::ceil(maxPixels / 256.0)) * 256, 128);
    const QString cached = cacheURL(path, bucket);
    if (const auto bytes = readBytes(cached)) {
        if (auto image = decodeNamed(*bytes, {}, 0))
            return *image;
    }
    auto image = thumbnail(path, bucket);
    if (!image)
        return std::nullopt;
    QDir().mkpath(QFileInfo(cached).path());
    const QByteArray data = jpegData(*image, std::max(image->width(), image->height()), 0.8);
    if (!data.isEmpty())
        std::ignore = AtomicFile::write(cached, data, AtomicFile::Keep::Reproducible);
    return image;
}
