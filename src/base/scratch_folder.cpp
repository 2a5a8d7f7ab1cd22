#include "base/scratch_folder.h"

#include "base/file_errors.h"
#include "base/file_name.h"
#include "base/file_tree.h"

#include <QDir>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>

const QString &ScratchFolder::prefix()
{
    static const QString prefix = QStringLiteral(".lumenpost-");
    return prefix;
}

Result<ScratchFolder> ScratchFolder::make(const QString &parent)
{
    while (true) {
        QByteArray name = FileName::toBytes(QDir(parent).filePath(prefix() + QStringLiteral("XXXXXX")));
        if (!mkdtemp(name.data()))
            return FileErrors::cannotWrite(parent, errno);
        FileHandle handle(::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        struct stat there;
        // One who clears leftovers may have come between; then another is made.
        if (handle.isOpen() && (flock(handle.number(), LOCK_EX) == 0 || errno != EINTR) &&
            stat(name.constData(), &there) == 0)
            return ScratchFolder(FileName::fromBytes(name), std::move(handle));
    }
}

ScratchFolder::~ScratchFolder()
{
    if (m_handle.isOpen())
        FileTree::remove(m_path);
}

void ScratchFolder::clearLeftovers(const QString &parent)
{
    std::error_code error;
    std::filesystem::directory_iterator entries(FileName::toBytes(parent).toStdString(), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const QString path = FileName::fromBytes(QByteArray::fromStdString(entries->path().string()));
        if (!path.mid(path.lastIndexOf(QLatin1Char('/')) + 1).startsWith(prefix()))
            continue;
        const FileHandle handle(
            ::open(FileName::toBytes(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct stat opened;
        if (!handle.isOpen() || fstat(handle.number(), &opened) != 0 ||
            flock(handle.number(), LOCK_EX | LOCK_NB) != 0)
            continue;
        if (S_ISDIR(opened.st_mode) || S_ISREG(opened.st_mode))
            FileTree::remove(path);
    }
}
