#include "base/temporary_files.h"

#include "base/file_name.h"
#include "base/file_tree.h"
#include "base/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kPrefix = QStringLiteral("process-");

// A folder that only this user can enter and that no other user has planted.
bool isPrivate(const QString &path)
{
    struct stat status{};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::getuid() && (status.st_mode & 0077) == 0;
}

// "process-<number>-<random>" of processes that are no more.
void removeLeftovers(const QDir &parent)
{
    const QStringList names = parent.entryList({kPrefix + '*'}, QDir::Dirs | QDir::NoSymLinks);
    for (const QString &name : names) {
        const int process = name.mid(kPrefix.size()).section('-', 0, 0).toInt();
        if (process > 0 && ::kill(process, 0) != 0 && errno == ESRCH && isPrivate(parent.filePath(name)))
            FileTree::remove(parent.filePath(name));
    }
}

// A new folder with mode 0700; empty when there can be none.
QString newFolder(const QString &start)
{
    QByteArray name = QFile::encodeName(start + "XXXXXX");
    return ::mkdtemp(name.data()) ? QFile::decodeName(name) : QString();
}

QString folderOfThisProcess()
{
    const QString own = kPrefix + QString::number(::getpid()) + '-';
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isPrivate(runtime)) {
        const QDir shared(runtime + "/lumenpost");
        ::mkdir(QFile::encodeName(shared.path()).constData(), 0700);
        if (isPrivate(shared.path())) {
            removeLeftovers(shared);
            if (const QString folder = newFolder(shared.filePath(own)); !folder.isEmpty())
                return folder;
        }
    }
    return newFolder(QDir::temp().filePath("lumenpost-" + own));
}

struct Folder {
    QMutex mutex;
    QString path;

    // Made anew when somebody has cleared it away.
    QString made()
    {
        const QMutexLocker lock(&mutex);
        if (path.isEmpty() || !isPrivate(path))
            path = folderOfThisProcess();
        return path;
    }
    void remove()
    {
        const QMutexLocker lock(&mutex);
        if (!path.isEmpty())
            FileTree::remove(path);
        path.clear();
    }
    ~Folder() { remove(); }
};

Folder &folder()
{
    static Folder folder;
    return folder;
}

// At most 200 bytes, without a slash or a dot at its start.
QString usableName(QString name)
{
    name.replace('/', '-').remove(QChar(0));
    while (name.startsWith('.'))
        name.remove(0, 1);
    const QString suffix = QFileInfo(name).suffix();
    const QString dotted = suffix.isEmpty() || suffix.size() > 10 ? QString() : '.' + suffix;
    name.chop(dotted.size());
    while (FileName::toBytes(name).size() > 200)
        name.chop(name.size() > 1 && name.back().isLowSurrogate() ? 2 : 1);
    return (name.isEmpty() ? BaseTexts::tr("Capture") : name) + dotted;
}

} // namespace

Result<QString> TemporaryFiles::newPath(const QString &name)
{
    const QString parent = folder().made();
    const QString own = parent.isEmpty() ? QString() : newFolder(parent + '/');
    if (own.isEmpty())
        return fail(BaseTexts::tr("There is no place for temporary files: %1.").arg(qt_error_string()));
    return own + '/' + usableName(name);
}

void TemporaryFiles::removeAll()
{
    folder().remove();
}
