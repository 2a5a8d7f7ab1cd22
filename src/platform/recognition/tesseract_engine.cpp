#include "platform/recognition/tesseract_engine.h"

#include "base/async.h"
#include "platform/recognition/ink.h"
#include "platform/recognition/languages.h"
#include "platform/recognition/tesseract_reader.h"

#include <QElapsedTimer>
#include <QLibrary>
#include <QThread>

namespace {

// Tesseract's threads within one picture spend most of their time waiting for each other, and on a busy
// machine stretch a second to half a minute; pictures share the cores instead. Allowing no level of parallel
// regions is the one limit that OpenMP takes at run time, for the calling thread: its environment was read
// when the program started.
void stayOnOneThread()
{
    static const auto allowLevels =
        reinterpret_cast<void (*)(int)>(QLibrary::resolve("gomp", 1, "omp_set_max_active_levels"));
    if (allowLevels)
        allowLevels(0);
}

} // namespace

TesseractEngine::TesseractEngine()
{
    m_threads.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
}

TesseractEngine::~TesseractEngine() = default;

QFuture<Result<QList<RecognizedLine>>> TesseractEngine::recognize(const QImage &image,
                                                                  const QStringList &languages)
{
    return QtConcurrent::run(&m_threads, [this, image, languages] { return work(image, languages); });
}

Result<std::unique_ptr<TesseractReader>> TesseractEngine::takeReader(const QString &folder,
                                                                     const QString &languages)
{
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::ranges::find(m_idle, languages, &IdleReader::languages);
        if (found != m_idle.end()) {
            auto reader = std::move(found->reader);
            m_idle.erase(found);
            return reader;
        }
    }
    return TesseractReader::open(folder, languages);
}

Result<QList<RecognizedLine>> TesseractEngine::work(const QImage &image, const QStringList &locales)
{
    const auto data = languageData(locales);
    if (!data)
        return std::unexpected(data.error());
    QList<RecognizedLine> lines;
    if (image.isNull())
        return lines;
    stayOnOneThread();
    QElapsedTimer t;
    t.start();
    const QImage ink = inkOf(image);
    const auto t1 = t.elapsed();
    const auto regions = findLines(ink);
    fprintf(stderr, "ink %d find %d n %d\n", int(t1), int(t.elapsed() - t1), int(regions.size()));
    if (regions.isEmpty())
        return lines;
    auto reader = takeReader(data->folder, data->languages);
    if (!reader)
        return std::unexpected(reader.error());
    const double width = image.width();
    const double height = image.height();
    const auto normalized = [&](const QRectF &box) {
        return box.isNull() ? QRectF()
                            : QRectF(box.x() / width, 1 - box.bottom() / height, box.width() / width,
                                     box.height() / height);
    };
    for (const TextRegion &region : regions) {
        auto line = (*reader)->read(ink, region);
        if (!line)
            continue;
        line->box = normalized(line->box);
        for (QRectF &box : line->characters)
            box = normalized(box);
        lines.append(*line);
    }
    const std::lock_guard lock(m_mutex);
    m_idle.push_back({data->languages, std::move(*reader)});
    return lines;
}
