#include "base/file_lock.h"

#include "base/file_errors.h"
#include "base/file_name.h"
#include "base/texts.h"

#include <QFileInfo>
#include <QThread>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

constexpr std::chrono::milliseconds kPause{2};

// Somebody may have removed the file, with its folder, between opening and locking it.
bool isAt(const FileHandle &handle, const QByteArray &path)
{
    struct stat mine, there;
    return fstat(handle.number(), &mine) == 0 && stat(path.constData(), &there) == 0 &&
           mine.st_ino == there.st_ino && mine.st_dev == there.st_dev;
}

} // namespace

Result<FileLock> FileLock::take(const QString &path, std::chrono::milliseconds patience)
{
    const QByteArray name = FileName::toBytes(path);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (true) {
        FileHandle handle(::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666));
        if (!handle.isOpen() && (errno == EACCES || errno == EROFS))
            handle = FileHandle(::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
        if (!handle.isOpen())
            return FileErrors::cannotWrite(path, errno);
        while (flock(handle.number(), LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK && errno != EINTR)
                return FileLock(std::move(handle));
            if (std::chrono::steady_clock::now() >= deadline)
                return fail(BaseTexts::tr("Another program is using %1.").arg(QFileInfo(path).path()), path);
            QThread::usleep(std::chrono::microseconds(kPause).count());
        }
        if (isAt(handle, name))
            return FileLock(std::move(handle));
    }
}
