#include "library/library.h"

#include "base/async.h"
#include "base/atomic_file.h"
#include "base/file_name.h"
#include "base/free_name.h"
#include "base/log.h"
#include "base/scratch_folder.h"
#include "document/image_files.h"
#include "library/companions.h"
#include "library/folder_watch.h"
#include "library/intent.h"
#include "library/library_names.h"
#include "library/texts.h"
#include "platform/trash.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <mutex>
#include <unistd.h>

using LibraryNames::baseOf;
using LibraryNames::nameOf;

namespace {

const QString kCapture = QStringLiteral("Capture");

QString lowerExtension(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

bool isOfLibrary(const QString &name)
{
    return LibraryNames::isProper(name) && (Library::isImage(name) || Library::isVideo(name));
}

} // namespace

struct Library::Reservations {
    QSet<QString> all()
    {
        const std::lock_guard guard(mutex);
        return paths;
    }
    void add(const QString &path)
    {
        const std::lock_guard guard(mutex);
        paths.insert(path);
    }
    void remove(const QString &path)
    {
        const std::lock_guard guard(mutex);
        paths.remove(path);
    }

    std::mutex mutex;
    QSet<QString> paths;
};

Library::Library(AppSettings &settings, Trash &trash, const Clock &clock, QObject *parent)
    : QObject(parent),
      m_settings(settings),
      m_trash(trash),
      m_clock(clock),
      m_catalog(Companions::hiddenIn(settings.saveFolder())),
      m_reservations(std::make_shared<Reservations>())
{
    connect(&settings, &AppSettings::saveFolderChanged, this, &Library::followFolder);
    connect(&m_catalog, &LibraryCatalog::changedOutside, this, &Library::changed);
    recover();
}

Library::~Library() = default;

void Library::followFolder()
{
    m_catalog.setDirectory(Companions::hiddenIn(folder()));
    recover();
    if (m_watch)
        watch();
    Q_EMIT changed();
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
        if (!isOfLibrary(info.fileName()))
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

QString Library::newPath(const QString &prefix, const QString &extension)
{
    ensureDirectory();
    const QString stamp = QLocale().toString(m_clock.now(), QStringLiteral("yyyy-MM-dd 'at' HH.mm.ss"));
    return freeFilePath(folder(), prefix + QLatin1Char(' ') + stamp, extension, m_reservations->all());
}

QFuture<Result<QString>> Library::saveInBackground(const QImage &image)
{
    ensureDirectory();
    const QString stem =
        kCapture + QLocale().toString(m_clock.now(), QStringLiteral(" yyyy-MM-dd 'at' HH.mm.ss"));
    const QString extension = rawValue(m_settings.imageFormat());
    const QSet<QString> others = m_reservations->all();
    const QString path = freeFilePath(folder(), stem, extension, others);
    m_reservations->add(path);

    auto promise = std::make_shared<QPromise<Result<QString>>>();
    promise->start();
    const auto written = runInBackground([=, folder = folder(), reservations = m_reservations] {
        QString ending = extension;
        QByteArray bytes = ImageFiles::encode(image, ImageFiles::type(path));
        if (bytes.isEmpty() && ImageFiles::type(path) != ImageFiles::Type::Png) {
            ending = QStringLiteral("png");
            bytes = ImageFiles::encode(image, ImageFiles::Type::Png);
        }
        Result<QString> saved =
            bytes.isEmpty() ? fail(LibraryTexts::tr("Couldn't write %1: the picture could not be encoded.")
                                       .arg(nameOf(path)))
                            : AtomicFile::writeNew(folder, stem, ending, bytes, others);
        reservations->remove(path);
        promise->addResult(saved);
        promise->finish();
        return saved;
    });
    whenDone(written, this, [this](const Result<QString> &saved) {
        if (!saved) {
            Log::error(QStringLiteral("A capture could not be saved"), saved.error());
            return;
        }
        know({nameOf(*saved)});
        Q_EMIT added({*saved});
        Q_EMIT changed();
    });
    return promise->future();
}

Result<QString> Library::importFile(const QString &path)
{
    const QFileInfo info(path);
    // The toolkit finds no file whose name is no text.
    if (::access(FileName::toBytes(path).constData(), F_OK) != 0 || info.isDir())
        return fail(Error::Kind::NotFound, LibraryTexts::tr("There is no file %1.").arg(path));
    if (!isImage(path) && !isVideo(path))
        return fail(
            Error::Kind::Invalid,
            LibraryTexts::tr("%1 is neither an image nor a film of the Library.").arg(info.fileName()));
    if (contains(path))
        return info.absoluteFilePath();
    ensureDirectory();
    const QString clean = LibraryNames::cleaned(baseOf(path));
    // A name that would be hidden here, or is too long, gives way; any other is kept as it is.
    const bool isText = info.fileName().isValidUtf16();
    const bool isKept =
        isText && LibraryNames::isProper(info.fileName()) && clean.size() >= baseOf(path).size() - 8;
    auto target =
        AtomicFile::copyNew(path, folder(), isKept ? baseOf(path) : (clean.isEmpty() ? kCapture : clean),
                            info.suffix(), m_reservations->all());
    if (!target)
        return fail(LibraryTexts::tr("Couldn't copy %1 into the Library: %2")
                        .arg(info.fileName(), target.error().message),
                    target.error().detail);
    know({nameOf(*target)});
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
        else
            Log::error(QStringLiteral("A file could not be imported"), target.error());
    }
    if (!imports.isEmpty()) {
        Q_EMIT added(imports);
        Q_EMIT changed();
        Q_EMIT imported(imports);
    }
    return static_cast<int>(imports.size());
}

Result<QString> Library::rename(const QString &path, const QString &name)
{
    const QString clean = LibraryNames::cleaned(name);
    if (clean.isEmpty())
        return fail(Error::Kind::Invalid, LibraryTexts::tr("“%1” is no name for a file.").arg(name));
    if (!contains(path))
        return fail(Error::Kind::Invalid, LibraryTexts::tr("%1 is not in the Library.").arg(nameOf(path)));
    recover();
    const auto lock = m_catalog.begin();
    if (!lock)
        return std::unexpected(lock.error());
    const QString oldName = nameOf(path);
    if (!Companions(folder()).isThere(oldName))
        return fail(Error::Kind::NotFound, LibraryTexts::tr("There is no file %1.").arg(path));
    QString target;
    for (bool isMoved = false; !isMoved;) {
        target = freeFilePath(folder(), clean, QFileInfo(path).suffix(), m_reservations->all());
        const Intent intent{oldName, nameOf(target), inodeOf(path)};
        if (auto written = Intent::write(Companions::hiddenIn(folder()), intent); !written)
            return std::unexpected(written.error());
        const auto moved = AtomicFile::moveWithoutReplacing(path, target);
        if (!moved) {
            Intent::clear(Companions::hiddenIn(folder()));
            return std::unexpected(moved.error());
        }
        isMoved = *moved;
    }
    finishRename(lock, oldName, nameOf(target));
    Intent::clear(Companions::hiddenIn(folder()));
    know({oldName, nameOf(target)});
    Q_EMIT renamed(path, target);
    Q_EMIT changed();
    return target;
}

void Library::finishRename(const Result<FileLock> &lock, const QString &oldName, const QString &newName)
{
    Companions(folder()).follow(oldName, newName);
    m_catalog.store(lock, CatalogPatch::renaming(m_catalog.data(), oldName, newName));
}

Result<void> Library::remove(const QString &path)
{
    if (!contains(path))
        return fail(Error::Kind::Invalid, LibraryTexts::tr("%1 is not in the Library.").arg(nameOf(path)));
    recover();
    const auto lock = m_catalog.begin();
    if (!lock)
        return std::unexpected(lock.error());
    const QString name = nameOf(path);
    if (auto written = Intent::write(Companions::hiddenIn(folder()), {name, {}, inodeOf(path)}); !written)
        return written;
    const auto trashed = m_trash.moveToTrash(path);
    const bool isGone = !Companions(folder()).isThere(name);
    if (isGone)
        finishRemove(lock, name);
    Intent::clear(Companions::hiddenIn(folder()));
    if (!trashed && !isGone) {
        Log::error(QStringLiteral("Couldn't move %1 to the Trash").arg(name), trashed.error());
        return std::unexpected(trashed.error());
    }
    know({name});
    Q_EMIT removed({path});
    Q_EMIT changed();
    // What was gone before has been forgotten, but did not go to the Trash.
    return trashed ? Result<void>{} : Result<void>(std::unexpected(trashed.error()));
}

void Library::finishRemove(const Result<FileLock> &lock, const QString &name)
{
    Companions(folder()).forget(name);
    m_catalog.store(lock, CatalogPatch::forgetting(m_catalog.data(), name));
}

void Library::recover()
{
    const QString directory = Companions::hiddenIn(folder());
    if (!Intent::exists(directory))
        return;
    const auto lock = m_catalog.begin();
    const auto intent = lock ? Intent::read(directory) : std::nullopt;
    if (!lock)
        return;
    if (intent && LibraryNames::isProper(intent->name)) {
        if (LibraryNames::isProper(intent->newName) && intent->inode != 0 &&
            inodeOf(inFolder(intent->newName)) == intent->inode) {
            // It may have both names where a rename takes two steps.
            if (inodeOf(inFolder(intent->name)) == intent->inode)
                QFile::remove(inFolder(intent->name));
            finishRename(lock, intent->name, intent->newName);
            Log::info(QStringLiteral("Finished an interrupted rename to ") + intent->newName);
        } else if (intent->newName.isEmpty() && !Companions(folder()).isThere(intent->name)) {
            finishRemove(lock, intent->name);
        }
    }
    Intent::clear(directory);
}

QString Library::inFolder(const QString &name) const
{
    return QDir(folder()).filePath(name);
}

bool Library::contains(const QString &path) const
{
    const QFileInfo info(path);
    return LibraryNames::isProper(info.fileName()) &&
           QDir::cleanPath(info.absolutePath()) == QDir::cleanPath(QDir(folder()).absolutePath());
}

QString Library::projectDirectory(const QString &path) const
{
    const QString name = nameOf(path);
    return LibraryNames::isProper(name) ? Companions(folder()).projectDirectory(name) : QString();
}

QString Library::versionsDirectory(const QString &path) const
{
    const QString name = nameOf(path);
    return LibraryNames::isProper(name) ? Companions(folder()).versionsDirectory(name) : QString();
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
            names.append(baseOf(entry).mid(1));
    }
    return names;
}

