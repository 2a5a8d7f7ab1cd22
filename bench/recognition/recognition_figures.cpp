// Figures of reading over a folder of pages with their truth: how many words are found and how many of the
// found are right, by page, and the time each took.
//
//     bench_recognition FOLDER…
//     READ_AS=de_DE bench_recognition FOLDER…     as a user of this locale rather than of English
//
// Pages of many kinds are drawn by truth_pages.
//
// A page is NAME.png with NAME.json: either "lines" with "text", or "words" with "text".

#include "base/json.h"
#include "platform/face_engine.h"
#include "platform/session/recognition_loader.h"
#include "platform/text_engine.h"
#include "services/text_recognizer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMap>
#include <cstdio>
#include <sys/resource.h>

namespace {

QMap<QString, int> counted(const QStringList &words)
{
    QMap<QString, int> counts;
    for (const QString &word : words)
        ++counts[word];
    return counts;
}

// Ways to write one sign count as one.
QString plain(QString text)
{
    return text.replace(QChar(0x2026), QString("..."))
        .replace(QChar(0x2018), '\'')
        .replace(QChar(0x2019), '\'');
}

QStringList wordsOf(const QJsonObject &truth)
{
    QStringList words;
    for (const QJsonValue &line : truth["lines"].toArray())
        words += plain(line["text"].toString()).simplified().split(' ', Qt::SkipEmptyParts);
    QRectF last;
    for (const QJsonValue &word : truth["words"].toArray()) {
        const QJsonArray r = word["rect"].toArray();
        const QRectF rect(r[0].toDouble(), r[1].toDouble(), r[2].toDouble(), r[3].toDouble());
        // Stretches of different colours that touch are one word to a reader.
        if (std::abs(rect.x() - last.right()) < 1 && std::abs(rect.y() - last.y()) < 2)
            words.last() += plain(word["text"].toString());
        else
            words += plain(word["text"].toString());
        last = rect;
    }
    return words;
}

// How many of the private stretches are hidden to 95 % of their area, and how many boxes hide nothing
// private.
struct Hidden {
    int demanded = 0;
    int hidden = 0;
    int falseBoxes = 0;
};

Hidden hiddenBy(const QList<QRectF> &boxes, QSize size, const QJsonObject &truth)
{
    QList<QRectF> rects;
    for (const QRectF &box : boxes)
        rects.append(QRectF(box.x() * size.width(), (1 - box.bottom()) * size.height(),
                            box.width() * size.width(), box.height() * size.height()));
    Hidden count;
    QList<QRectF> secrets;
    for (const QJsonValue &line : truth["lines"].toArray()) {
        for (const QJsonValue &secret : line["sensitive"].toArray()) {
            const QJsonArray r = secret["rect"].toArray();
            const QRectF rect(r[0].toDouble(), r[1].toDouble(), r[2].toDouble(), r[3].toDouble());
            secrets.append(rect);
            constexpr int Samples = 200;
            int covered = 0;
            for (int i = 0; i < Samples * 20; ++i) {
                const QPointF point(rect.x() + rect.width() * (i % Samples + 0.5) / Samples,
                                    rect.y() + rect.height() * (i / Samples + 0.5) / 20);
                covered += std::ranges::any_of(rects, [&](const QRectF &r) { return r.contains(point); });
            }
            ++count.demanded;
            count.hidden += covered >= 0.95 * Samples * 20;
            if (covered < 0.95 * Samples * 20)
                std::printf("   not hidden: %s (%.0f %%)\n", qUtf8Printable(secret["text"].toString()),
                            covered / (Samples * 0.2));
        }
    }
    for (const QRectF &rect : rects)
        if (std::ranges::none_of(secrets, [&](const QRectF &secret) { return secret.intersects(rect); })) {
            ++count.falseBoxes;
            std::printf("   nothing private at %.0f %.0f %.0f %.0f\n", rect.x(), rect.y(), rect.width(),
                        rect.height());
        }
    return count;
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double sharedPart(const QRectF &a, const QRectF &b)
{
    const QRectF both = a & b;
    const double shared = both.width() * both.height();
    return shared / (a.width() * a.height() + b.width() * b.height() - shared);
}

void countFaces(FaceEngine &engine, const QString &name, const QImage &image, const QJsonObject &truth)
{
    QElapsedTimer timer;
    timer.start();
    const double before = processorSeconds();
    const auto boxes = engine.detect(image).takeResult();
    if (!boxes) {
        std::printf("%s %s\n", qUtf8Printable(boxes.error().message), qUtf8Printable(boxes.error().detail));
        return;
    }
    const auto elapsed = timer.elapsed();
    const auto pixels = [&](const QRectF &box) {
        return QRectF(box.x() * image.width(), (1 - box.bottom()) * image.height(),
                      box.width() * image.width(), box.height() * image.height());
    };
    if (qEnvironmentVariableIsSet("VERBOSE"))
        for (const QRectF &box : *boxes)
            std::printf("  %.0f %.0f %.0f %.0f\n", pixels(box).x(), pixels(box).y(), pixels(box).width(),
                        pixels(box).height());
    int demanded = 0;
    int hits = 0;
    QList<QRectF> left = *boxes;
    for (const QJsonValue &face : truth["faces"].toArray()) {
        const QJsonArray r = face["rect"].toArray();
        const QRectF rect(r[0].toDouble(), r[1].toDouble(), r[2].toDouble(), r[3].toDouble());
        const bool optional = face["optional"].toBool();
        demanded += !optional;
        const auto found = std::ranges::find_if(
            left, [&](const QRectF &box) { return sharedPart(pixels(box), rect) > 0.3; });
        if (found == left.end())
            continue;
        hits += !optional;
        left.erase(found);
    }
    std::printf("%-24s %d of %d faces, %d false, %lld ms, %.2f s of a core\n", qUtf8Printable(name), hits,
                demanded, int(left.size()), static_cast<long long>(elapsed), processorSeconds() - before);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const bool verbose = qEnvironmentVariableIsSet("VERBOSE");
    const QString user = qEnvironmentVariable("READ_AS", "en_US");
    const auto engine = makeTextEngine();
    const auto faces = makeFaceEngine();
    for (const QString &folder : application.arguments().mid(1)) {
        double recalls = 0;
        double precisions = 0;
        double processor = 0;
        int pages = 0;
        Hidden all;
        for (const QString &name : QDir(folder).entryList({"*.json"}, QDir::Files, QDir::Name)) {
            const QString picture = folder + "/" + QString(name).replace(".json", ".png");
            const auto truth = Json::readFile(folder + "/" + name);
            const QImage image(picture);
            if (!truth || image.isNull())
                continue;
            if (truth->object().contains("faces")) {
                countFaces(*faces, name, image, truth->object());
                continue;
            }
            const double before = processorSeconds();
            const auto lines = engine->recognize(image, {user}).takeResult();
            const double seconds = processorSeconds() - before;
            if (!lines) {
                std::fprintf(stderr, "%s\n", qUtf8Printable(lines.error().message));
                return 1;
            }
            QStringList read;
            for (const RecognizedLine &line : *lines) {
                read += plain(line.text).split(' ', Qt::SkipEmptyParts);
                if (verbose)
                    std::printf("  %4.2f |%s|\n", line.confidence, qUtf8Printable(line.text));
            }
            const QStringList expected = wordsOf(truth->object());
            auto left = counted(expected);
            int hits = 0;
            QStringList wrong;
            for (const QString &word : read) {
                if (left.value(word) > 0) {
                    --left[word];
                    ++hits;
                } else {
                    wrong += word;
                }
            }
            const double recall = double(hits) / double(std::max<qsizetype>(expected.size(), 1));
            const double precision = double(hits) / double(std::max<qsizetype>(read.size(), 1));
            recalls += recall;
            precisions += precision;
            processor += seconds;
            ++pages;
            std::printf("%-24s recall %.3f precision %.3f  %.2f s of one core\n", qUtf8Printable(name),
                        recall, precision, seconds);
            if (truth->object().contains("lines")) {
                const Hidden hidden =
                    hiddenBy(boxesOf(*lines, TextRecognizer::Boxes::Sensitive, image.size()), image.size(),
                             truth->object());
                std::printf("   private: %d of %d hidden, %d boxes elsewhere\n", hidden.hidden,
                            hidden.demanded, hidden.falseBoxes);
                all.demanded += hidden.demanded;
                all.hidden += hidden.hidden;
                all.falseBoxes += hidden.falseBoxes;
            }
            if (qEnvironmentVariableIsSet("WRONG")) {
                QStringList missed;
                for (auto it = left.begin(); it != left.end(); ++it)
                    if (it.value() > 0)
                        missed += it.key();
                std::printf("   missed: %s\n   wrong: %s\n", qUtf8Printable(missed.join("  ")),
                            qUtf8Printable(wrong.join("  ")));
            }
        }
        if (pages > 0)
            std::printf("%-24s recall %.3f precision %.3f  %.2f s  private %d of %d, %d elsewhere  %s\n\n",
                        "mean", recalls / pages, precisions / pages, processor / pages, all.hidden,
                        all.demanded, all.falseBoxes, qUtf8Printable(QDir(folder).dirName()));
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("most memory %ld MB\n", usage.ru_maxrss / 1024);
}
