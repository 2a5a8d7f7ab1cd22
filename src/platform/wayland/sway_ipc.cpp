#include "platform/wayland/sway_ipc.h"

#include "platform/wayland/wayland_connection.h"

#include <QJsonArray>
#include <QJsonObject>
#include <array>
#include <cstring>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr std::array<char, 6> kMagic{'i', '3', '-', 'i', 'p', 'c'};
constexpr quint32 kLargest = 64U << 20U; // bytes of an answer
constexpr time_t kPatience = 2;          // seconds

struct Header {
    std::array<char, 6> magic = kMagic;
    std::array<char, 4> length{};
    std::array<char, 4> type{};
};
static_assert(sizeof(Header) == 14);

class Socket {
public:
    Socket()
    {
        const QByteArray path = qgetenv("SWAYSOCK");
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.isEmpty() || size_t(path.size()) >= sizeof address.sun_path)
            return;
        std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
        const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (file < 0)
            return;
        const timeval patience{kPatience, 0};
        setsockopt(file, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        setsockopt(file, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        if (connect(file, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
            m_file = file;
        else
            close(file);
    }
    ~Socket()
    {
        if (m_file >= 0)
            close(m_file);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    bool send(SwayIpc::Ask what, const QByteArray &payload) const
    {
        const QByteArray message = SwayIpc::message(what, payload);
        return m_file >= 0 &&
               ::send(m_file, message.constData(), size_t(message.size()), MSG_NOSIGNAL) == message.size();
    }
    std::optional<QByteArray> receive() const
    {
        Header header;
        quint32 length = 0;
        if (!read(reinterpret_cast<char *>(&header), sizeof header) || header.magic != kMagic)
            return std::nullopt;
        std::memcpy(&length, header.length.data(), sizeof length);
        if (length > kLargest)
            return std::nullopt;
        QByteArray payload(qsizetype(length), Qt::Uninitialized);
        if (!read(payload.data(), size_t(length)))
            return std::nullopt;
        return payload;
    }
    int release() { return std::exchange(m_file, -1); }

private:
    bool read(char *bytes, size_t count) const
    {
        while (count > 0) {
            const ssize_t got = recv(m_file, bytes, count, 0);
            if (got <= 0)
                return false;
            bytes += got;
            count -= size_t(got);
        }
        return true;
    }

    int m_file = -1;
};

} // namespace

bool SwayIpc::isOffered()
{
    return !qEnvironmentVariableIsEmpty("SWAYSOCK");
}

Result<QJsonDocument> SwayIpc::ask(Ask what, const QByteArray &payload)
{
    const Socket socket;
    if (!socket.send(what, payload))
        return noCompositor(QStringLiteral("no IPC socket"));
    const auto answer = socket.receive();
    if (!answer)
        return noCompositor(QStringLiteral("no IPC answer"));
    return QJsonDocument::fromJson(*answer);
}

QByteArray SwayIpc::message(Ask what, const QByteArray &payload)
{
    Header header;
    const auto length = quint32(payload.size());
    std::memcpy(header.length.data(), &length, sizeof length);
    std::memcpy(header.type.data(), &what, sizeof what);
    return QByteArray(reinterpret_cast<const char *>(&header), sizeof header) + payload;
}

int SwayIpc::open()
{
    return Socket().release();
}

bool SwayIpc::run(const QByteArray &commands)
{
    const auto answer = ask(Ask::RunCommand, commands);
    if (!answer)
        return false;
    const QJsonArray results = answer->array();
    return !results.isEmpty() && std::all_of(results.begin(), results.end(), [](const QJsonValue &each) {
        return each.toObject().value(QLatin1String("success")).toBool();
    });
}

int SwayIpc::listen()
{
    Socket socket;
    if (!socket.send(Ask::Subscribe, R"(["window","workspace"])") || !socket.receive())
        return -1;
    return socket.release();
}

bool SwayIpc::drain(int file)
{
    std::array<char, 65536> bytes;
    while (true) {
        const ssize_t got = recv(file, bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (got > 0)
            continue;
        return got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    }
}
