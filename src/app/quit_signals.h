#pragma once

#include <QSocketNotifier>
#include <memory>

// Ends the program in order when the session or the user asks it to by SIGTERM, SIGINT or SIGHUP.
class QuitSignals {
public:
    QuitSignals();
    ~QuitSignals();
    QuitSignals(const QuitSignals &) = delete;
    QuitSignals &operator=(const QuitSignals &) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