void Library::watch()
{
    ensureDirectory();
    m_watch = std::make_unique<FolderWatch>(folder(), isOfLibrary);
    connect(m_watch.get(), &FolderWatch::changed, this, [this](const FolderWatch::News &news) {
        const auto paths = [this](const QStringList &names) {
            QStringList result;
            for (const QString &name : names)
                result.append(inFolder(name));
            return result;
        };
        for (const auto &[from, to] : news.renamed)
            Q_EMIT renamed(inFolder(from), inFolder(to));
        if (!news.removed.isEmpty())
            Q_EMIT removed(paths(news.removed));
        if (!news.added.isEmpty())
            Q_EMIT added(paths(news.added));
        if (!news.modified.isEmpty())
            Q_EMIT modified(paths(news.modified));
        m_catalog.followDisk();
        Q_EMIT changed();
        watchCatalog();
    });
    m_catalogWatch = std::make_unique<QFileSystemWatcher>();
    const auto follow = [this] {
        m_catalog.followDisk();
        watchCatalog();
    };
    connect(m_catalogWatch.get(), &QFileSystemWatcher::directoryChanged, this, follow);
    connect(m_catalogWatch.get(), &QFileSystemWatcher::fileChanged, this, follow);
    watchCatalog();
    runInBackground([folder = folder()] {
        const QString hidden = Companions::hiddenIn(folder);
        for (const QString &place :
             {folder, hidden, hidden + QStringLiteral("/projects"), hidden + QStringLiteral("/versions")})
            ScratchFolder::clearLeftovers(place);
    });
}

void Library::watchCatalog()
{
    QStringList paths = m_catalog.jsonPaths() << Companions::hiddenIn(folder());
    // A file that was replaced is another one to the system.
    const QStringList present = m_catalogWatch->files() + m_catalogWatch->directories();
    paths.removeIf([&](const QString &path) { return present.contains(path) || !QFileInfo::exists(path); });
    if (!paths.isEmpty())
        m_catalogWatch->addPaths(paths);
}

void Library::know(const QStringList &names)
{
    if (m_watch)
        m_watch->know(names);
}

void Library::postChanged(const QString &path)
{
    if (!path.isEmpty()) {
        know({nameOf(path)});
        Q_EMIT modified({path});
    }
    Q_EMIT changed();
}
