#include "platform/recognition/tesseract_engine.h"

#include "base/async.h"
#include "platform/recognition/code_signs.h"
#include "platform/recognition/ink.h"
#include "platform/recognition/languages.h"
#include "platform/recognition/line_languages.h"
#include "platform/recognition/page_reading.h"
#include "platform/recognition/struck_lines.h"
#include "platform/texts.h"

#include <QLibrary>
#include <QThread>
#include <map>

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

std::vector<ReadLine> read(const QImage &ink, const QList<TextRegion> &regions, LineLanguages &reader)
{
    std::vector<ReadLine> lines = reader.read(ink, regions, paceFor(regions));
    mend(ink, lines);
    const std::vector<ReadLine> page = lines;
    std::erase_if(lines,
                  [&page](const ReadLine &line) { return isIcon(line) && !isLoneBracket(line, page); });
    return lines;
}

// The strokes of large letters are as broad as what usual letters lie on; they are read on a small copy.
constexpr int kShrinkForLarge = 4;
constexpr int kLowestLarge = 10; // pixels of the copy: of type of 55 pixels and more

// Whether a line of the small copy is text rather than what pictures and buttons look like in it.
bool isLargeText(const ReadLine &line)
{
    constexpr double kSure = 0.93; // of what is no text, nine in ten are below
    constexpr int kFewest = 2;
    double confidence = 0;
    int count = 0;
    for (const ReadSign &sign : line.signs) {
        confidence += sign.confidence / double(line.signs.size());
        count += !sign.text.isEmpty() && sign.text[0].isLetterOrNumber();
    }
    return count >= kFewest && 2 * count > int(line.signs.size()) && confidence >= kSure;
}

// How sure the reader is of lines, and how much it read there.
struct Evidence {
    double sum = 0;
    int signs = 0;
    Evidence() = default;
    explicit Evidence(const ReadLine &line) { add(line); }
    void add(const ReadLine &line)
    {
        for (const ReadSign &sign : line.signs) {
            sum += sign.confidence;
            ++signs;
        }
    }
    // What grounds look like in the small copy is read with .98 at most, large type mostly with more.
    bool isSure() const { return sum > 0.985 * signs; }
    bool outweighs(const Evidence &other) const
    {
        return signs > other.signs && sum * other.signs > other.sum * signs;
    }
};

std::vector<ReadLine> readLarge(const QImage &part, LineLanguages &reader)
{
    const QSize size = part.size() / kShrinkForLarge;
    if (size.isEmpty())
        return {};
    QImage ink = inkOf(part.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    takeOutStruckLines(ink);
    QList<TextRegion> regions = findLines(ink);
    regions.removeIf([](const TextRegion &region) { return region.glyphHeight < kLowestLarge; });
    std::vector<ReadLine> lines = read(ink, regions, reader);
    std::erase_if(lines, [](const ReadLine &line) { return !isLargeText(line); });
    return lines;
}

QList<RecognizedLine> read(const QImage &image, const Band &band, LineLanguages &reader)
{
    const bool isWhole = band.top == 0 && band.bottom == image.height();
    const QImage part = isWhole ? image : image.copy(0, band.top, image.width(), band.bottom - band.top);
    const auto isOwn = [&band](const QRect &box) {
        const int middle = band.top + box.center().y();
        return middle >= band.ownTop && middle < band.ownBottom;
    };
    const auto inPart = [](const QRect &box) {
        return QRect(box.topLeft() * kShrinkForLarge, box.size() * kShrinkForLarge);
    };
    std::vector<ReadLine> large = readLarge(part, reader);
    std::erase_if(large, [&](const ReadLine &line) { return !isOwn(inPart(line.region.box)); });

    QImage ink = inkOf(part);
    takeOutStruckLines(ink);
    QList<TextRegion> regions = findLines(ink);
    regions.removeIf([&](const TextRegion &region) {
        return !isOwn(region.box) || std::ranges::any_of(large, [&](const ReadLine &line) {
            return Evidence(line).isSure() && inPart(line.region.box).contains(region.box.center());
        });
    });
    std::vector<ReadLine> usual = read(ink, regions, reader);
    // Of what stands in one place, either is true: what grounds make of several lines in the small copy looks
    // like one large line, and the strokes of a large one like letters.
    for (size_t i = 0; i < large.size();) {
        const QRect box = inPart(large[i].region.box);
        const auto isInside = [&](const ReadLine &line) { return box.contains(line.region.box.center()); };
        Evidence inside;
        for (const ReadLine &line : usual)
            if (isInside(line))
                inside.add(line);
        if (inside.outweighs(Evidence(large[i]))) {
            large.erase(large.begin() + long(i));
            continue;
        }
        std::erase_if(usual, isInside);
        ++i;
    }
    QList<RecognizedLine> lines;
    for (const ReadLine &line : large)
        lines.append(recognizedLine(line, image.size() / kShrinkForLarge, {0, band.top / kShrinkForLarge}));
    for (const ReadLine &line : usual)
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
                                                                  const TextLanguages &languages)
{
    return QtConcurrent::run(&m_threads, [this, image, languages] { return work(image, languages); });
}

Result<std::unique_ptr<TesseractReader>> TesseractEngine::takeReader(const QString &folder,
                                                                     const QString &language)
{
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::ranges::find(m_idle, language, &IdleReader::language);
        if (found != m_idle.end()) {
            auto reader = std::move(found->reader);
            m_idle.erase(found);
            return reader;
        }
    }
    return TesseractReader::open(folder, language);
}

// The readers that one picture needs, opened when first asked for and given back in the end.
class TesseractEngine::Borrowed {
public:
    Borrowed(TesseractEngine &engine, ReadingOrder order) : m_engine(engine), m_order(std::move(order)) {}
    Borrowed(const Borrowed &) = delete;
    Borrowed &operator=(const Borrowed &) = delete;
    ~Borrowed()
    {
        const std::lock_guard lock(m_engine.m_mutex);
        for (auto &[language, reader] : m_readers)
            if (reader)
                m_engine.m_idle.push_back({language, std::move(*reader)});
    }

    const Result<std::unique_ptr<TesseractReader>> &reader(qsizetype place)
    {
        const QString &language = m_order.names[place];
        auto found = m_readers.find(language);
        if (found == m_readers.end())
            found = m_readers.emplace(language, m_engine.takeReader(m_order.folders[place], language)).first;
        return found->second;
    }

private:
    TesseractEngine &m_engine;
    ReadingOrder m_order;
    std::map<QString, Result<std::unique_ptr<TesseractReader>>> m_readers;
};

Result<QList<RecognizedLine>> TesseractEngine::work(const QImage &image, const TextLanguages &languages)
{
    const auto order = readingOrder(languages);
    if (!order)
        return std::unexpected(order.error());
    QList<RecognizedLine> lines;
    if (image.isNull())
        return lines;
    stayOnOneThread();
    Borrowed readers(*this, *order);
    if (const auto &first = readers.reader(0); !first)
        return std::unexpected(first.error());
    LineLanguages reader(order->names, [&readers](qsizetype place) {
        const auto &other = readers.reader(place);
        return other ? other->get() : nullptr;
    });
    try {
        for (const Band &band : bandsOf(image.size()))
            lines += read(image, band, reader);
    } catch (const std::exception &exception) {
        return fail(PlatformTexts::tr("The picture is too large to be read on this machine."),
                    QString::fromUtf8(exception.what()));
    }
    return lines;
}
