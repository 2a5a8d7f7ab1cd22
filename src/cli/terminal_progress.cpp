#include "cli/terminal_progress.h"

#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace {

volatile std::sig_atomic_t isInterrupted = 0;

void onInterrupt(int signal)
{
    isInterrupted = 1;
    std::signal(signal, SIG_DFL); // the second one ends it at once
}

} // namespace

TerminalProgress::TerminalProgress(QString what) : m_what(std::move(what))
{
    std::signal(SIGINT, onInterrupt);
    std::signal(SIGTERM, onInterrupt);
}

bool TerminalProgress::operator()(int done, int total) const
{
    if (isatty(STDERR_FILENO)) {
        const bool isEnd = done >= total || isInterrupted;
        std::fprintf(stderr, "\r%s %d / %d%s", qUtf8Printable(m_what), done, total, isEnd ? "\n" : "");
        std::fflush(stderr);
    }
    return !isInterrupted;
}
