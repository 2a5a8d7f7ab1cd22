#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>

// Work that outlives the window that asked for it: saving, copying, uploading. The program owns one of these,
// and quitting waits for what is pending. The continuations of such work belong to the program too, never to
// the window. Main thread only.
class PendingWork : public QObject {
    Q_OBJECT
public:
    // How long quitting waits.
    static constexpr std::chrono::milliseconds kLimit{10000};

    using QObject::QObject;

    // Counts the work as pending until its future has ended, in whatever way. `what` names it in the log, as in
    // "saving Invoice.png". The result stays for those who asked.
    template <typename T>
    void keep(const QString &what, const QFuture<T> &future)
    {
        auto *watcher = new QFutureWatcher<T>(this);
        const int id = begin(what);
        connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, id] {
            watcher->deleteLater();
            end(id);
        });
        watcher->setFuture(future);
    }

    bool isIdle() const { return m_pending.isEmpty(); }
    // What is pending, oldest first.
    QStringList underWay() const { return m_pending.values(); }
    // Calls `then` once, from the event loop: when nothing is pending, or after `limit`, which a line in the log
    // tells with the names of what was given up.
    void whenIdle(std::chrono::milliseconds limit, const std::function<void()> &then);

Q_SIGNALS:
    // The last pending work has ended, and what followed from it has started nothing new.
    void idle();

private:
    int begin(const QString &what);
    void end(int id);
    void announceIfIdle();

    QMap<int, QString> m_pending;
    int m_nextId = 0;
};
