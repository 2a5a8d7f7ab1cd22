// A window to be filmed: a page that scrolls while text is typed on it, each state with its number in black
// and white squares at the top left. Writes a line for each state: its number and when it had been drawn, in
// seconds.
//   bench_recording_page WIDTH HEIGHT MILLISECONDS_PER_STATE SECONDS [still]
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QTimer>
#include <cstdio>
#include <time.h>

namespace {

constexpr int kBits = 16;
constexpr int kSquare = 16;

double seconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

class Scene : public QRasterWindow {
public:
    Scene(QSize size, bool isStill)
        : m_page(size.width(), 3 * size.height(), QImage::Format_RGB32), m_isStill(isStill)
    {
        m_page.fill(Qt::white);
        QPainter painter(&m_page);
        painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 11));
        for (int y = 20, line = 0; y < m_page.height(); y += 22, ++line) {
            painter.setPen(line % 7 == 0 ? QColor(20, 80, 160) : QColor(30, 30, 30));
            painter.drawText(
                20, y,
                QStringLiteral("%1  The quick brown fox jumps over the lazy dog, and the page goes on ")
                    .arg(line)
                    .repeated(3));
        }
    }
    void advance()
    {
        ++m_state;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const int offset = m_isStill ? 0 : m_state * 7 % (m_page.height() - height());
        painter.drawImage(QPoint(0, 0), m_page, QRect(QPoint(0, offset), size()));
        painter.fillRect(width() / 2, 100, 420, 60, Qt::black);
        painter.setPen(Qt::green);
        painter.drawText(width() / 2 + 10, 135, QStringLiteral("typed so far: %1").arg(m_state).repeated(2));
        for (int bit = 0; bit < kBits; ++bit)
            painter.fillRect(bit * kSquare, 0, kSquare, kSquare, m_state >> bit & 1 ? Qt::white : Qt::black);
        painter.end();
        const int state = m_state;
        QTimer::singleShot(0, this, [state] {
            std::printf("%d %.6f\n", state, seconds());
            std::fflush(stdout);
        });
    }

private:
    QImage m_page;
    bool m_isStill;
    int m_state = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 5)
        return 2;
    const QSize size(words[1].toInt(), words[2].toInt());
    const bool isStill = words.value(5) == QLatin1String("still");
    Scene scene(size, isStill);
    scene.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    scene.setGeometry(QRect(QPoint(), size));
    scene.show();
    QTimer states;
    states.setTimerType(Qt::PreciseTimer);
    QObject::connect(&states, &QTimer::timeout, &scene, [&] { scene.advance(); });
    if (!isStill)
        states.start(words[3].toInt());
    QTimer::singleShot(words[4].toInt() * 1000, &application, &QCoreApplication::quit);
    return QGuiApplication::exec();
}
