#pragma once

#include "base/result.h"
#include "library/batch/progress.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <atomic>
#include <memory>

// A long work on many captures while it runs. It goes on when the window that asked for it closes, and
// deletes itself after its end. Main thread only.
class BatchJob : public QObject {
    Q_OBJECT
public:
    explicit BatchJob(QObject *parent);

    // For who works, on any thread.
    Progress progress() const;
    void tell(int done, int total);
    // What is being done, in words.
    void setStatus(const QString &status);
    void end(const Result<void> &result);

    int done() const { return m_state->done; }
    int total() const { return m_state->total; }
    const QString &status() const { return m_status; }
    bool isCancelled() const { return m_state->isCancelled; }
    void cancel() { m_state->isCancelled = true; }
    // Whether somebody will hear how it ended.
    bool isWatched() const;

Q_SIGNALS:
    // It is farther than before, or at something else.
    void told();
    void ended(const Result<void> &result);

private:
    struct State {
        std::atomic<int> done = 0;
        std::atomic<int> total = 0;
        std::atomic<bool> isCancelled = false;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
    int m_lastTold = 0;
    QString m_status;
    QTimer m_look;
};
