#pragma once

#include "platform/pattern.h"
#include "platform/wayland/sway_ipc.h"

#include <QProcess>
#include <QRect>
#include <QTest>
#include <functional>

// Whether the condition becomes true in the end; events are handled meanwhile.
inline bool eventually(const std::function<bool()> &condition, int milliseconds = 20000)
{
    return QTest::qWaitFor(condition, milliseconds);
}

// A window of another process, showing pattern(seed) at `frame`, in global points, above all others.
class SwayWindow {
public:
    SwayWindow(int seed, const QRect &frame, double scale = 1) : m_seed(seed), m_frame(frame), m_scale(scale)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/platform_wayland_pattern_window"),
                        {QString::number(seed), QString::number(frame.width()),
                         QString::number(frame.height()), QString::number(scale)});
        m_process.waitForReadyRead(10000);
        command("move absolute position " + QByteArray::number(frame.x()) + ' ' +
                QByteArray::number(frame.y()));
    }
    ~SwayWindow()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    SwayWindow(const SwayWindow &) = delete;
    SwayWindow &operator=(const SwayWindow &) = delete;

    qint64 pid() const { return m_process.processId(); }
    QRect frame() const { return m_frame; }
    QImage picture() const { return pattern((QSizeF(m_frame.size()) * m_scale).toSize(), m_seed); }
    QByteArray said() { return m_process.readAllStandardOutput(); }
    bool command(const QByteArray &what) const
    {
        return eventually([&] { return SwayIpc::run("[pid=" + QByteArray::number(pid()) + "] " + what); });
    }

private:
    int m_seed;
    QRect m_frame;
    double m_scale;
    QProcess m_process;
};
