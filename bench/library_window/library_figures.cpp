// Not a Google benchmark: a Library window over a folder of many captures, as a person uses it.
//   library_figures [COUNT] [FOLDER]    100,000 in a folder that goes afterwards, or in one that stays
//   STALLS=16 library_figures …         prints what the main thread is at when it is held for so long
//   OPENING_ONLY=1 library_figures …    ends when all is read
// Each figure is of what a person waits for: the time until the cards are painted.
#include "base/pending_work.h"
#include "library/library.h"
#include "library/made_library.h"
#include "library/model/text_indexing.h"
#include "library/ui/library_grid.h"
#include "library/ui/library_window.h"
#include "library/ui/library_work.h"
#include "library_window/stall_watch.h"
#include "pins/pins.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "support/stage.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QScrollBar>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

QString nameOf(int number)
{
    const QDateTime date = QDateTime(QDate(2026, 3, 14), QTime(9, 0)).addSecs(-300LL * number);
    return date.toString(QStringLiteral("'Capture' yyyy-MM-dd 'at' HH.mm.ss")) + QStringLiteral(".png");
}

// Files of their own inode each, with the dates of a year, and 300 words of text each.
void makeCaptures(const QString &folder, int count)
{
    if (QFile::exists(folder + QStringLiteral("/.lumenpost/text-index.json")))
        return;
    QDir().mkpath(folder + QStringLiteral("/.lumenpost"));
    QByteArray bytes;
    {
        QImage picture(320, 200, QImage::Format_RGB32);
        for (int y = 0; y < 200; ++y)
            for (int x = 0; x < 320; ++x)
                picture.setPixel(x, y, qRgb(x % 256, y, (x * y) % 256));
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        picture.save(&buffer, "png");
    }
    MadeTexts texts;
    QJsonObject index;
    QJsonObject sources;
    for (int i = 0; i < count; ++i) {
        QFile file(folder + QLatin1Char('/') + nameOf(i));
        if (!file.open(QIODevice::WriteOnly))
            std::exit(1);
        file.write(bytes);
        file.flush();
        file.setFileTime(QDateTime(QDate(2026, 3, 14), QTime(9, 0)).addSecs(-300LL * i),
                         QFile::FileModificationTime);
        index.insert(nameOf(i), texts.text(300));
        sources.insert(nameOf(i), QStringLiteral("Program %1").arg(i % 12));
    }
    const auto write = [&](const QString &name, const QJsonObject &object) {
        QFile file(folder + QStringLiteral("/.lumenpost/") + name);
        if (!file.open(QIODevice::WriteOnly))
            std::exit(1);
        file.write(QJsonDocument(object).toJson(QJsonDocument::Compact));
    };
    write(QStringLiteral("text-index.json"), index);
    write(QStringLiteral("library.json"),
          {{"collections", QJsonArray()}, {"sources", sources}, {"descriptions", QJsonObject()}});
}

qint64 megabytes(const char *line)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &text : file.readAll().split('\n')) {
        if (text.startsWith(line))
            return text.mid(qstrlen(line)).trimmed().split(' ').first().toLongLong() / 1024;
    }
    return 0;
}

void tell(const char *what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-52s median %7.1f ms, 99 of 100 %7.1f, most %7.1f\n", what, times[times.size() / 2],
                times[times.size() * 99 / 100], times.back());
    std::fflush(stdout);
}

// How long the event loop was held at most, while something else runs.
class Stalls : public QObject {
public:
    Stalls()
    {
        m_timer.setInterval(1);
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            m_times.push_back(double(m_clock.nsecsElapsed()) / 1e6);
            m_clock.start();
        });
        m_clock.start();
        m_timer.start();
    }
    std::vector<double> take()
    {
        m_timer.stop();
        return m_times;
    }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    std::vector<double> m_times{0};
};

