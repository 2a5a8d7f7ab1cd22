#include "library/library.h"

#include "base/async.h"
#include "base/free_name.h"
#include "base/log.h"
#include "document/image_files.h"
#include "platform/trash.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

namespace {

const QString kHidden = QStringLiteral(".lumenpost");

QString lowerExtension(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

// The file's name less its last extension.
QString baseName(const QString &path)
{
    return QFileInfo(path).completeBaseName();
}

// What no file system of a shared folder takes.
QString cleanName(QString name)
{
    static const QRegularExpression forbidden(QStringLiteral("[/:\\\\\\n\\r\\t\"*?<>|\\x{0}]"));
    return name.remove(forbidden).trimmed();
}

} // namespace

Library::Library(AppSettings &settings, Trash &trash, const Clock &clock, QObject *parent)
    : QObject(parent), m_settings(settings), m_trash(trash), m_clock(clock)
{
    connect(&settings, &AppSettings::saveFolderChanged, this, [this] {
        dropCaches();
        Q_EMIT changed();
    });
}

const QSet<QString> &Library::imageExtensions()
{
    static const QSet<QString> extensions{QStringLiteral("png"), QStringLiteral("jpg"),
                                          QStringLiteral("jpeg"), QStringLiteral("heic")};
    return extensions;
}

const QSet<QString> &Library::videoExtensions()
{
    static const QSet<QString> extensions{QStringLiteral("mov"), QStringLiteral("mp4"),
                                          QStringLiteral("gif")};
    return extensions;
}

bool Library::isImage(const QString &path)
{
    return imageExtensions().contains(lowerExtension(path));
}

bool Library::isVideo(const QString &path)
{
    return videoExtensions().contains(lowerExtension(path));
}

QString Library::folder() const
{
    return m_settings.saveFolder();
}

void Library::ensureDirectory()
{
    QDir().mkpath(folder());
}

QStringList Library::items() const
{
    struct Entry {
        QString path;
        qint64 modified;
    };
    QList<Entry> entries;
    const auto files = QDir(folder()).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &info : files) {
        if (!isImage(info.fileName()) && !isVideo(info.fileName()))
            continue;
        const QDateTime modified = info.lastModified();
        entries.append({info.filePath(), modified.isValid() ? modified.toMSecsSinceEpoch()
                                                            : std::numeric_limits<qint64>::min()});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &a, const Entry &b) { return a.modified > b.modified; });
    QStringList paths;
    for (const Entry &entry : entries)
        paths.append(entry.path);
    return paths;
}

LibraryItem Library::item(const QString &path) const
{
    const QFileInfo info(path);
    if (!info.exists())
        return {path, {}, 0};
    return {path, info.lastModified(), info.size()};
}

QString Library::newURL(const QString &prefix, const QString &extension)
{
    ensureDirectory();
    const QString stamp = QLocale().toString(m_clock.now(), QStringLiteral("yyyy-MM-dd 'at' HH.mm.ss"));
    return freePath(prefix + QLatin1Char(' ') + stamp, extension);
}

QString Library::newCaptureURL()
{
    return newURL(QStringLiteral("Capture"), rawValue(m_settings.imageFormat()));
}

std::optional<QString> Library::save(const QImage &image)
{
    const QString path = newCaptureURL();
    if (const auto written = ImageFiles::write(image, path); !written) {
        Log::error(QStringLiteral("A capture could not be saved"), written.error());
        return std::nullopt;
    }
    Q_EMIT changed();
    return path;
}

QFuture<Result<QString>> Library::saveInBackground(const QImage &image)
{
    const QString path = newCaptureURL();
    m_beingWritten.insert(path);
    auto promise = std::make_shared<QPromise<Result<QString>>>();
    promise->start();
    const auto written = runInBackground([image, path] { return ImageFiles::write(image, path); });
    whenDone(written, this, [this, path, promise](const Result<void> &result) {
        m_beingWritten.remove(path);
        if (result) {
            promise->addResult(Result<QString>(path));
            Q_EMIT changed();
        } else {
            Log::error(QStringLiteral("A capture could not be saved"), result.error());
            promise->addResult(Result<QString>(std::unexpected(result.error())));
        }
        promise->finish();
    });
    return promise->future();
}

