#include "document/image_files.h"

#include "base/atomic_file.h"
#include "base/temporary_files.h"
#include "document/heic.h"
#include "document/png_encoder.h"
#include "document/texts.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <turbojpeg.h>

namespace {

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

bool ImageFiles::isWritable(const QString &path)
{
    static constexpr std::array kExtensions{"png", "jpg", "jpeg", "heic"};
    const QString extension = QFileInfo(path).suffix().toLower();
    return extension.isEmpty() || std::any_of(kExtensions.begin(), kExtensions.end(), [&](const char *known) {
               return extension == QLatin1String(known);
           });
}

int ImageFiles::longestSide(Type type)
{
    switch (type) {
    case Type::Jpeg:
        return 65500; // of the encoder; the format's own limit is 65535
    case Type::Heic:
        return 32768; // what decoders take, though the encoder goes on
    case Type::Png:
    case Type::Tiff:
        break;
    }
    return std::numeric_limits<int>::max();
}

QString ImageFiles::pathThatHolds(const QString &path, QSize size)
{
    if (std::max(size.width(), size.height()) <= longestSide(type(path)))
        return path;
    const QFileInfo info(path);
    return path.chopped(info.suffix().size()) + QStringLiteral("png");
}

QByteArray ImageFiles::encode(const QImage &image, Type type, double quality)
{
    if (image.isNull() || std::max(image.width(), image.height()) > longestSide(type))
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
        return fail(DocumentTexts::tr("Couldn't write %1: there is no picture.").arg(name));
    if (!isWritable(path))
        return fail(
            Error::Kind::Invalid,
            DocumentTexts::tr("Couldn't write %1: pictures are written as .png, .jpg, .jpeg or .heic.")
                .arg(name));
    const Type wanted = type(path);
    if (const int most = longestSide(wanted); std::max(image.width(), image.height()) > most)
        return fail(Error::Kind::Invalid,
                    DocumentTexts::tr("Couldn't write %1: files of this kind hold at most %2 pixels a side, "
                                      "and the picture has %3 × %4.")
                        .arg(name, QString::number(most), QString::number(image.width()),
                             QString::number(image.height())));
    if (wanted == Type::Heic) {
        const auto bytes = Heic::encode(image, 0.9);
        return bytes ? AtomicFile::write(path, *bytes) : std::unexpected(bytes.error());
    }
    const QByteArray bytes = encode(image, wanted);
    if (bytes.isEmpty())
        return fail(DocumentTexts::tr("Couldn't write %1: the picture could not be encoded.").arg(name));
    return AtomicFile::write(path, bytes);
}

std::optional<QString> ImageFiles::temporaryPNG(const QImage &image, const QString &name)
{
    const auto path = TemporaryFiles::newPath(name + QStringLiteral(".png"));
    if (!path || !write(image, *path))
        return std::nullopt;
    return *path;
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
