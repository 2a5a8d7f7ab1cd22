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
#include "library/library_names.h"
#include "library/reservations.h"
#include "library/texts.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <sys/stat.h>

using LibraryNames::baseOf;
using LibraryNames::nameOf;

namespace {

QString lowerExtension(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    return dot > path.lastIndexOf(QLatin1Char('/')) ? path.sliced(dot + 1).toLower() : QString();
}

} // namespace

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

bool Library::isOfLibrary(const QString &name)
{
    return LibraryNames::isProper(name) && (isImage(name) || isVideo(name));
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
    return newest(FolderWatch::list(folder(), isOfLibrary), folder());
}

QStringList Library::newest(const FolderWatch::Listing &files, const QString &folder, qsizetype most)
{
    std::vector<std::pair<qint64, QString>> dated;
    dated.reserve(static_cast<size_t>(files.size()));
    for (auto file = files.begin(); file != files.end(); ++file)
        dated.emplace_back(file->modified, file.key());
    const auto wanted = dated.begin() + std::min<std::ptrdiff_t>(most, std::ssize(dated));
    std::partial_sort(dated.begin(), wanted, dated.end(), [](const auto &a, const auto &b) {
        return a.first != b.first ? a.first > b.first : a.second < b.second;
    });
    const QDir place(folder);
    QStringList paths;
    for (auto file = dated.begin(); file != wanted; ++file)
        paths.append(place.filePath(file->second));
    return paths;
}

void Library::whenListed(QObject *owner, std::function<void(const FolderWatch::Listing &)> callback) const
{
    if (m_watch)
        m_watch->whenListed(owner, std::move(callback));
    else
        whenDone(runInBackground([folder = folder()] { return FolderWatch::list(folder, isOfLibrary); }),
                 owner, std::move(callback));
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
    const QString stem = LibraryNames::kCapture +
                         QLocale().toString(m_clock.now(), QStringLiteral(" yyyy-MM-dd 'at' HH.mm.ss"));
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
        FileTree::remove(hidden + QStringLiteral("/thumbs"));
        for (const QString &place :
             {folder, hidden, hidden + QStringLiteral("/projects"), hidden + QStringLiteral("/versions")})
            ScratchFolder::clearLeftovers(place);
    });
}

// What a tool that synchronises the folder put beside the catalog because another machine had changed it,
// too.
void Library::takeInCopies()
{
    if (m_takingIn != TakingIn::Idle) {
        m_takingIn = TakingIn::AgainAfterwards;
        return;
    }
    m_takingIn = TakingIn::Running;
    const QString directory = Companions::hiddenIn(folder());
    whenDone(runInBackground([directory] { return ConflictCopies::read(directory); }), this,
             [this, directory](const ConflictCopies::Copies &copies) {
                 if (std::exchange(m_takingIn, TakingIn::Idle) == TakingIn::AgainAfterwards)
                     takeInCopies();
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