void processUntil(const std::function<bool()> &isDone)
{
    QElapsedTimer limit;
    limit.start();
    while (!isDone() && limit.elapsed() < 120'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

double millisecondsOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Appearance appearance(application);
    const int count = argc > 1 ? QByteArray(argv[1]).toInt() : 100'000;
    Stage stage;
    const QString folder = argc > 2 ? QString::fromLocal8Bit(argv[2]) : stage.home.path("Shots");
    std::printf("%d captures, %d threads\n", count, QThread::idealThreadCount());
    makeCaptures(folder, count);
    stage.prefs.setSaveFolder(folder);
    const qint64 before = megabytes("VmRSS:");

    Library library(stage.prefs, stage.machine.trash, stage.clock);
    library.watch();
    LibraryModel model(library, stage.defaults, stage.clock);
    PendingWork pending;
    Pins pins(stage.machine.pasteboard, stage.notices);
    TextRecognizer recognizer(stage.machine.text, stage.machine.faces);
    TextIndexing indexing(library, recognizer);
    ClaudeClient claude(stage.machine.http, stage.prefs);
    LibraryWork work({library, stage.machine.workspace, stage.notices, claude, stage.prefs, pending,
                      stage.clock, indexing, [](const QString &) {}});
    std::unique_ptr<LibraryWindow> window;
    const auto open = [&] {
        window = std::make_unique<LibraryWindow>(LibraryPorts{
            model, stage.machine.pasteboard, stage.machine.workspace, stage.notices, pins,
            stage.machine.movies, stage.prefs, work, stage.home.path("hashes"), [](const QString &) {}});
        window->resize(1280, 800);
        window->show();
    };
    const auto paint = [&] { window->grid()->viewport()->repaint(); };
    const auto frames = [&](const char *what, const std::function<void(int)> &step, int times) {
        std::vector<double> took;
        for (int i = 0; i < times; ++i) {
            took.push_back(millisecondsOf([&] {
                step(i);
                paint();
            }));
            QCoreApplication::processEvents(); // what workers have ready comes between two frames
        }
        tell(what, took);
    };

    std::optional<StallWatch> watch;
    if (const int limit = qEnvironmentVariableIntValue("STALLS"); limit > 0)
        watch.emplace(std::chrono::milliseconds(limit));
    Stalls opening;
    std::printf("%-52s %7.0f ms\n", "window opened, first cards painted, the first time", millisecondsOf([&] {
                    open();
                    processUntil([&] { return model.visibleCount() > 0; });
                    paint();
                }));
    std::printf("%-52s %7.0f ms\n", "until texts are found, too", millisecondsOf([&] {
                    processUntil([&] { return model.reading() == LibraryModel::Reading::Done; });
                }));
    tell("turns of the event loop meanwhile", opening.take());
    std::printf("%-52s %7lld MB, at most %lld\n", "memory for all of it, window open",
                static_cast<long long>(megabytes("VmRSS:") - before),
                static_cast<long long>(megabytes("VmHWM:") - before));
    std::printf("%-52s %7lld MB\n", "of it without files that are mapped",
                static_cast<long long>(megabytes("RssAnon:")));
    if (qEnvironmentVariableIsSet("OPENING_ONLY"))
        return 0;
    window.reset();
    std::printf("%-52s %7.0f ms\n", "window opened again", millisecondsOf([&] {
                    open();
                    QCoreApplication::processEvents();
                    paint();
                }));

    QLineEdit *search = window->searchField();
    for (const char *query :
         {"e", "error", "of the", "the er", "n the e", "9.4711", "capture 2026", "xyzzy"}) {
        const QString words = QString::fromLatin1(query);
        std::vector<double> took;
        for (int round = 0; round < 5; ++round) {
            search->clear();
            for (int i = 1; i <= words.size(); ++i) {
                took.push_back(millisecondsOf([&] {
                    search->setText(words.left(i));
                    paint();
                }));
                QCoreApplication::processEvents();
            }
        }
        tell(qPrintable(QStringLiteral("key strokes of \"%1\"").arg(words)), took);
    }
    search->clear();
    frames(
        "another order",
        [&](int i) {
            model.setSort(std::array{LibrarySort::Name, LibrarySort::Size, LibrarySort::Oldest,
                                     LibrarySort::Newest}[size_t(i) % 4]);
        },
        16);
    frames(
        "another row of the sidebar",
        [&](int i) {
            model.setSidebar(i % 2 ? SidebarItem(LibraryFilter::Images)
                                   : SidebarItem(ApplicationRow{"Program 3"}));
        },
        12);
    model.setSidebar(LibraryFilter::All);
    QScrollBar *bar = window->grid()->verticalScrollBar();
    frames(
        "a turn of the wheel, thumbnails being made", [&](int) { bar->setValue(bar->value() + 120); }, 800);
    bar->setValue(0);
    frames("the same again", [&](int) { bar->setValue(bar->value() + 120); }, 800);
    std::vector<double> stored;
    for (int i = 0; i < 50; ++i) {
        const QString name = nameOf(i);
        stored.push_back(
            millisecondsOf([&] { library.catalog().setIndexedText(name, QStringLiteral("another text")); }));
        QCoreApplication::processEvents();
    }
    tell("storing one more text", stored);
    Stalls folding;
    std::ignore = millisecondsOf([&] {
        QElapsedTimer timer;
        timer.start();
        processUntil([&] { return timer.elapsed() > 15'000; });
    });
    tell("turns of the event loop while they are taken in", folding.take());
    std::printf("%-52s %7.0f ms\n", "a capture taken while the window is open", millisecondsOf([&] {
                    QImage picture(640, 400, QImage::Format_RGB32);
                    picture.fill(Qt::red);
                    const int present = model.itemCount();
                    const auto saved = library.saveInBackground(picture);
                    processUntil(
                        [&] { return model.itemCount() > present && model.visibleCount() > present; });
                    paint();
                    QFile::remove(saved.result().value_or(QString()));
                }));
    return 0;
}
