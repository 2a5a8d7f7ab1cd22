#include "base/pending_work.h"

#include "base/log.h"

#include <QTimer>
#include <memory>

int PendingWork::begin(const QString &what)
{
    m_pending.insert(m_nextId, what);
    return m_nextId++;
}

void PendingWork::end(int id)
{
    m_pending.remove(id);
    // Those who wait for the same future may hear of its end after us, and go on with more work.
    if (isIdle())
        QMetaObject::invokeMethod(this, &PendingWork::announceIfIdle, Qt::QueuedConnection);
}

void PendingWork::announceIfIdle()
{
    if (isIdle())
        Q_EMIT idle();
}

void PendingWork::whenIdle(std::chrono::milliseconds limit, const std::function<void()> &then)
{
    // Both ways out belong to this one object, so that the first closes the other.
    auto *waiting = new QTimer(this);
    waiting->setSingleShot(true);
    const auto leave = [waiting, then] {
        waiting->disconnect();
        waiting->stop();
        waiting->deleteLater();
        then();
    };
    connect(this, &PendingWork::idle, waiting, leave);
    connect(waiting, &QTimer::timeout, waiting, [this, leave] {
        if (!isIdle())
            Log::error(QStringLiteral("Given up after waiting: ") + underWay().join(QStringLiteral(", ")));
        leave();
    });
    waiting->start(isIdle() ? std::chrono::milliseconds(0) : limit);
}
