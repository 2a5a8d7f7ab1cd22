#include "library/intent.h"

#include "base/atomic_file.h"
#include "base/file_name.h"
#include "base/json.h"

#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace {

QString pathIn(const QString &directory)
{
    return directory + QStringLiteral("/intent.json");
}

} // namespace

Result<void> Intent::write(const QString &directory, const Intent &intent)
{
    const QJsonObject object{{QStringLiteral("name"), intent.name},
                             {QStringLiteral("newName"), intent.newName},
                             {QStringLiteral("inode"), QString::number(intent.inode)}};
    return AtomicFile::write(pathIn(directory), QJsonDocument(object).toJson(QJsonDocument::Compact),
                             AtomicFile::Keep::Reproducible);
}

std::optional<Intent> Intent::read(const QString &directory)
{
    const auto document = Json::readFile(pathIn(directory));
    if (!document)
        return std::nullopt;
    const QJsonObject object = document->object();
    const auto name = Json::string(object, "name");
    const auto newName = Json::string(object, "newName");
    const auto inode = Json::string(object, "inode");
    if (!name || !newName || !inode)
        return std::nullopt;
    return Intent{*name, *newName, inode->toULongLong()};
}

void Intent::clear(const QString &directory)
{
    QFile::remove(pathIn(directory));
}

bool Intent::exists(const QString &directory)
{
    return QFileInfo::exists(pathIn(directory));
}

quint64 inodeOf(const QString &path)
{
    struct stat state;
    return lstat(FileName::toBytes(path).constData(), &state) == 0 ? state.st_ino : 0;
}