QString Library::freePath(const QString &stem, const QString &extension) const
{
    return freeFilePath(folder(), stem, extension, m_beingWritten);
}

bool Library::contains(const QString &path) const
{
    return QDir::cleanPath(QFileInfo(path).absolutePath()) == QDir::cleanPath(folder());
}

Result<QString> Library::importFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return fail(Error::Kind::NotFound, QStringLiteral("There is no file %1.").arg(path));
    if (!isImage(path) && !isVideo(path))
        return fail(Error::Kind::Invalid,
                    QStringLiteral("%1 is neither an image nor a film of the Library.").arg(info.fileName()));
    if (contains(path))
        return info.absoluteFilePath();
    ensureDirectory();
    const QString target = freePath(baseName(path), info.suffix());
    QFile file(path);
    if (!file.copy(target))
        return fail(QStringLiteral("Couldn't copy %1 into the Library: %2.")
                        .arg(info.fileName(), file.errorString()));
    return target;
}

int Library::importFiles(const QStringList &paths)
{
    ensureDirectory();
    QStringList imports;
    for (const QString &path : paths) {
        if (contains(path))
            continue;
        if (const auto target = importFile(path))
            imports.append(*target);
    }
    if (!imports.isEmpty()) {
        Q_EMIT changed();
        Q_EMIT imported(imports);
    }
    return static_cast<int>(imports.size());
}

std::optional<QString> Library::rename(const QString &path, const QString &name)
{
    const QString clean = cleanName(name);
    if (clean.isEmpty())
        return std::nullopt;
    const QString target = freePath(clean, QFileInfo(path).suffix());
    if (!QFile::rename(path, target))
        return std::nullopt;
    const QString oldName = QFileInfo(path).fileName();
    const QString newName = QFileInfo(target).fileName();
    // Usually there is neither; a failure costs nothing but the move.
    QDir().rename(projectDirectory(path), projectDirectory(target));
    QDir().rename(versionsDirectory(path), versionsDirectory(target));
    if (auto &index = loadedIndex(); index.contains(oldName)) {
        index.insert(newName, index.take(oldName));
        saveIndex();
    }
    if (loadedFavorites().contains(oldName)) {
        setFavorite(path, false);
        setFavorite(target, true);
    }
    updateMeta([&](LibraryMeta &meta) { meta.rename(oldName, newName); });
    Q_EMIT renamed(path, target);
    Q_EMIT changed();
    return target;
}

void Library::remove(const QString &path)
{
    if (const auto trashed = m_trash.moveToTrash(path); !trashed)
        Log::error(QStringLiteral("Couldn't move %1 to the Trash").arg(QFileInfo(path).fileName()),
                   trashed.error());
    QDir(projectDirectory(path)).removeRecursively();
    QDir(versionsDirectory(path)).removeRecursively();
    const QString name = QFileInfo(path).fileName();
    loadedIndex().remove(name);
    saveIndex();
    if (loadedFavorites().contains(name))
        setFavorite(path, false);
    updateMeta([&name](LibraryMeta &meta) { meta.forget(name); });
    Q_EMIT changed();
}

QString Library::hiddenPath(const QString &name) const
{
    return QDir(folder()).filePath(kHidden + QLatin1Char('/') + name);
}

QString Library::projectDirectory(const QString &path) const
{
    return hiddenPath(QStringLiteral("projects/") + baseName(path));
}

QString Library::versionsDirectory(const QString &path) const
{
    return hiddenPath(QStringLiteral("versions/") + baseName(path));
}

bool Library::isInICloud() const
{
    return folder().contains(QLatin1String("/Library/Mobile Documents/"));
}

QStringList Library::cloudPlaceholders() const
{
    QStringList names;
    const auto entries = QDir(folder()).entryList(QDir::Files | QDir::Hidden);
    for (const QString &entry : entries) {
        if (entry.startsWith(QLatin1Char('.')) && QFileInfo(entry).suffix() == QLatin1String("icloud"))
            names.append(baseName(entry).mid(1));
    }
    return names;
}
