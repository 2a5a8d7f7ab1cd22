#include "base/atomic_file.h"

#include "base/file_errors.h"
#include "base/file_handle.h"
#include "base/file_name.h"
#include "base/free_name.h"
#include "base/scratch_folder.h"
#include "base/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <linux/fs.h>
#include <mutex>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

// Longer chains are circles.
constexpr int kMostLinks = 16;

// Where a link leads, as the system sees it: the toolkit finds none whose name is no text.
QString followed(QString path)
{
    for (int i = 0; i < kMostLinks; ++i) {
        QByteArray goal(PATH_MAX, Qt::Uninitialized);
        const ssize_t length =
            readlink(FileName::toBytes(path).constData(), goal.data(), std::size_t(goal.size()));
        if (length < 0)
            break;
        const QString next = FileName::fromBytes(goal.first(length));
        path = next.startsWith(QLatin1Char('/')) ? next
                                                 : QFileInfo(path).absolutePath() + QLatin1Char('/') + next;
    }
    return path;
}

// What a write replaces: its mode and owner, if it is there.
struct Target {
    QString path;
    std::optional<struct stat> old;
};

Result<Target> targetAt(const QString &path)
{
    Target target{followed(path), {}};
    struct stat found;
    if (lstat(FileName::toBytes(target.path).constData(), &found) != 0)
        return target;
    if (S_ISDIR(found.st_mode))
        return FileErrors::cannotWrite(path, BaseTexts::tr("there is a folder of that name"));
    if (!S_ISREG(found.st_mode))
        return FileErrors::cannotWrite(path, BaseTexts::tr("it is no regular file"));
    target.old = found;
    return target;
}

// A write beyond the limit on file sizes shall fail like any other, not end the program.
void outliveSizeLimit()
{
    static std::once_flag once;
    std::call_once(once, [] { std::signal(SIGXFSZ, SIG_IGN); });
}

