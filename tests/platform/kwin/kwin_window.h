#pragma once

#include "platform/pattern.h"
#include "platform/wayland/kwin_script.h"

#include <QProcess>
#include <QRect>
#include <QTest>
#include <functional>

inline bool eventually(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, 20000);
}

// A window of another process, showing pattern(seed) at `frame`, in global points, above all others.
class KWinWindow {
public:
    KWinWindow(int seed, const QRect &frame, double scale = 1) : m_seed(seed), m_frame(frame), m_scale(scale)
    {
        m_process.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/platform_wayland_pattern_window"),
                        {QString::number(seed), QString::number(frame.width()),
                         QString::number(frame.height()), QString::number(scale)});
        m_process.waitForReadyRead(10000);
        eventually([&] {
            return script(QStringLiteral("w.frameGeometry = {x: %1, y: %2, width: %3, height: %4};")
                              .arg(frame.x())
                              .arg(frame.y())
                              .arg(frame.width())
                              .arg(frame.height()));
        });
    }
    ~KWinWindow()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    KWinWindow(const KWinWindow &) = delete;
    KWinWindow &operator=(const KWinWindow &) = delete;

    qint64 pid() const { return m_process.processId(); }
    QImage picture() const { return pattern((QSizeF(m_frame.size()) * m_scale).toSize(), m_seed); }
    QRect frame() const { return m_frame; }
    bool script(const QString &what) const
    {
        static KWinScript scripts;
        return scripts
            .run(QStringLiteral(
                     "var all = workspace.clientList ? workspace.clientList() : workspace.windowList();"
                     "for (var i = 0; i < all.length; ++i) { var w = all[i]; "
                     "if (w.pid == %1) { %2 return true; } } return false;")
                     .arg(pid())
                     .arg(what))
            .value_or(QJsonValue())
            .toBool();
    }
    void activate() const
    {
        script(QStringLiteral("if ('activeWindow' in workspace) workspace.activeWindow = w; "
                              "else workspace.activeClient = w;"));
    }

private:
    int m_seed;
    QRect m_frame;
    double m_scale;
    QProcess m_process;
};
