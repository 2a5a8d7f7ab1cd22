#include "base/read_file.h"

#include "base/file_errors.h"
#include "base/file_handle.h"
#include "base/file_name.h"
#include "base/texts.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

std::unexpected<Error> couldNotRead(const QString &path)
{
    return FileErrors::cannotRead(path, errno == ENOTDIR ? ENOENT : errno);
}

std::unexpected<Error> refused(const QString &path, const QString &sentence)
{
    return fail(Error::Kind::Invalid, sentence.arg(QFileInfo(path).fileName()), path);
}

Result<void> checkKind(const QString &path, const struct stat &status)
{
    if (S_ISDIR(status.st_mode))
        return refused(path, BaseTexts::tr("%1 is a folder."));
    if (!S_ISREG(status.st_mode))
        return refused(path, BaseTexts::tr("%1 is no regular file."));
    return {};
}

std::unexpected<Error> tooLarge(const QString &path, qint64 bytes)
{
    return refused(path, BaseTexts::tr("%1 is too large to be read: %2.")
                             .arg(QStringLiteral("%1"),
                                  QLocale::c().formattedDataSize(bytes, 0, QLocale::DataSizeSIFormat)));
}

// What follows the bytes that there is room for.
enum class Rest { Unread, Refused };

Result<FileHandle> opened(const QString &path, struct stat &status)
{
    const QByteArray name = FileName::toBytes(path);
    // Looked at before it is opened, as opening alone sets some devices in motion.
    if (::stat(name.constData(), &status) != 0)
        return couldNotRead(path);
    if (auto known = checkKind(path, status); !known)
        return std::unexpected(known.error());
    FileHandle file(::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return couldNotRead(path);
    if (auto known = checkKind(path, status); !known)
        return std::unexpected(known.error());
    return file;
}

Result<QByteArray> read(const QString &path, qint64 offset, qint64 most, Rest rest)
{
    struct stat status{};
    const auto file = opened(path, status);
    if (!file)
        return std::unexpected(file.error());
    if (rest == Rest::Refused && status.st_size - offset > most)
        return tooLarge(path, status.st_size);
    if (offset != 0 && ::lseek(file->number(), offset, SEEK_SET) < 0)
        return couldNotRead(path);
    const qint64 wanted = rest == Rest::Refused ? most + 1 : most;
    constexpr qint64 kPiece = 65536;
    QByteArray bytes(std::min(wanted, std::max<qint64>(status.st_size - offset + 1, kPiece)),
                     Qt::Uninitialized);
    qint64 filled = 0;
    while (filled < wanted) {
        if (filled == bytes.size()) // it has grown meanwhile, or doesn't tell its size
            bytes.resize(std::min(wanted, bytes.size() * 2));
        const ssize_t count =
            ::read(file->number(), bytes.data() + filled, static_cast<size_t>(bytes.size() - filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return couldNotRead(path);
        if (count == 0)
            break;
        filled += count;
    }
    if (rest == Rest::Refused && filled > most)
        return tooLarge(path, offset + filled);
    bytes.truncate(filled);
    return bytes;
}

} // namespace

Result<QByteArray> ReadFile::whole(const QString &path, qint64 mostBytes)
{
    return read(path, 0, mostBytes, Rest::Refused);
}

Result<QByteArray> ReadFile::rest(const QString &path, qint64 offset, qint64 mostBytes)
{
    return read(path, offset, mostBytes, Rest::Refused);
}

Result<QByteArray> ReadFile::head(const QString &path, qint64 bytes)
{
    return read(path, 0, bytes, Rest::Unread);
}

QByteArray ReadFile::digest(const QString &path)
{
    struct stat status{};
    const auto handle = opened(path, status);
    QFile file;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!handle || !file.open(handle->number(), QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex();
}
