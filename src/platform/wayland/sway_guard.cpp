#include "platform/wayland/sway_guard.h"

#include "platform/wayland/sway_ipc.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char kDone = '\0'; // no command ends so
constexpr std::size_t kMost = 32768;

// In the copy of a process with many threads: nothing but system calls.
[[noreturn]] void waitAndRun(int pipe, int sway)
{
    std::array<char, kMost> said;
    std::size_t length = 0;
    while (true) {
        const ssize_t got = read(pipe, said.data() + length, said.size() - length);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        length += std::size_t(got);
    }
    if (length > 0 && said[length - 1] != kDone && send(sway, said.data(), length, MSG_NOSIGNAL) > 0)
        recv(sway, said.data(), said.size(), 0); // it has taken them
    _exit(0);
}

} // namespace

SwayGuard::SwayGuard(const QByteArray &commands)
{
    std::array<int, 2> ends{};
    const int sway = SwayIpc::open();
    if (sway < 0)
        return;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        close(sway);
        return;
    }
    m_process = fork();
    if (m_process == 0) {
        close(ends[1]);
        setsid(); // what ends the program's group leaves it alone
        for (const int ignored : {SIGINT, SIGTERM, SIGHUP})
            signal(ignored, SIG_IGN);
        waitAndRun(ends[0], sway);
    }
    close(sway);
    close(ends[0]);
    if (m_process < 0) {
        close(ends[1]);
        return;
    }
    m_pipe = ends[1];
    add(commands);
}

SwayGuard::~SwayGuard()
{
    if (m_pipe < 0)
        return;
    (void)!write(m_pipe, &kDone, 1);
    close(m_pipe);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void SwayGuard::add(const QByteArray &commands)
{
    const QByteArray message = SwayIpc::message(SwayIpc::Ask::RunCommand, commands);
    if (m_pipe >= 0 && message.size() < qsizetype(kMost / 4))
        (void)!write(m_pipe, message.constData(), size_t(message.size()));
}
