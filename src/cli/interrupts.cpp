#include "cli/interrupts.h"

#include <QCoreApplication>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
int g_pipe[2] = {-1, -1}; // a signal handler can reach nothing but statics

void noteSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(g_pipe[1], &byte, 1);
}

} // namespace

Interrupts::Interrupts(std::function<void()> interrupted)
{
    if (pipe2(g_pipe, O_NONBLOCK | O_CLOEXEC) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(g_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, qApp,
                     [interrupted = std::move(interrupted)] {
                         char bytes[16];
                         if (read(g_pipe[0], bytes, sizeof bytes) > 0)
                             interrupted();
                     });
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    for (const int number : kSignals)
        sigaction(number, &action, nullptr);
}

Interrupts::~Interrupts()
{
    for (const int number : kSignals)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    for (int &end : g_pipe) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}
