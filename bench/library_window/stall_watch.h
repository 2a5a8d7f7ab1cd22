#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <csignal>
#include <execinfo.h>
#include <pthread.h>
#include <thread>
#include <unistd.h>

// Says what the main thread is at when its event loop stands still: a thread of its own notices that no timer
// came for so long, and has the main thread print its stack to standard error. For
// `addr2line -Cfe PROGRAM ADDRESS…`. Made and unmade on the main thread, one at a time.
class StallWatch {
public:
    explicit StallWatch(std::chrono::milliseconds limit)
        : m_limit(limit), m_main(pthread_self()), m_thread([this](const std::stop_token &stop) { watch(stop); })
    {
        signal(SIGUSR2, [](int) {
            void *frames[64];
            backtrace_symbols_fd(frames, backtrace(frames, 64), STDERR_FILENO);
            std::ignore = write(STDERR_FILENO, "--\n", 3);
        });
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { m_beat = now(); });
        m_timer.start(1);
    }

private:
    static qint64 now() { return std::chrono::steady_clock::now().time_since_epoch().count() / 1'000'000; }
    void watch(const std::stop_token &stop)
    {
        qint64 told = 0;
        while (!stop.stop_requested()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            const qint64 beat = m_beat;
            if (beat == 0 || now() - beat < m_limit.count() || now() - told < m_limit.count())
                continue;
            told = now();
            fprintf(stderr, "-- no turn of the event loop for %lld ms\n", static_cast<long long>(told - beat));
            pthread_kill(m_main, SIGUSR2);
        }
    }

    std::chrono::milliseconds m_limit;
    pthread_t m_main;
    QTimer m_timer;
    std::atomic<qint64> m_beat{0};
    std::jthread m_thread; // last: it ends before what it looks at goes
};
