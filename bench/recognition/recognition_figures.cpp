// Figures of reading over a folder of pages with their truth: how many words are found and how many of the
// found are right, by page, and the time each took.
//
//     bench_recognition FOLDER…
//
// A page is NAME.png with NAME.json: either "lines" with "text", or "words" with "text".

#include "base/json.h"
#include "platform/face_engine.h"
#include "platform/session/recognition_loader.h"
#include "platform/text_engine.h"

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

QStringList wordsOf(const QJsonObject &truth)
{
    QStringList words;
    for (const char *key : {"lines", "words"})
        for (const QJsonValue &entry : truth[QLatin1String(key)].toArray())
            words += entry["text"].toString().simplified().split(' ', Qt::SkipEmptyParts);
    return words;
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
    const auto engine = makeTextEngine();
    const auto faces = makeFaceEngine();
    for (const QString &folder : application.arguments().mid(1)) {
        double recalls = 0;
        double precisions = 0;
        int pages = 0;
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
            const auto lines = engine->recognize(image, {"en_US"}).takeResult();
            const double seconds = processorSeconds() - before;
            if (!lines) {
                std::fprintf(stderr, "%s\n", qUtf8Printable(lines.error().message));
                return 1;
            }
            QStringList read;
            for (const RecognizedLine &line : *lines) {
                read += line.text.split(' ', Qt::SkipEmptyParts);
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
            ++pages;
            std::printf("%-24s recall %.3f precision %.3f  %.2f s of one core\n", qUtf8Printable(name),
                        recall, precision, seconds);
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
            std::printf("%-24s recall %.3f precision %.3f\n\n", "mean", recalls / pages, precisions / pages);
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("most memory %ld MB\n", usage.ru_maxrss / 1024);
}
