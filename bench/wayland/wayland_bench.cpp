#include "platform/screen_casts.h"
#include "platform/session/media_loader.h"
#include "platform/session/session_kind.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_screen_films.h"
#include "platform/wayland/wayland_screens.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <linux/input-event-codes.h>
#include <mutex>
#include <wayland-client.h>
#include <wayland_protocols/fake-input.h>

// What the program costs in a session: from the command that a key is bound to until the overlay is painted,
// and until the running program has answered it; its own memory, and how often it wakes while nothing
// happens. On X11 memory and wakeups alone. Run it in a private desktop:
//
//   tests/desktop/wayland-desktop run sway build/release/bench/bench_wayland
//   WD_ALLOW="$PWD/build/release/bench/bench_wayland $PWD/build/release/bin/lumenpost"
//       tests/desktop/wayland-desktop run kwin build/release/bench/bench_wayland
//   tests/desktop/test-desktop run build/release/bench/bench_wayland

namespace {

constexpr int kTimes = 15;
constexpr int kIdleSeconds = 20;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? -1 : values[values.size() / 2];
}

bool waitFor(const std::function<bool()> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 10000)
            return false;
        QThread::msleep(1);
    }
    return true;
}

void pressEscape()
{
    const auto connection = WaylandConnection::open();
    if (!connection || !(*connection)->offers(org_kde_kwin_fake_input_interface)) {
        QProcess::execute(QStringLiteral("wtype"), {QStringLiteral("-k"), QStringLiteral("Escape")});
        return;
    }
    auto *input = (*connection)->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 4);
    org_kde_kwin_fake_input_authenticate(input, "bench", "bench");
    for (const uint32_t isDown : {1U, 0U})
        org_kde_kwin_fake_input_keyboard_key(input, KEY_ESC, isDown);
    (*connection)->roundtrip();
    QThread::msleep(50);
}

// The colour of a place of the screen, as a film shows it.
class Eye {
public:
    Eye() : m_films(makeScreenCasts(), QDir::tempPath())
    {
        auto film = m_films.start({QRect(600, 400, 2, 2), Pointer::Hidden, {}, 120},
                                  {[this](const FilmFrame &frame) {
                                       const std::lock_guard lock(m_mutex);
                                       if (!frame.picture.isNull())
                                           m_colour = frame.picture.pixel(0, 0);
                                   },
                                   [](const Error &) {}});
        if (film)
            m_film = std::move(*film);
    }
    bool isOpen() const { return m_film != nullptr; }
    QRgb colour()
    {
        const std::lock_guard lock(m_mutex);
        return m_colour;
    }

private:
    WaylandScreenFilms m_films;
    std::mutex m_mutex;
    QRgb m_colour = 0;
    std::unique_ptr<ScreenFilm> m_film;
};

class Program {
public:
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"CONFIG", "STATE", "CACHE", "DATA"})
            environment.insert(QStringLiteral("XDG_%1_HOME").arg(QLatin1String(name)),
                               m_home.filePath(QLatin1String(name)));
        environment.insert(QStringLiteral("HOME"), m_home.path());
        QDir().mkpath(m_home.filePath(QStringLiteral("CONFIG/com.oakfenrow.lumenpost")));
        QFile settings(m_home.filePath(QStringLiteral("CONFIG/com.oakfenrow.lumenpost/defaults.json")));
        if (settings.open(QFile::WriteOnly))
            settings.write(R"({"didShowWelcome": true, "shutterSound": false})");
        settings.close();
        m_process.setProcessEnvironment(environment);
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(path(), QStringList());
        waitFor([this] {
            QFile log(m_home.filePath(QStringLiteral("STATE/lumenpost/lumenpost.log")));
            return log.open(QFile::ReadOnly) && log.readAll().contains("Ready for shortcuts");
        });
    }
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    // Milliseconds until it was answered.
    double command(const QStringList &words) const
    {
        QElapsedTimer timer;
        timer.start();
        QProcess process;
        process.setProcessEnvironment(m_process.processEnvironment());
        process.start(path(), words);
        process.waitForFinished();
        return double(timer.nsecsElapsed()) / 1e6;
    }
    double memory() const // MB
    {
        QFile status(QStringLiteral("/proc/%1/status").arg(m_process.processId()));
        (void)status.open(QFile::ReadOnly);
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("RssAnon:"))
                return line.mid(8).simplified().split(' ').first().toDouble() / 1024;
        }
        return -1;
    }
    qint64 wakeups() const
    {
        qint64 all = 0;
        const QDir tasks(QStringLiteral("/proc/%1/task").arg(m_process.processId()));
        for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile status(tasks.filePath(task + QStringLiteral("/status")));
            (void)status.open(QFile::ReadOnly);
            for (const QByteArray &line : status.readAll().split('\n')) {
                if (line.startsWith("voluntary_ctxt"))
                    all += line.split(':').last().trimmed().toLongLong();
            }
        }
        return all;
    }

private:
    static QString path()
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/lumenpost");
    }

    QTemporaryDir m_home;
    QProcess m_process;
};

void timeOverlay(const Program &program)
{
    Eye eye;
    if (!eye.isOpen())
        return;
    waitFor([&] { return eye.colour() != 0; });
    std::vector<double> painted;
    std::vector<double> answered;
    for (int i = 0; i <= kTimes; ++i) {
        const QRgb before = eye.colour();
        QElapsedTimer timer;
        timer.start();
        std::thread command([&] { answered.push_back(program.command({"capture", "region"})); });
        const bool isThere = waitFor([&] { return eye.colour() != before; });
        if (isThere)
            painted.push_back(double(timer.nsecsElapsed()) / 1e6);
        command.join();
        QThread::msleep(300);
        pressEscape();
        waitFor([&] { return eye.colour() == before; });
        QThread::msleep(500);
    }
    const double first = painted.empty() ? -1 : painted.front();
    if (!painted.empty())
        painted.erase(painted.begin());
    std::printf("command to painted overlay: first %.0f ms, next %zu: median %.0f ms, worst %.0f ms\n", first,
                painted.size(), median(painted), painted.empty() ? -1 : *std::ranges::max_element(painted));
    std::printf("answered by the running program: median %.0f ms, worst %.0f ms\n", median(answered),
                *std::ranges::max_element(answered));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Program program;
    QThread::sleep(20); // what is done later than the start is over
    std::printf("own memory after the start: %.1f MB\n", program.memory());
    const qint64 before = program.wakeups();
    QThread::sleep(kIdleSeconds);
    std::printf("idle wakeups: %.2f a second\n", double(program.wakeups() - before) / kIdleSeconds);
    if (sessionKind() != SessionKind::Wayland)
        return 0;
    timeOverlay(program);
    QThread::sleep(3);
    std::printf("own memory after overlays: %.1f MB\n", program.memory());
    return 0;
}
