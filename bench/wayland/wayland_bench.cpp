#include "platform/screen_films.h"
#include "platform/session/make_platform.h"
#include "platform/session/session_kind.h"
#include "platform/wayland/wayland_connection.h"

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
#include <map>
#include <mutex>
#include <wayland-client.h>
#include <wayland_protocols/fake-input.h>

// What the program costs in a session: from the command that a key is bound to until the overlay is painted,
// and until the running program has answered it; its own memory, and how often it wakes while nothing
// happens. Run it in a private desktop, on X11 for comparison; KWin needs platform_wayland_pattern_window
// built:
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

// KWin's own devices; elsewhere a program that has some.
class Hands {
public:
    Hands() : m_kind(sessionKind())
    {
        if (m_kind != SessionKind::Wayland)
            return;
        if (auto connection = WaylandConnection::open())
            m_connection = std::move(*connection);
        if (!m_connection || !m_connection->offers(org_kde_kwin_fake_input_interface))
            return;
        m_input = m_connection->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 4);
        org_kde_kwin_fake_input_authenticate(m_input, "bench", "bench");
        // Its desktop is black: there has to be something that an overlay can dim, apart from the pointer.
        m_window.start(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../tests/platform_wayland_pattern_window"),
                       {QStringLiteral("1"), QStringLiteral("1000"), QStringLiteral("700")});
        m_window.waitForReadyRead(10000);
        org_kde_kwin_fake_input_pointer_motion_absolute(m_input, wl_fixed_from_int(1900),
                                                        wl_fixed_from_int(1060));
        m_connection->roundtrip();
    }
    ~Hands()
    {
        m_window.kill();
        m_window.waitForFinished();
    }
    Hands(const Hands &) = delete;
    Hands &operator=(const Hands &) = delete;

    void pressEscape()
    {
        if (m_kind == SessionKind::X11) {
            QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Escape")});
        } else if (!m_input) {
            QProcess::execute(QStringLiteral("wtype"), {QStringLiteral("-k"), QStringLiteral("Escape")});
        } else {
            for (const uint32_t isDown : {1U, 0U})
                org_kde_kwin_fake_input_keyboard_key(m_input, KEY_ESC, isDown);
            m_connection->roundtrip();
        }
    }

private:
    SessionKind m_kind;
    std::unique_ptr<WaylandConnection> m_connection;
    org_kde_kwin_fake_input *m_input = nullptr;
    QProcess m_window;
};

// The colour of a place of the screen, as a film shows it.
class Eye {
public:
    Eye()
    {
        auto film = m_platform.films->start(
            {QRect(600, 400, 2, 2), Pointer::Hidden, {}, 60},
            {[this](const FilmFrame &frame) {
                 const std::lock_guard lock(m_mutex);
                 if (!frame.picture.isNull())
                     m_colour = frame.picture.pixel(0, 0);
             },
             [](const Error &error) { std::fprintf(stderr, "%s\n", qPrintable(error.message)); }});
        if (film)
            m_film = std::move(*film);
        else
            std::fprintf(stderr, "%s\n", qPrintable(film.error().message));
    }
    bool isOpen() const { return m_film != nullptr; }
    QRgb colour()
    {
        const std::lock_guard lock(m_mutex);
        return m_colour;
    }

private:
    Platform m_platform = makePlatform();
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
    // Of each thread that lives.
    std::map<QString, qint64> wakeups() const
    {
        std::map<QString, qint64> all;
        const QDir tasks(QStringLiteral("/proc/%1/task").arg(m_process.processId()));
        for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile status(tasks.filePath(task + QStringLiteral("/status")));
            (void)status.open(QFile::ReadOnly);
            for (const QByteArray &line : status.readAll().split('\n')) {
                if (line.startsWith("voluntary_ctxt"))
                    all[task] = line.split(':').last().trimmed().toLongLong();
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

// A second, over so many seconds. A thread that ends in them counts for nothing: it can't be asked any more.
double wakeupsOf(const Program &program, int seconds)
{
    std::map<QString, qint64> before = program.wakeups();
    QThread::sleep(ulong(seconds));
    qint64 all = 0;
    for (const auto &[thread, count] : program.wakeups())
        all += count - before[thread];
    return double(all) / seconds;
}

void timeOverlay(const Program &program)
{
    Eye eye;
    Hands hands; // what they open is the first that some desktops send
    if (!eye.isOpen() || !waitFor([&] { return (eye.colour() & 0xffffff) != 0; })) {
        std::fprintf(stderr, "nothing is seen that could be dimmed\n");
        return;
    }
    QThread::msleep(500); // the window that was opened for it stands
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
        hands.pressEscape();
        const bool isGone = waitFor([&] { return eye.colour() == before; });
        if (!isThere || !isGone) {
            std::fprintf(stderr, "the overlay %s\n", isThere ? "stays after Escape" : "isn't seen");
            return;
        }
        QThread::msleep(500);
    }
    const double first = painted.front();
    painted.erase(painted.begin());
    std::printf("command to painted overlay: first %.0f ms, next %zu: median %.0f ms, worst %.0f ms\n", first,
                painted.size(), median(painted), *std::ranges::max_element(painted));
    std::printf("answered by the running program: median %.0f ms, worst %.0f ms\n", median(answered),
                *std::ranges::max_element(answered));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const Program program;
    QThread::sleep(kIdleSeconds); // what is done later than the start is over
    std::printf("own memory after the start: %.1f MB\n", program.memory());
    std::printf("idle wakeups: %.2f a second\n", wakeupsOf(program, kIdleSeconds));
    timeOverlay(program);
    QThread::sleep(3);
    std::printf("own memory after overlays: %.1f MB, idle wakeups: %.2f a second\n", program.memory(),
                wakeupsOf(program, kIdleSeconds));
    return 0;
}
