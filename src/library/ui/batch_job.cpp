#include "library/ui/batch_job.h"

#include <QMetaMethod>

namespace {
constexpr int kLookInterval = 50; // milliseconds
}

BatchJob::BatchJob(QObject *parent) : QObject(parent)
{
    // Looking now and then costs less than a message for each of thousands of files.
    m_look.setInterval(kLookInterval);
    connect(&m_look, &QTimer::timeout, this, [this] {
        if (std::exchange(m_lastTold, done()) != done())
            Q_EMIT told();
    });
    m_look.start();
}

Progress BatchJob::progress() const
{
    return [state = m_state](int done, int total) {
        state->done = done;
        state->total = total;
        return !state->isCancelled;
    };
}

void BatchJob::tell(int done, int total)
{
    m_state->done = done;
    m_state->total = total;
}

void BatchJob::setStatus(const QString &status)
{
    m_status = status;
    Q_EMIT told();
}

bool BatchJob::isWatched() const
{
    return isSignalConnected(QMetaMethod::fromSignal(&BatchJob::ended));
}

void BatchJob::end(const Result<void> &result)
{
    m_look.stop();
    Q_EMIT ended(result);
    deleteLater();
}
