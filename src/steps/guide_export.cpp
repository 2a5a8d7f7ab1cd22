#include "steps/guide_export.h"

#include "base/atomic_file.h"
#include "base/file_tree.h"
#include "base/parallel.h"
#include "document/image_files.h"
#include "library/batch/exporter.h"
#include "library/batch/guide_renderer.h"
#include "steps/steps_export.h"
#include "steps/texts.h"

#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace GuideExport {

namespace {

constexpr int kMostAtOnce = 4;          // each holds some pictures of a screen
constexpr qsizetype kLongestName = 200; // bytes: leaves room for a counter within a file system's 255

// Made here and by nobody else: a taken name gets a number.
Result<QString> ownFolder(const QString &directory, const QString &name)
{
    if (!QDir().mkpath(directory))
        return fail(StepsTexts::tr("The folder %1 can't be made.").arg(directory));
    for (int count = 1;; ++count) {
        const QString path =
            directory + '/' + (count == 1 ? name : QStringLiteral("%1 %2").arg(name).arg(count));
        if (mkdir(QFile::encodeName(path).constData(), 0777) == 0)
            return path;
        if (errno != EEXIST) {
            return fail(StepsTexts::tr("Nothing can be written into %1.").arg(directory),
                        QString::fromLocal8Bit(std::strerror(errno)));
        }
    }
}

// The names of the pictures. A few are made at once, each on a core.
Result<QStringList> writePictures(const Source &source, const QString &folder, const Progress &progress)
{
    const int total = int(source.guide.steps.size());
    QStringList names;
    for (int i = 0; i < total; ++i)
        names.append(QStringLiteral("step-%1.png").arg(i + 1, 2, 10, QLatin1Char('0')));
    QMutex mutex;
    int next = 0;
    int done = 0;
    std::optional<Error> failure;
    // The next one to make, once the one before is told; nothing when it is over.
    const auto take = [&](const Result<void> &last, bool isFirst) -> std::optional<int> {
        const QMutexLocker lock(&mutex);
        if (!last && !failure)
            failure = last.error();
        else if (!isFirst && !failure)
            ++done;
        if (!failure && !progress(done, total))
            failure = cancelled().error();
        return failure || next == total ? std::nullopt : std::optional(next++);
    };
    inParallel(std::clamp(QThread::idealThreadCount(), 1, kMostAtOnce), [&](int) {
        auto index = take({}, true);
        while (index) {
            const auto image = picture(source, *index);
            const auto written = image ? ImageFiles::write(*image, folder + '/' + names[*index])
                                       : Result<void>(std::unexpected(image.error()));
            index = take(written, false);
        }
    });
    if (failure)
        return std::unexpected(*failure);
    return names;
}

} // namespace

QString fileName(const QString &title)
{
    QString name;
    for (const QChar sign : title) {
        if (sign != '/' && sign != ':' && sign != '\\' && sign.category() != QChar::Other_Control)
            name += sign;
    }
    // A leading dot would hide it, or lead to another folder.
    while (name.startsWith('.'))
        name.remove(0, 1);
    while (name.toUtf8().size() > kLongestName)
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    return name.trimmed().isEmpty() ? StepsTexts::tr("How-To Guide") : name;
}

Result<QImage> picture(const Source &source, qsizetype index)
{
    const QImage image = StepsExport::annotated(source.guide.steps[index], int(index) + 1,
                                                source.guide.markClicks, source.guide.redact);
    if (image.isNull())
        return fail(StepsTexts::tr("The picture of step %1 can't be read.").arg(index + 1));
    return image;
}

Result<QString> webFolder(const Source &source, const QString &directory, const Progress &progress)
{
    const auto folder = ownFolder(directory, fileName(source.title));
    if (!folder)
        return folder;
    const auto pictures = writePictures(source, *folder, progress);
    if (!pictures) {
        if (pictures.error().isCancelled())
            FileTree::remove(*folder);
        return std::unexpected(pictures.error());
    }
    const QString page = *folder + QStringLiteral("/index.html");
    const struct {
        QString path;
        QString text;
    } texts[] = {{page, StepsExport::html(source.title, source.captions, *pictures)},
                 {*folder + QStringLiteral("/README.md"),
                  StepsExport::markdown(source.title, source.captions, *pictures)}};
    for (const auto &[path, text] : texts) {
        if (const auto written = AtomicFile::write(path, text.toUtf8()); !written)
            return std::unexpected(written.error());
    }
    return page;
}

Result<void> pdf(const Source &source, const QString &path, const Progress &progress)
{
    QList<Exporter::PdfPage> pages;
    for (qsizetype i = 0; i < source.guide.steps.size(); ++i) {
        pages.append({[&source, i] { return picture(source, i); },
                      StepsTexts::tr("Step %1. %2").arg(i + 1).arg(source.captions[i])});
    }
    return Exporter::pdf(pages, source.title, Exporter::PageSize::Fit, path, progress);
}

Result<QImage> tallPicture(const Source &source, const Progress &progress)
{
    QList<GuideRenderer::Step> steps;
    const int total = int(source.guide.steps.size());
    for (int i = 0; i < total; ++i) {
        if (!progress(i, total))
            return cancelled();
        const auto image = picture(source, i);
        if (!image)
            return std::unexpected(image.error());
        // No wider than it will be drawn, so that a long guide fits in memory.
        steps.append({image->width() > GuideRenderer::kStandardWidth
                          ? image->scaledToWidth(GuideRenderer::kStandardWidth, Qt::SmoothTransformation)
                          : *image,
                      source.captions[i]});
    }
    const auto tall = GuideRenderer::render(source.title, steps, GuideRenderer::kStandardWidth);
    if (!tall)
        return fail(StepsTexts::tr("The guide is too long for one picture."));
    return *tall;
}

} // namespace GuideExport
