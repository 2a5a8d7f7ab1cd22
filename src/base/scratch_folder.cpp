#include "base/scratch_folder.h"

#include "base/file_errors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <fcntl.h>
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
        QByteArray name = QFile::encodeName(QDir(parent).filePath(prefix() + QStringLiteral("XXXXXX")));
        if (!mkdtemp(name.data()))
            return FileErrors::cannotWrite(parent, errno);
        FileHandle handle(::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        struct stat there;
        // One who clears leftovers may have come between; then another is made.
        if (handle.isOpen() && (flock(handle.number(), LOCK_EX) == 0 || errno != EINTR) &&
            stat(name.constData(), &there) == 0)
            return ScratchFolder(QFile::decodeName(name), std::move(handle));
    }
}

ScratchFolder::~ScratchFolder()
{
    if (m_handle.isOpen())
        QDir(m_path).removeRecursively();
}

void ScratchFolder::clearLeftovers(const QString &parent)
{
    const auto entries = QDir(parent).entryList({prefix() + QLatin1Char('*')},
                                                QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        const QString path = QDir(parent).filePath(entry);
        const FileHandle handle(
            ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct stat opened;
        if (!handle.isOpen() || fstat(handle.number(), &opened) != 0 ||
            flock(handle.number(), LOCK_EX | LOCK_NB) != 0)
            continue;
        if (S_ISDIR(opened.st_mode))
            QDir(path).removeRecursively();
        else if (S_ISREG(opened.st_mode))
            QFile::remove(path);
    }
}
