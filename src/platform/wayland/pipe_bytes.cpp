#include "platform/wayland/pipe_bytes.h"

#include <QThreadPool>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int kPatience = 5000;                      // milliseconds without a byte
constexpr qsizetype kLargest = qsizetype(512) << 20; // bytes

bool isReady(int file, short events)
{
    pollfd waiting{file, events, 0};
    return poll(&waiting, 1, kPatience) > 0;
}

void write(int file, const QByteArray &bytes)
{
    // A reader that has gone is an error, not the end of the program; the signal is this thread's alone.
    sigset_t broken;
    sigemptyset(&broken);
    sigaddset(&broken, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &broken, nullptr);
    fcntl(file, F_SETFL, fcntl(file, F_GETFL) | O_NONBLOCK);
    qsizetype written = 0;
    while (written < bytes.size() && isReady(file, POLLOUT)) {
        const ssize_t now = ::write(file, bytes.constData() + written, size_t(bytes.size() - written));
        if (now < 0 && errno != EAGAIN && errno != EINTR)
            break;
        written += std::max<ssize_t>(now, 0);
    }
    close(file);
}

// A pool of its own: a reader that never reads must not keep other work waiting.
QThreadPool &senders()
{
    static QThreadPool pool;
    pool.setMaxThreadCount(8);
    return pool;
}

} // namespace

void PipeBytes::send(int file, const QByteArray &bytes)
{
    senders().start([file, bytes] { write(file, bytes); });
}

QByteArray PipeBytes::receive(int file, qsizetype wanted)
{
    QByteArray bytes;
    bytes.reserve(std::max<qsizetype>(0, std::min(wanted, kLargest)));
    std::array<char, 65536> part;
    while (wanted < 0 || bytes.size() < wanted) {
        const ssize_t got = isReady(file, POLLIN) ? read(file, part.data(), part.size()) : -1;
        if (got == 0)
            break;
        if (got < 0 || bytes.size() + got > kLargest) {
            bytes.clear();
            break;
        }
        bytes.append(part.data(), got);
    }
    close(file);
    return bytes;
}
