#include "document/project_save.h"

#include "base/atomic_file.h"
#include "base/log.h"
#include "document/image_files.h"
#include "document/project_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <cstdio>

namespace ProjectSave {

namespace {

const QString kWaiting = QStringLiteral(".saving");
const QString kDigest = QStringLiteral("picture.sha256");
const QStringList kParts{QStringLiteral("base.png"), QStringLiteral("project.json")};

// Held by a save under way; a crash leaves one whose owner is gone, which counts as free.
class Lock {
public:
    explicit Lock(const QString &projectDirectory) : m_file(projectDirectory + "/.saving.lock")
    {
        m_file.setStaleLockTime(0); // however long a save takes
    }
    // Where no lock can be made, the writing itself will tell why.
    bool take() { return m_file.tryLock(0) || m_file.error() != QLockFile::LockFailedError; }

private:
    QLockFile m_file;
};

QByteArray digestOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex();
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The picture is in its place: the project follows. The digest goes last, so that this can be done again.
Result<void> moveIn(const QString &projectDirectory)
{
    const QString waiting = projectDirectory + '/' + kWaiting;
    for (const QString &part : kParts) {
        const QString from = waiting + '/' + part, to = projectDirectory + '/' + part;
        if (QFileInfo::exists(from) &&
            std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
            return fail("Couldn't write " + part + ": " + qt_error_string() + ".", to);
    }
    QDir(waiting).removeRecursively();
    return {};
}

// With the lock held.
void settleLocked(const QString &path, const QString &projectDirectory)
{
    const QString waiting = projectDirectory + '/' + kWaiting;
    if (!QFileInfo::exists(waiting))
        return;
    const QByteArray digest = contents(waiting + '/' + kDigest);
    if (digest.isEmpty() || digest != digestOf(path)) {
        QDir(waiting).removeRecursively();
        return;
    }
    if (const auto moved = moveIn(projectDirectory); !moved)
        Log::error("An interrupted save could not be finished", moved.error());
    else
        Log::info("Finished an interrupted save of " + QFileInfo(path).fileName());
}

} // namespace

Result<void> write(const QString &path, const QImage &finished, const QString &projectDirectory,
                   const QImage &base, const ProjectFile &project)
{
    if (!QDir().mkpath(projectDirectory))
        return fail("Couldn't make the folder " + projectDirectory + ".");
    Lock lock(projectDirectory);
    if (!lock.take())
        return fail(QFileInfo(path).fileName() + " is being saved already.");
    settleLocked(path, projectDirectory);

    const QString waiting = projectDirectory + '/' + kWaiting;
    auto written = ProjectFile::write(waiting, base, project);
    if (written)
        written = AtomicFile::replace(path, [&](const QString &temporary) -> Result<void> {
            if (auto encoded = ImageFiles::write(finished, temporary); !encoded)
                return encoded;
            return AtomicFile::write(waiting + '/' + kDigest, digestOf(temporary));
        });
    if (!written) {
        QDir(waiting).removeRecursively();
        return written;
    }
    return moveIn(projectDirectory);
}

void settle(const QString &path, const QString &projectDirectory)
{
    if (projectDirectory.isEmpty() || !QFileInfo::exists(projectDirectory + '/' + kWaiting))
        return;
    if (Lock lock(projectDirectory); lock.take())
        settleLocked(path, projectDirectory);
}

} // namespace ProjectSave
