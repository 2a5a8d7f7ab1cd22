#include "library/library.h"

#include "base/atomic_file.h"
#include "base/file_name.h"
#include "base/file_tree.h"
#include "base/free_name.h"
#include "base/log.h"
#include "base/scratch_folder.h"
#include "document/image_files.h"
#include "library/companions.h"
#include "library/conflict_copies.h"
#include "library/folder_watch.h"
#include "library/intent.h"
#include "library/library_names.h"
#include "library/texts.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <mutex>
#include <sys/stat.h>

using LibraryNames::baseOf;
using LibraryNames::nameOf;

namespace {

const QString kCapture = QStringLiteral("Capture");

QString lowerExtension(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

std::unexpected<Error> notOfLibrary(const QString &path)
{
    return fail(Error::Kind::Invalid, LibraryTexts::tr("%1 is not in the Library.").arg(nameOf(path)));
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

Library::~Library()
{
    stopCopying();
}

void Library::stopCopying()
{
    m_stop.request_stop();
}

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
    const FolderWatch::Listing files = FolderWatch::list(folder(), isOfLibrary);
    QStringList names = files.keys();
    names.sort();
    std::ranges::stable_sort(names, std::greater(),
                             [&](const QString &name) { return files[name].modified; });
    for (QString &name : names)
        name = inFolder(name);
    return names;
}

LibraryItem Library::item(const QString &path) const
{
    struct stat state;
    if (::stat(FileName::toBytes(path).constData(), &state) != 0)
        return {path, {}, 0};
    return {path,
            QDateTime::fromMSecsSinceEpoch(state.st_mtim.tv_sec * 1000 + state.st_mtim.tv_nsec / 1'000'000),
            state.st_size};
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

// The copy of a file into the Library, for any thread.
std::function<Result<QString>()> Library::copyOf(const QString &path)
{
    return [path, folder = folder(), reserved = m_reservations->all(),
            stop = m_stop.get_token()]() -> Result<QString> {
        const QFileInfo info(path);
        struct stat state;
        // The toolkit finds no file whose name is no text.
        if (::stat(FileName::toBytes(path).constData(), &state) != 0 || S_ISDIR(state.st_mode))
            return fail(Error::Kind::NotFound, LibraryTexts::tr("There is no file %1.").arg(path));
        if (!isImage(path) && !isVideo(path))
            return fail(
                Error::Kind::Invalid,
                LibraryTexts::tr("%1 is neither an image nor a film of the Library.").arg(info.fileName()));
        if (isImage(path) && state.st_size > ImageFiles::kMostBytes)
            return fail(Error::Kind::Invalid,
                        LibraryTexts::tr("%1 is too large for a picture: %2.")
                            .arg(info.fileName(), QLocale().formattedDataSize(state.st_size, 0)));
        const QString clean = LibraryNames::cleaned(baseOf(path));
        // A name that would be hidden here, or is too long, gives way; any other is kept as it is.
        const bool isText = info.fileName().isValidUtf16();
        const bool isKept =
            isText && LibraryNames::isProper(info.fileName()) && clean.size() >= baseOf(path).size() - 8;
        auto target =
            AtomicFile::copyNew(path, folder, isKept ? baseOf(path) : (clean.isEmpty() ? kCapture : clean),
                                info.suffix(), reserved, stop);
        if (!target && !target.error().isCancelled())
            return fail(LibraryTexts::tr("Couldn't copy %1 into the Library: %2")
                            .arg(info.fileName(), target.error().message),
                        target.error().detail);
        return target;
    };
}

Result<QString> Library::importFile(const QString &path)
{
    if (contains(path) && FileTree::isFile(path))
        return QFileInfo(path).absoluteFilePath();
    ensureDirectory();
    auto target = copyOf(path)();
    if (target)
        know({nameOf(*target)});
    return target;
}

QFuture<QList<Library::Outcome>> Library::importInBackground(const QStringList &paths)
{
    const auto outcomes = std::make_shared<Outcomes>();
    outcomes->start();
    Q_EMIT working(QStringLiteral("importing files"), QFuture<void>(outcomes->future()));
    importEach(paths, outcomes);
    return outcomes->future();
}

Task<> Library::importEach(QStringList paths, std::shared_ptr<Outcomes> outcomes)
{
    ensureDirectory();
    QList<Outcome> done;
    QStringList imports;
    for (const QString &path : paths) {
        if (contains(path))
            continue;
        auto target = co_await guarded(runInBackground(copyOf(path)), this);
        if (!target && target.error().isCancelled())
            co_return;
        if (target) {
            know({nameOf(*target)});
            imports.append(*target);
            Q_EMIT added({*target});
            Q_EMIT changed();
        } else {
            Log::error(QStringLiteral("A file could not be imported"), target.error());
        }
        done.append({path, std::move(target)});
    }
    if (!imports.isEmpty())
        Q_EMIT imported(imports);
    outcomes->addResult(done);
    outcomes->finish();
}

Result<QString> Library::rename(const QString &path, const QString &name)
{
    const QString clean = LibraryNames::cleaned(name);
    if (clean.isEmpty())
        return fail(Error::Kind::Invalid, LibraryTexts::tr("“%1” is no name for a file.").arg(name));
    if (!contains(path))
        return notOfLibrary(path);
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

Result<QString> Library::remove(const QString &path)
{
    if (!contains(path))
        return notOfLibrary(path);
    return finishTrashing(path, m_trash.prepare(path, m_stop.get_token()), Undo::None);
}

QFuture<QList<Library::Outcome>> Library::removeInBackground(const QStringList &paths)
{
    const auto outcomes = std::make_shared<Outcomes>();
    outcomes->start();
    Q_EMIT working(QStringLiteral("moving files to the Trash"), QFuture<void>(outcomes->future()));
    removeEach(paths, outcomes);
    return outcomes->future();
}

QFuture<QList<Library::Outcome>> Library::putBackInBackground(const QStringList &trashed)
{
    auto outcomes = std::make_shared<Outcomes>();
    outcomes->start();
    Q_EMIT working(QStringLiteral("putting back what was removed"), QFuture<void>(outcomes->future()));
    putBackEach(trashed, outcomes);
    return outcomes->future();
}

Task<> Library::putBackEach(QStringList trashed, std::shared_ptr<Outcomes> outcomes)
{
    QList<Outcome> done;
    for (const QString &path : trashed) {
        const auto capture = m_removed.take(path);
        if (!capture || !contains(capture->path)) {
            done.append(
                {path, fail(Error::Kind::NotFound,
                            LibraryTexts::tr("%1 can only be had back from the Trash.").arg(nameOf(path)))});
            continue;
        }
        const auto takeBack = [trash = &m_trash, path, target = capture->path, stop = m_stop.get_token()] {
            return trash->takeBack(path, target, stop);
        };
        auto back = co_await guarded(runInBackground(takeBack), this);
        if (!back && back.error().isCancelled())
            co_return;
        done.append({path, finishPuttingBack(*capture, std::move(back))});
    }
    outcomes->addResult(done);
    outcomes->finish();
}

Result<QString> Library::finishPuttingBack(const RemovedCaptures::Capture &capture, Result<QString> back)
{
    if (!back)
        return back;
    const QString name = nameOf(*back);
    const auto lock = m_catalog.begin();
    if (!capture.aside.isEmpty())
        Companions(folder()).takeBack(name, capture.aside);
    m_catalog.store(lock, capture.patch(m_catalog.data(), name));
    know({name});
    Q_EMIT added({*back});
    Q_EMIT changed();
    return back;
}

Task<> Library::removeEach(QStringList paths, std::shared_ptr<Outcomes> outcomes)
{
    m_removed.begin();
    QList<Outcome> done;
    for (const QString &path : paths) {
        if (!contains(path)) {
            done.append({path, notOfLibrary(path)});
            continue;
        }
        const auto prepare = [trash = &m_trash, path, stop = m_stop.get_token()] {
            return trash->prepare(path, stop);
        };
        auto move = co_await guarded(runInBackground(prepare), this);
        if (!move && move.error().isCancelled())
            co_return;
        done.append({path, finishTrashing(path, std::move(move), Undo::Possible)});
    }
    outcomes->addResult(done);
    outcomes->finish();
}

// The quick rest of a removal, as one with what is known of the file.
Result<QString> Library::finishTrashing(const QString &path, Result<std::unique_ptr<Trash::Move>> move,
                                        Undo undo)
{
    recover();
    const auto lock = m_catalog.begin();
    if (!lock)
        return std::unexpected(lock.error());
    const QString name = nameOf(path);
    if (auto written = Intent::write(Companions::hiddenIn(folder()), {name, {}, inodeOf(path)}); !written)
        return std::unexpected(written.error());
    const auto trashed = move ? (*move)->finish() : Result<QString>(std::unexpected(move.error()));
    const Companions companions(folder());
    const bool isGone = !companions.isThere(name);
    if (isGone && trashed && undo == Undo::Possible) {
        auto capture = RemovedCaptures::Capture::of(m_catalog.data(), path);
        if (companions.hasAny(name))
            capture.aside = m_removed.nextAside(Companions::hiddenIn(folder()));
        finishRemove(lock, name, capture.aside);
        m_removed.add(*trashed, std::move(capture));
    } else if (isGone) {
        finishRemove(lock, name);
    }
    Intent::clear(Companions::hiddenIn(folder()));
    if (!trashed && !isGone) {
        Log::error(QStringLiteral("Couldn't move %1 to the Trash").arg(name), trashed.error());
        return trashed;
    }
    know({name});
    Q_EMIT removed({path});
    Q_EMIT changed();
    // What was gone before has been forgotten, but did not go to the Trash.
    return trashed;
}

void Library::finishRemove(const Result<FileLock> &lock, const QString &name, const QString &aside)
{
    Companions(folder()).setAside(name, aside);
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
                FileTree::remove(inFolder(intent->name));
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
        takeInCopies();
    };
    connect(m_catalogWatch.get(), &QFileSystemWatcher::directoryChanged, this, follow);
    connect(m_catalogWatch.get(), &QFileSystemWatcher::fileChanged, this, follow);
    watchCatalog();
    takeInCopies();
    runInBackground([folder = folder()] {
        const QString hidden = Companions::hiddenIn(folder);
        // Where earlier versions of the program kept thumbnails.
        QDir(hidden + QStringLiteral("/thumbs")).removeRecursively();
        for (const QString &place :
             {folder, hidden, hidden + QStringLiteral("/projects"), hidden + QStringLiteral("/versions")})
            ScratchFolder::clearLeftovers(place);
    });
}

// What a tool that synchronises the folder put beside the catalog because another machine had changed it,
// too.
void Library::takeInCopies()
{
    if (m_isTakingIn)
        return;
    m_isTakingIn = true;
    const QString directory = Companions::hiddenIn(folder());
    whenDone(runInBackground([directory] { return ConflictCopies::read(directory); }), this,
             [this, directory](const ConflictCopies::Copies &copies) {
                 m_isTakingIn = false;
                 if (copies.names.isEmpty() || directory != Companions::hiddenIn(folder()))
                     return;
                 if (const auto taken = ConflictCopies::takeIn(*this, copies); !taken)
                     Log::error(QStringLiteral("Metadata of another machine can't be taken in"),
                                taken.error());
                 else
                     Q_EMIT changed();
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
