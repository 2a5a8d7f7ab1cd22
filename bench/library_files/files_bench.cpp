// Not a Google benchmark: each figure is of one run over many files.
#include "base/parallel.h"
#include "document/image_files.h"
#include "library/batch/duplicates.h"
#include "library/batch/exporter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <atomic>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <tuple>

namespace {

// A full screen with windows, text and a picture, each another.
QImage screen(int number)
{
    QRandomGenerator random(static_cast<quint32>(number));
    QImage image(1920, 1080, QImage::Format_RGB32);
    QLinearGradient ground(0, 0, 1920, 1080);
    ground.setColorAt(0, QColor::fromHsv(random.bounded(360), 90, 200));
    ground.setColorAt(1, QColor::fromHsv(random.bounded(360), 120, 120));
    QPainter painter(&image);
    painter.fillRect(image.rect(), ground);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    painter.setFont(font);
    for (int window = 0; window < 3; ++window) {
        const QRect frame(random.bounded(900), random.bounded(400), 900 + random.bounded(300),
                          500 + random.bounded(200));
        painter.fillRect(frame, QColor(250, 250, 252));
        painter.fillRect(frame.x(), frame.y(), frame.width(), 30, QColor(225, 225, 230));
        painter.setPen(QColor(30, 30, 34));
        for (int line = 0; line < frame.height() / 18 - 3; ++line) {
            QString text;
            for (int word = 0; word < 14; ++word)
                text += QString::number(random.bounded(1'000'000), 36) + QLatin1Char(' ');
            painter.drawText(frame.x() + 12, frame.y() + 50 + 18 * line, text);
        }
    }
    for (int y = 0; y < 300; ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(700 + y)) + 1400;
        for (int x = 0; x < 400; ++x)
            row[x] = qRgb(120 + random.bounded(60), x / 2, y / 2);
    }
    return image;
}

void measure(const char *what, const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    work();
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    std::printf("%-44s %7.2f s  (processor %7.2f s, largest so far %ld MB)\n", what,
                double(timer.elapsed()) / 1000,
                seconds(after.ru_utime) + seconds(after.ru_stime) - seconds(before.ru_utime) -
                    seconds(before.ru_stime),
                after.ru_maxrss / 1024);
    std::fflush(stdout);
}

void forAll(const QStringList &paths, const std::function<void(const QString &)> &work)
{
    std::atomic<qsizetype> next = 0;
    inParallel(QThread::idealThreadCount(), [&](int) {
        for (qsizetype i = next++; i < paths.size(); i = next++)
            work(paths[i]);
    });
}

} // namespace

// files_bench [FOLDER]: makes 600 pictures there, unless they are, and prints the figures.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QTemporaryDir own;
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : own.path();
    QDir().mkpath(folder);
    QStringList paths;
    QStringList missing;
    for (int i = 0; i < 600; ++i) {
        paths.append(QStringLiteral("%1/Capture %2.png").arg(folder).arg(i));
        if (!QFile::exists(paths.last()))
            missing.append(paths.last());
    }
    forAll(missing, [&](const QString &path) {
        std::ignore = ImageFiles::write(screen(static_cast<int>(paths.indexOf(path))), path);
    });
    QDir(folder + QStringLiteral("/.lumenpost/thumbs")).removeRecursively();
    measure("600 thumbnails, 256 px",
            [&] { forAll(paths, [](const QString &path) { ImageFiles::cachedThumbnail(path, 256); }); });
    measure("the same from the cache",
            [&] { forAll(paths, [](const QString &path) { ImageFiles::cachedThumbnail(path, 256); }); });
    const QString cache = own.filePath(QStringLiteral("hashes"));
    measure("duplicates among 600, cold", [&] { std::ignore = Duplicates::scan(paths, cache); });
    measure("duplicates again", [&] { std::ignore = Duplicates::scan(paths, cache); });

    QList<Duplicates::Hashed> hashes;
    QRandomGenerator random(5);
    for (int i = 0; i < 100'000; ++i) {
        // Half of them alike in most bits, as plain pages are.
        quint64 hash =
            i % 2 ? random.generate64() : random.generate64() & random.generate64() & random.generate64();
        hashes.append({QString::number(i), hash});
    }
    measure("grouping 100,000 hashes", [&] { Duplicates::groups(hashes); });

    QDir().mkpath(own.filePath(QStringLiteral("out")));
    measure("export of 200 to JPEG", [&] {
        Exporter::exportFiles(paths.mid(0, 200), own.filePath(QStringLiteral("out")), ExportFormat::Jpg, {});
    });
    QList<Exporter::PdfPage> pages;
    for (const QString &path : paths.mid(0, 100))
        pages.append(Exporter::pageOfFile(path, QStringLiteral("A caption")));
    measure("PDF of 100", [&] {
        std::ignore = Exporter::pdf(pages, QStringLiteral("Guide"), Exporter::PageSize::Fit,
                                    own.filePath(QStringLiteral("guide.pdf")));
    });
    return 0;
}
