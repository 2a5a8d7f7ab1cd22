#include "platform/recognition/tesseract_engine.h"

#include "base/async.h"
#include "platform/recognition/ink.h"
#include "platform/recognition/languages.h"
#include "platform/recognition/page_reading.h"
#include "platform/recognition/tesseract_reader.h"
#include "platform/texts.h"

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

// A strip of a picture: the rows that are looked at, and those of them whose lines are its own.
struct Band {
    int top;
    int bottom;
    int ownTop;
    int ownBottom;
};

// One band for usual screens; several for pictures whose intermediate copies would not fit in memory. They
// overlap by more than a line, and a line belongs to the band that its middle lies in.
std::vector<Band> bandsOf(QSize picture)
{
    constexpr qint64 kMostPixels = 18'000'000;
    constexpr int kOverlap = 160;
    if (2 * qint64(picture.width()) * picture.height() <= kMostPixels)
        return {{0, picture.height(), 0, picture.height()}};
    const int rows = std::max<int>(2 * kOverlap, int(kMostPixels / picture.width()) - 2 * kOverlap);
    std::vector<Band> bands;
    for (int top = 0; top < picture.height(); top += rows)
        bands.push_back({std::max(0, top - kOverlap), std::min(picture.height(), top + rows + kOverlap), top,
                         std::min(picture.height(), top + rows)});
    return bands;
}

// Full pages are read a little less carefully, so that a screen of small type takes no more than a second.
TesseractReader::Pace paceFor(const QList<TextRegion> &regions)
{
    constexpr size_t kGlyphs = 1400;
    size_t count = 0;
    for (const TextRegion &region : regions)
        count += region.glyphs.size();
    return count > kGlyphs ? TesseractReader::Pace::Brisk : TesseractReader::Pace::Careful;
}

QList<RecognizedLine> read(const QImage &image, const Band &band, TesseractReader &reader)
{
    const bool isWhole = band.top == 0 && band.bottom == image.height();
    const QImage ink =
        inkOf(isWhole ? image : image.copy(0, band.top, image.width(), band.bottom - band.top));
    std::vector<ReadLine> read;
    const QList<TextRegion> regions = findLines(ink);
    const auto pace = paceFor(regions);
    for (const TextRegion &region : regions) {
        const int middle = band.top + region.box.center().y();
        if (middle < band.ownTop || middle >= band.ownBottom)
            continue;
        if (auto signs = reader.read(ink, region, pace); !signs.empty()) {
            read.emplace_back();
            read.back().region = region;
            read.back().signs = std::move(signs);
        }
    }
    mend(ink, read);
    QList<RecognizedLine> lines;
    for (const ReadLine &line : read)
        if (!isIcon(line))
            lines.append(recognizedLine(line, image.size(), {0, band.top}));
    return lines;
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
    auto reader = takeReader(data->folder, data->languages);
    if (!reader)
        return std::unexpected(reader.error());
    try {
        for (const Band &band : bandsOf(image.size()))
            lines += read(image, band, **reader);
    } catch (const std::exception &exception) {
        return fail(PlatformTexts::tr("The picture is too large to be read on this machine."),
                    QString::fromUtf8(exception.what()));
    }
    const std::lock_guard lock(m_mutex);
    m_idle.push_back({data->languages, std::move(*reader)});
    return lines;
}
