#pragma once

#include "base/result.h"

#include <QCoroTask>
#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QTimer>
#include <QtConcurrentRun>
#include <coroutine>
#include <memory>

// Slow work and its way back to the main thread. Every continuation has an owner; when the owner dies first,
// a callback is never called and an await gives Error::Kind::Cancelled.
//
// A member coroutine must return at once, without touching `this`, when an await gave Cancelled.

template <typename T = void>
using Task = QCoro::Task<T>;

// Runs `work` on a worker thread. It must own or share what it reads.
template <typename Work>
auto runInBackground(Work &&work)
{
    return QtConcurrent::run(std::forward<Work>(work));
}

// A future that holds its value already.
template <typename T>
QFuture<T> readyFuture(T value)
{
    QPromise<T> promise;
    promise.start();
    promise.addResult(std::move(value));
    promise.finish();
    return promise.future();
}

// Calls `callback` with the result on the owner's thread, unless the owner has died or the future was
// cancelled.
template <typename T, typename Callback>
void whenDone(const QFuture<T> &future, QObject *owner, Callback callback)
{
    auto *watcher = new QFutureWatcher<T>(owner);
    QObject::connect(watcher, &QFutureWatcherBase::finished, owner,
                     [watcher, callback = std::move(callback)]() mutable {
                         watcher->deleteLater();
                         if constexpr (std::is_void_v<T>) {
                             callback();
                         } else {
                             if (watcher->future().resultCount() > 0)
                                 callback(watcher->future().takeResult());
                         }
                     });
    watcher->setFuture(future);
}

namespace async_detail {

// Resumes a coroutine once: with the future's result, or with Cancelled when the owner dies or the future is
// dropped.
template <typename T>
class GuardedAwaiter {
public:
    GuardedAwaiter(QFuture<Result<T>> future, QObject *owner) : m_future(std::move(future)), m_owner(owner) {}

    bool await_ready() const { return m_future.isFinished(); }
    void await_suspend(std::coroutine_handle<> handle)
    {
        m_watcher = std::make_unique<QFutureWatcher<Result<T>>>();
        auto *watcher = m_watcher.get();
        QObject::connect(watcher, &QFutureWatcherBase::finished, watcher, [handle] { handle.resume(); });
        QObject::connect(m_owner, &QObject::destroyed, watcher, [this, handle] {
            m_ownerDied = true;
            m_watcher->disconnect();
            handle.resume();
        });
        watcher->setFuture(m_future);
    }
    Result<T> await_resume()
    {
        if (m_watcher) {
            m_watcher->disconnect();
            m_watcher.release()->deleteLater();
        }
        if (m_ownerDied || m_future.resultCount() == 0)
            return cancelled();
        return m_future.takeResult();
    }

private:
    QFuture<Result<T>> m_future;
    QObject *m_owner;
    std::unique_ptr<QFutureWatcher<Result<T>>> m_watcher;
    bool m_ownerDied = false;
};

} // namespace async_detail

// `Result<T> r = co_await guarded(port.slowThing(), this);`
template <typename T>
auto guarded(QFuture<Result<T>> future, QObject *owner)
{
    return async_detail::GuardedAwaiter<T>(std::move(future), owner);
}

// A pause on the event loop: `if (!co_await guarded(delayed(80), this)) co_return;`
QFuture<Result<void>> delayed(int milliseconds);
