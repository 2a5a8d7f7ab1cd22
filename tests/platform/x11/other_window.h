#pragma once

#include "platform/pattern.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRect>
#include <QTest>
#include <functional>

// Whether the condition becomes true in the end; events are handled meanwhile. A busy machine may need
// seconds.
inline bool eventually(const std::function<bool()> &condition, int milliseconds = 20000)
{
    return QTest::qWaitFor(condition, milliseconds);
}

// Runs a desktop tool to its end.
inline bool run(const QString &program, const QStringList &words)
{
    return QProcess::execute(program, words) == 0;
}

// A window of another process, showing pattern(seed) at `geometry`.
class OtherWindow {
public:
    OtherWindow(int seed, const QRect &geometry, const QStringList &words = {QStringLiteral("frameless")})
        : m_seed(seed), m_geometry(geometry)
    {
        QStringList arguments{QString::number(seed), QString::number(geometry.x()),
                              QString::number(geometry.y()), QString::number(geometry.width()),
                              QString::number(geometry.height())};
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/platform_pattern_window"),
                        arguments + words);
        while (m_id == 0 && m_process.waitForReadyRead(10000))
            m_id = m_process.readLine().trimmed().toUInt();
    }
    // Waits until the window manager has forgotten it: the next program gets the same window ids, and would
    // be taken for this one.
    ~OtherWindow()
    {
        m_process.kill();
        m_process.waitForFinished();
        eventually([this] { return !isManaged(); });
    }
    OtherWindow(const OtherWindow &) = delete;
    OtherWindow &operator=(const OtherWindow &) = delete;

    quint32 id() const { return m_id; } // 0 if it did not come up
    qint64 pid() const { return m_process.processId(); }
    QRect geometry() const { return m_geometry; }
    QImage picture() const { return pattern(m_geometry.size(), m_seed); }
    void raise() const
    {
        run(QStringLiteral("xdotool"), {QStringLiteral("windowraise"), QString::number(m_id)});
    }
    void activate() const
    {
        run(QStringLiteral("xdotool"),
            {QStringLiteral("windowactivate"), QStringLiteral("--sync"), QString::number(m_id)});
    }

private:
    bool isManaged() const
    {
        QProcess list;
        list.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST")});
        list.waitForFinished();
        return list.readAllStandardOutput().contains("0x" + QByteArray::number(m_id, 16));
    }

    int m_seed;
    QRect m_geometry;
    QProcess m_process;
    quint32 m_id = 0;
};
