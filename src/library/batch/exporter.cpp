#include "library/batch/exporter.h"

#include "base/atomic_file.h"
#include "base/parallel.h"
#include "document/heic.h"
#include "document/image_files.h"
#include "library/library.h"
#include "library/texts.h"

#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace {

QString extensionFor(const QString &path, ExportFormat format)
{
    const QString own = QFileInfo(path).suffix();
    if (Library::isVideo(path))
        return own;
    switch (format) {
    case ExportFormat::Original:
        return own;
    case ExportFormat::Png:
        return QStringLiteral("png");
    case ExportFormat::Jpg:
        return QStringLiteral("jpg");
    case ExportFormat::Heic:
        return QStringLiteral("heic");
    }
    Q_UNREACHABLE();
}

Result<QImage> picture(const QString &path, std::optional<int> maxDimension)
{
    if (maxDimension) {
        if (const auto small = ImageFiles::thumbnail(path, *maxDimension))
            return *small;
        // Why not, says the reader.
    }
    return ImageFiles::read(path);
}

Result<QByteArray> encoded(const QImage &image, const QString &name)
{
    const ImageFiles::Type type = ImageFiles::type(name);
    if (type == ImageFiles::Type::Heic)
        return Heic::encode(image, 0.9); // says why it can't
    QByteArray bytes = ImageFiles::encode(image, type);
    if (bytes.isEmpty())
        return fail(LibraryTexts::tr("%1 could not be encoded.").arg(name));
    return bytes;
}

Result<QString> exportFile(const QString &path, const QString &folder, ExportFormat format,
                           std::optional<int> maxDimension)
{
    const QString stem = QFileInfo(path).completeBaseName();
    const QString extension = extensionFor(path, format);
    if (Library::isVideo(path) || (format == ExportFormat::Original && !maxDimension))
        return AtomicFile::copyNew(path, folder, stem, extension);
    const auto image = picture(path, maxDimension);
    if (!image)
        return std::unexpected(image.error());
    const auto bytes = encoded(*image, stem + QLatin1Char('.') + extension);
    if (!bytes)
        return std::unexpected(bytes.error());
    return AtomicFile::writeNew(folder, stem, extension, *bytes);
}

} // namespace

QString Exporter::title(ExportFormat format)
{
    switch (format) {
    case ExportFormat::Original:
        return LibraryTexts::tr("Original");
    case ExportFormat::Png:
        return QStringLiteral("PNG");
    case ExportFormat::Jpg:
        return QStringLiteral("JPG");
    case ExportFormat::Heic:
        return QStringLiteral("HEIC");
    }
    Q_UNREACHABLE();
}

Exporter::Outcome Exporter::exportFiles(const QStringList &paths, const QString &folder, ExportFormat format,
                                        std::optional<int> maxDimension, const Progress &progress)
{
    const auto count = static_cast<int>(paths.size());
    std::vector<std::optional<Result<QString>>> results(static_cast<size_t>(count));
    std::atomic<int> next = 0;
    std::atomic<bool> isStopped = false;
    std::mutex telling;
    int done = 0;
    inParallel(std::clamp(QThread::idealThreadCount(), 1, std::max(count, 1)), [&](int) {
        for (int i = next++; i < count && !isStopped; i = next++) {
            results[static_cast<size_t>(i)] = exportFile(paths[i], folder, format, maxDimension);
            const std::lock_guard lock(telling);
            if (!goesOn(progress, ++done, count))
                isStopped = true;
        }
    });
    Outcome outcome;
    outcome.wasCancelled = isStopped && done < count;
    for (const auto &result : results) {
        if (!result)
            continue;
        if (*result)
            outcome.paths.append(**result);
        else
            outcome.failures.append(result->error());
    }
    return outcome;
}