bool synced(int file)
{
    // Some file systems have nothing to flush.
    return fsync(file) == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

// So that the name lasts as the bytes do. A failure loses nothing: the old name still stands.
void syncFolder(const QString &folder)
{
    const FileHandle handle(
        ::open(FileName::toBytes(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.isOpen())
        fsync(handle.number());
}

bool takeOver(int file, const struct stat &old)
{
    // The group matters only where it differs, and only its members may give it.
    if (fchown(file, old.st_uid, old.st_gid) != 0)
        std::ignore = fchown(file, uid_t(-1), old.st_gid);
    return fchmod(file, old.st_mode & 07777) == 0;
}

// A file that is being written: nameless where the file system can, so that a kill leaves nothing; else under
// a hidden name. Locked, so that one left behind is known by its free lock.
class Draft {
public:
    static Result<Draft> open(const QString &target, bool startsPrivate)
    {
        outliveSizeLimit();
        const QString folder = QFileInfo(target).absolutePath();
        const mode_t mode = startsPrivate ? 0600 : 0666;
        FileHandle handle(
            ::open(FileName::toBytes(folder).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
        if (handle.isOpen()) {
            // Before it replaces a file it has a name for a moment, too.
            flock(handle.number(), LOCK_EX);
            return Draft(target, folder, std::move(handle), {});
        }
        while (true) {
            const QByteArray name = freshName(folder);
            handle = FileHandle(::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            if (!handle.isOpen() && errno == EEXIST)
                continue;
            if (!handle.isOpen())
                return FileErrors::cannotWrite(target, errno);
            flock(handle.number(), LOCK_EX);
            struct stat mine;
            // One who clears leftovers may have come between; then another is made.
            if (fstat(handle.number(), &mine) == 0 && mine.st_nlink > 0)
                return Draft(target, folder, std::move(handle), name);
        }
    }
    Draft(Draft &&other) noexcept
        : m_target(std::move(other.m_target)),
          m_folder(std::move(other.m_folder)),
          m_handle(std::move(other.m_handle)),
          m_name(std::exchange(other.m_name, {}))
    {}
    Draft &operator=(Draft &&) = delete;
    ~Draft()
    {
        if (!m_name.isEmpty())
            unlink(m_name.constData());
    }

    int file() const { return m_handle.number(); }

    Result<void> append(const QByteArray &bytes)
    {
        qsizetype done = 0;
        while (done < bytes.size()) {
            const ssize_t count = ::write(file(), bytes.constData() + done, std::size_t(bytes.size() - done));
            if (count < 0 && errno != EINTR)
                return FileErrors::cannotWrite(m_target, errno);
            done += std::max<ssize_t>(count, 0);
        }
        return {};
    }
    // All bytes are there: they reach the disk, or this tells why not.
    Result<void> settle(AtomicFile::Keep keep)
    {
        if (keep == AtomicFile::Keep::Lasting && !synced(file()))
            return FileErrors::cannotWrite(m_target, errno);
        return {};
    }
    Result<void> replaceTarget()
    {
        while (m_name.isEmpty()) {
            const QByteArray name = freshName(m_folder);
            if (linkTo(name))
                m_name = name;
            else if (errno != EEXIST)
                return FileErrors::cannotWrite(m_target, errno);
        }
        if (std::rename(m_name.constData(), FileName::toBytes(m_target).constData()) != 0)
            return FileErrors::cannotWrite(m_target, errno);
        m_name.clear();
        return closed();
    }
    // False when the name is taken.
    Result<bool> takeName(const QString &path)
    {
        if (m_name.isEmpty()) {
            if (!linkTo(FileName::toBytes(path)))
                return errno == EEXIST ? Result<bool>(false) : FileErrors::cannotWrite(path, errno);
        } else {
            const auto moved = AtomicFile::moveWithoutReplacing(FileName::fromBytes(m_name), path);
            if (!moved || !*moved)
                return moved;
            m_name.clear();
        }
        if (const auto done = closed(); !done)
            return std::unexpected(done.error());
        return true;
    }

private:
    Draft(QString target, QString folder, FileHandle handle, QByteArray name)
        : m_target(std::move(target)),
          m_folder(std::move(folder)),
          m_handle(std::move(handle)),
          m_name(std::move(name))
    {}
    static QByteArray freshName(const QString &folder)
    {
        static std::atomic<unsigned> count = 0;
        return FileName::toBytes(QDir(folder).filePath(ScratchFolder::prefix() +
                                                       QString::number(getpid(), 36) + QLatin1Char('-') +
                                                       QString::number(++count, 36)));
    }
    bool linkTo(const QByteArray &name) const
    {
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(file());
        return linkat(AT_FDCWD, self.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0;
    }
    Result<void> closed()
    {
        if (!m_handle.close())
            return FileErrors::cannotWrite(m_target, errno);
        return {};
    }

    QString m_target;
    QString m_folder;
    FileHandle m_handle;
    QByteArray m_name; // empty while nameless
};

// A draft as the device that encoders want. It remembers the first failure, which they may overlook.
class DraftDevice : public QIODevice {
public:
    explicit DraftDevice(Draft &draft) : m_draft(draft)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    const Result<void> &result() const { return m_result; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        if (m_result)
            m_result = m_draft.append(QByteArray::fromRawData(data, size));
        return m_result ? size : -1;
    }

private:
    Draft &m_draft;
    Result<void> m_result;
};

enum class Reader { AsBefore, Owner };

// Writes `fill`'s bytes over the target.
Result<void> replaceBy(const QString &path, AtomicFile::Keep keep,
                       const std::function<Result<void>(Draft &)> &fill, Reader reader = Reader::AsBefore)
{
    const auto target = targetAt(path);
    if (!target)
        return std::unexpected(target.error());
    auto draft = Draft::open(target->path, target->old || reader == Reader::Owner);
    if (!draft)
        return std::unexpected(draft.error());
    if (auto filled = fill(*draft); !filled)
        return filled;
    if (target->old && reader == Reader::AsBefore && !takeOver(draft->file(), *target->old))
        return FileErrors::cannotWrite(path, errno);
    if (auto settled = draft->settle(keep); !settled)
        return settled;
    if (auto placed = draft->replaceTarget(); !placed)
        return placed;
    if (keep == AtomicFile::Keep::Lasting)
        syncFolder(QFileInfo(target->path).absolutePath());
    return {};
}

// Tries the free names until one could be taken.
Result<QString> underFreeName(const QString &folder, const QString &stem, const QString &extension,
                              const QSet<QString> &reserved,
                              const std::function<Result<bool>(const QString &)> &take)
{
    while (true) {
        const QString path = freeFilePath(folder, stem, extension, reserved);
        const auto taken = take(path);
        if (!taken)
            return std::unexpected(taken.error());
        if (*taken) {
            syncFolder(folder);
            return path;
        }
    }
}

Result<FileHandle> openedSource(const QString &path, struct stat &state)
{
    FileHandle source(::open(FileName::toBytes(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!source.isOpen() || fstat(source.number(), &state) != 0)
        return FileErrors::cannotRead(path, errno);
    if (!S_ISREG(state.st_mode))
        return fail(BaseTexts::tr("%1 is no regular file.").arg(QFileInfo(path).fileName()), path);
    return source;
}

// What only its owner may read stays so.
bool isPrivate(const struct stat &state)
{
    return (state.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

// What the disk has room for, as far as it tells. Others would notice if that were found out by filling it.
bool hasRoom(int file, qint64 bytes)
{
    struct statvfs disk;
    if (fstatvfs(file, &disk) != 0 || disk.f_blocks == 0)
        return true;
    const auto blocks = getuid() == 0 ? disk.f_bfree : disk.f_bavail;
    return quint64(bytes) / disk.f_frsize <= blocks;
}

Result<void> copyBytes(const QString &from, const FileHandle &source, const struct stat &state, Draft &draft,
                       const std::stop_token &stop)
{
    // Shares the blocks where the file system can.
    const bool isShared = ioctl(draft.file(), FICLONE, source.number()) == 0;
    if (!isShared && !hasRoom(draft.file(), state.st_size))
        return FileErrors::cannotWrite(from, ENOSPC);
    constexpr std::size_t kPiece = 16 << 20; // a stop is heeded after each
    ssize_t copied = isShared ? 0 : 1;
    while (copied > 0 || (copied < 0 && errno == EINTR)) {
        if (stop.stop_requested())
            return cancelled();
        copied = copy_file_range(source.number(), nullptr, draft.file(), nullptr, kPiece, 0);
    }
    if (copied < 0 && errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP)
        return FileErrors::cannotWrite(from, errno);
    // The rest, where that isn't possible; also of files that tell a size of 0 and hold more.
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    while (!isShared) {
        if (stop.stop_requested())
            return cancelled();
        const ssize_t count = ::read(source.number(), buffer.data(), std::size_t(buffer.size()));
        if (count < 0 && errno != EINTR)
            return FileErrors::cannotRead(from, errno);
        if (count == 0)
            break;
        if (count > 0) {
            if (auto written = draft.append(QByteArray::fromRawData(buffer.constData(), count)); !written)
                return written;
        }
    }
    if (isPrivate(state))
        fchmod(draft.file(), state.st_mode & 07777);
    const std::array<timespec, 2> times{state.st_atim, state.st_mtim};
    futimens(draft.file(), times.data());
    return {};
}

} // namespace

Result<void> AtomicFile::write(const QString &path, const std::function<bool(QIODevice &)> &fill)
{
    return replaceBy(path, Keep::Lasting, [&](Draft &draft) -> Result<void> {
        DraftDevice device(draft);
        const bool isFilled = fill(device);
        if (!device.result())
            return device.result();
        if (!isFilled)
            return FileErrors::cannotWrite(path, BaseTexts::tr("it could not be encoded"));
        return {};
    });
}

Result<void> AtomicFile::write(const QString &path, const QByteArray &bytes, Keep keep)
{
    return replaceBy(path, keep, [&bytes](Draft &draft) { return draft.append(bytes); });
}

Result<void> AtomicFile::writePrivately(const QString &path, const QByteArray &bytes)
{
    return replaceBy(
        path, Keep::Lasting, [&bytes](Draft &draft) { return draft.append(bytes); }, Reader::Owner);
}

Result<void> AtomicFile::replace(const QString &path,
                                 const std::function<Result<void>(const QString &)> &fill)
{
    outliveSizeLimit();
    const auto target = targetAt(path);
    if (!target)
        return std::unexpected(target.error());
    const QFileInfo info(target->path);
    const auto scratch = ScratchFolder::make(info.absolutePath());
    if (!scratch)
        return FileErrors::cannotWrite(path, FileErrors::reason(errno));
    const QString temporary = scratch->filePath(info.fileName());
    if (auto filled = fill(temporary); !filled)
        return filled;
    return moveOver(temporary, target->path);
}

Result<void> AtomicFile::moveOver(const QString &source, const QString &path)
{
    const auto target = targetAt(path);
    if (!target)
        return std::unexpected(target.error());
    const QByteArray from = FileName::toBytes(source), to = FileName::toBytes(target->path);
    FileHandle file(::open(from.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!file.isOpen() || (target->old && !takeOver(file.number(), *target->old)) || !synced(file.number()) ||
        !file.close())
        return FileErrors::cannotWrite(path, errno);
    if (std::rename(from.constData(), to.constData()) == 0) {
        syncFolder(QFileInfo(target->path).absolutePath());
        return {};
    }
    if (errno != EXDEV)
        return FileErrors::cannotWrite(path, errno);
    auto copied = copy(source, target->path);
    if (copied)
        unlink(from.constData());
    return copied;
}

Result<void> AtomicFile::copy(const QString &source, const QString &target, const std::stop_token &stop)
{
    struct stat state;
    const auto opened = openedSource(source, state);
    if (!opened)
        return std::unexpected(opened.error());
    return replaceBy(target, Keep::Lasting,
                     [&](Draft &draft) { return copyBytes(source, *opened, state, draft, stop); });
}

Result<QString> AtomicFile::writeNew(const QString &folder, const QString &stem, const QString &extension,
                                     const QByteArray &bytes, const QSet<QString> &reserved)
{
    auto draft = Draft::open(freeFilePath(folder, stem, extension, reserved), false);
    if (!draft)
        return std::unexpected(draft.error());
    if (auto written = draft->append(bytes); !written)
        return std::unexpected(written.error());
    if (auto settled = draft->settle(Keep::Lasting); !settled)
        return std::unexpected(settled.error());
    return underFreeName(folder, stem, extension, reserved,
                         [&draft](const QString &path) { return draft->takeName(path); });
}

Result<QString> AtomicFile::copyNew(const QString &source, const QString &folder, const QString &stem,
                                    const QString &extension, const QSet<QString> &reserved,
                                    const std::stop_token &stop)
{
    struct stat state;
    const auto opened = openedSource(source, state);
    if (!opened)
        return std::unexpected(opened.error());
    auto draft = Draft::open(freeFilePath(folder, stem, extension, reserved), isPrivate(state));
    if (!draft)
        return std::unexpected(draft.error());
    if (auto copied = copyBytes(source, *opened, state, *draft, stop); !copied)
        return std::unexpected(copied.error());
    if (auto settled = draft->settle(Keep::Lasting); !settled)
        return std::unexpected(settled.error());
    return underFreeName(folder, stem, extension, reserved,
                         [&draft](const QString &path) { return draft->takeName(path); });
}

Result<QString> AtomicFile::moveNew(const QString &source, const QString &folder, const QString &stem,
                                    const QString &extension, const QSet<QString> &reserved)
{
    return underFreeName(folder, stem, extension, reserved,
                         [&source](const QString &path) { return moveWithoutReplacing(source, path); });
}

Result<bool> AtomicFile::moveWithoutReplacing(const QString &source, const QString &target)
{
    const QByteArray from = FileName::toBytes(source), to = FileName::toBytes(target);
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno == EEXIST)
        return false;
    if (errno != EINVAL && errno != ENOSYS)
        return FileErrors::cannotWrite(target, errno);
    // A file system without that: a second name, then the first goes.
    if (link(from.constData(), to.constData()) == 0) {
        unlink(from.constData());
        return true;
    }
    if (errno == EEXIST)
        return false;
    // And without links: the name is claimed by an empty file, which the rename replaces.
    const FileHandle claim(::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!claim.isOpen())
        return errno == EEXIST ? Result<bool>(false) : FileErrors::cannotWrite(target, errno);
    if (std::rename(from.constData(), to.constData()) == 0)
        return true;
    const int number = errno;
    unlink(to.constData());
    return FileErrors::cannotWrite(target, number);
}
