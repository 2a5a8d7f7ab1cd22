#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

// Turns the signals that ask a command to end (SIGINT, SIGTERM, SIGHUP) into a call from the event loop,
// while it lives. One at a time.
class Interrupts {
public:
    explicit Interrupts(std::function<void()> interrupted);
    ~Interrupts();
    Interrupts(const Interrupts &) = delete;
    Interrupts &operator=(const Interrupts &) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
