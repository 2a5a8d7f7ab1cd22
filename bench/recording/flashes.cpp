// What a film's sound and picture are held against each other by: a window that turns white for a tenth of a
// second as the sound server plays a beep. The beeps come at uneven times, so that they fall anywhere between
// two frames of a film. The window follows the server's own account of what it plays, to a few milliseconds.
//   bench_flashes SECONDS
#include <QBackingStore>
#include <QGuiApplication>
#include <QPainter>
#include <QRandomGenerator>
#include <QTimer>
#include <QWindow>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <pulse/pulseaudio.h>

namespace {

constexpr int kRate = 48000;
constexpr double kBeep = 0.1;       // seconds
constexpr double kFirst = 3.0;      // when the first is heard, in seconds
constexpr double kLeastApart = 2.0; // seconds, and up to one more
constexpr double kTone = 880;       // Hz

class Flashes : public QWindow {
public:
    explicit Flashes(double length)
    {
        QRandomGenerator dice(1);
        for (double at = kFirst; at < length; at += kLeastApart + dice.generateDouble())
            m_beeps.append(at);
    }
    const QList<double> &beeps() const { return m_beeps; }
    void follow(double played)
    {
        const bool isWhite = sounds(played);
        if (isWhite != m_isWhite) {
            m_isWhite = isWhite;
            paint();
        }
    }
    bool sounds(double at) const
    {
        const auto after = std::ranges::upper_bound(m_beeps, at);
        return after != m_beeps.begin() && at < *(after - 1) + kBeep;
    }

protected:
    void exposeEvent(QExposeEvent *) override { paint(); }

private:
    void paint() // at once, which a window's own turn to paint isn't
    {
        const QRect all(QPoint(), size());
        m_store.resize(size());
        m_store.beginPaint(all);
        QPainter(m_store.paintDevice()).fillRect(all, m_isWhite ? Qt::white : Qt::black);
        m_store.endPaint();
        m_store.flush(all);
    }

    QBackingStore m_store{this};
    QList<double> m_beeps;
    bool m_isWhite = false;
};

// Plays the beeps of a window as the server asks for sound; all on the server connection's own thread.
class Player {
public:
    explicit Player(const Flashes &flashes) : m_flashes(flashes), m_loop(pa_threaded_mainloop_new())
    {
        m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "bench_flashes");
        pa_context_set_state_callback(
            m_context, [](pa_context *, void *self) { static_cast<Player *>(self)->begin(); }, this);
        pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
        pa_threaded_mainloop_start(m_loop);
    }
    ~Player()
    {
        pa_threaded_mainloop_stop(m_loop);
        if (m_stream)
            pa_stream_unref(m_stream);
        pa_context_unref(m_context);
        pa_threaded_mainloop_free(m_loop);
    }
    Q_DISABLE_COPY_MOVE(Player)

    // Seconds of sound that have been played.
    double played() const
    {
        pa_threaded_mainloop_lock(m_loop);
        pa_usec_t time = 0;
        if (m_stream)
            pa_stream_get_time(m_stream, &time);
        pa_threaded_mainloop_unlock(m_loop);
        return double(time) / 1e6;
    }

private:
    void begin()
    {
        if (pa_context_get_state(m_context) != PA_CONTEXT_READY)
            return;
        const pa_sample_spec format{PA_SAMPLE_S16LE, kRate, 1};
        m_stream = pa_stream_new(m_context, "flashes", &format, nullptr);
        pa_stream_set_write_callback(
            m_stream,
            [](pa_stream *, size_t bytes, void *self) { static_cast<Player *>(self)->write(bytes); }, this);
        const pa_buffer_attr buffer{UINT32_MAX, kRate / 5 * sizeof(qint16), UINT32_MAX, UINT32_MAX,
                                    UINT32_MAX};
        pa_stream_connect_playback(m_stream, nullptr, &buffer,
                                   pa_stream_flags_t(PA_STREAM_INTERPOLATE_TIMING |
                                                     PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_ADJUST_LATENCY),
                                   nullptr, nullptr);
    }
    void write(size_t bytes)
    {
        QList<qint16> samples(qsizetype(bytes / sizeof(qint16)));
        for (qint16 &sample : samples) {
            const double at = double(m_written++) / kRate;
            sample = m_flashes.sounds(at) ? qint16(26000 * std::sin(2 * std::numbers::pi * kTone * at)) : 0;
        }
        pa_stream_write(m_stream, samples.constData(), samples.size() * sizeof(qint16), nullptr, 0,
                        PA_SEEK_RELATIVE);
    }

    const Flashes &m_flashes;
    pa_threaded_mainloop *m_loop;
    pa_context *m_context;
    pa_stream *m_stream = nullptr;
    qint64 m_written = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const double length = QCoreApplication::arguments().value(1).toDouble();
    if (length <= 0)
        return 2;
    Flashes flashes(length);
    flashes.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    flashes.setGeometry(100, 100, 320, 240);
    flashes.show();
    const Player player(flashes);
    QTimer ticks;
    ticks.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticks, &QTimer::timeout, &flashes, [&] { flashes.follow(player.played()); });
    ticks.start(1);
    QTimer::singleShot(int(length * 1000), &application, &QCoreApplication::quit);
    return QGuiApplication::exec();
}
