#include "base/atomic_file.h"
#include "document/image_files.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <cmath>
#include <tuple>

namespace {

QString digest(const QString &text)
{
    return QLatin1String(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).left(12).toHex());
}

} // namespace

QString ImageFiles::cachePath(const QString &path, int maxPixels)
{
    const QFileInfo info(path);
    const qint64 seconds = info.exists() ? info.lastModified().toMSecsSinceEpoch() / 1000 : 0;
    const QChar bar = QLatin1Char('|');
    const QString key = info.fileName() + bar + QString::number(info.exists() ? info.size() : 0) + bar +
                        QString::number(seconds) + bar + QString::number(maxPixels);
    return QStringLiteral("%1/lumenpost/thumbs/%2/%3.jpg")
        .arg(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation),
             digest(info.absolutePath()), digest(key));
}

std::optional<QImage> ImageFiles::cachedThumbnail(const QString &path, int maxPixels)
{
    return cachedThumbnail(path, maxPixels, [&path](int bucket) { return thumbnail(path, bucket); });
}

std::optional<QImage> ImageFiles::cachedThumbnail(const QString &path, int maxPixels,
                                                  const std::function<std::optional<QImage>(int)> &make)
{
    const int bucket = std::max(static_cast<int>(std::ceil(maxPixels / 256.0)) * 256, 128);
    const QString cached = cachePath(path, bucket);
    if (auto image = read(cached))
        return *image;
    auto image = make(bucket);
    if (!image)
        return std::nullopt;
    QDir().mkpath(QFileInfo(cached).path());
    const QByteArray data = jpegData(*image, std::max(image->width(), image->height()), 0.8);
    if (!data.isEmpty())
        std::ignore = AtomicFile::write(cached, data, AtomicFile::Keep::Reproducible);
    return image;
}
