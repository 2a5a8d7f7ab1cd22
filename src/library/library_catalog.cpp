#include "library/library_catalog.h"

#include "base/log.h"
#include "library/library_names.h"

#include <algorithm>

using LibraryNames::nameOf;

namespace {

// How long the journal waits for more: a fold reads and writes all of the JSON files, which takes about 60 ms
// a megabyte, and shall take no more than a small part of the time.
constexpr int kShortestWait = 200;
constexpr int kLongestWait = 10'000;
constexpr qint64 kBytesPerMillisecond = 1000;

} // namespace

LibraryCatalog::LibraryCatalog(const QString &directory, QObject *parent)
    : QObject(parent), m_files(std::make_shared<CatalogFiles>(directory))
{
    m_foldTimer.setSingleShot(true);
    connect(&m_foldTimer, &QTimer::timeout, this, &LibraryCatalog::fold);
}

LibraryCatalog::~LibraryCatalog()
{
    if (const auto flushed = flush(); !flushed)
        Log::error(QStringLiteral("Library metadata could not be saved"), flushed.error());
}

void LibraryCatalog::setDirectory(const QString &directory)
{
    if (directory == m_files->directory())
        return;
    if (const auto flushed = flush(); !flushed)
        Log::error(QStringLiteral("Library metadata could not be saved"), flushed.error());
    m_files = std::make_shared<CatalogFiles>(directory);
    m_snapshot.reset();
    const bool isAwaited = std::exchange(m_firstRead, {}).isValid();
    m_unwritten.clear();
    m_lastError.reset();
    m_fold = {};
    m_isFolding = false;
    if (isAwaited)
        readInBackground();
}

CatalogFiles::Snapshot &LibraryCatalog::snapshot() const
{
    if (!m_snapshot)
        m_snapshot = m_firstRead.isValid() ? m_firstRead.result() : m_files->load();
    return *m_snapshot;
}

void LibraryCatalog::readInBackground()
{
    if (m_snapshot || m_firstRead.isValid())
        return;
    m_firstRead = runInBackground([files = m_files] { return files->load(); });
    whenDone(m_firstRead, this, [this, files = m_files](CatalogFiles::Snapshot snapshot) {
        if (files != m_files)
            return;
        m_firstRead = {};
        if (!m_snapshot)
            m_snapshot = std::move(snapshot);
        Q_EMIT read();
    });
}

bool LibraryCatalog::isFavorite(const QString &name) const
{
    return data().favorites.contains(nameOf(name));
}

std::optional<QString> LibraryCatalog::text(const QString &path) const
{
    const QString name = nameOf(path);
    const auto &texts = data().texts;
    const auto &descriptions = meta().descriptions;
    const auto text = texts.find(name);
    const auto description = descriptions.find(name);
    if (description == descriptions.end())
        return text == texts.end() ? std::nullopt : std::optional(text->toString());
    return text == texts.end() ? *description : text->toString() + QLatin1Char('\n') + *description;
}

bool LibraryCatalog::isInAnyCollection(const QString &path) const
{
    const QString name = nameOf(path);
    const auto &collections = meta().collections;
    return std::any_of(collections.begin(), collections.end(),
                       [&](const LibraryCollection &entry) { return entry.items.contains(name); });
}

void LibraryCatalog::setFavorite(const QString &name, bool on)
{
    CatalogPatch patch;
    patch.favorites.insert(nameOf(name), on);
    change(patch);
}

void LibraryCatalog::setIndexedText(const QString &name, const QString &text)
{
    CatalogPatch patch;
    patch.texts.insert(nameOf(name), text);
    change(patch);
}

void LibraryCatalog::setSource(const QString &name, const QString &application)
{
    CatalogPatch patch;
    patch.sources.insert(nameOf(name), application);
    change(patch);
}

void LibraryCatalog::setDescription(const QString &name, const QString &description)
{
    CatalogPatch patch;
    patch.descriptions.insert(nameOf(name), description);
    change(patch);
}

QUuid LibraryCatalog::createCollection(const QString &name)
{
    const LibraryCollection collection{QUuid::createUuid(), name, {}};
    CatalogPatch patch;
    patch.collections.append({collection.id, collection});
    change(patch);
    return collection.id;
}

void LibraryCatalog::deleteCollection(const QUuid &id)
{
    CatalogPatch patch;
    patch.collections.append({id, std::nullopt});
    change(patch);
}

namespace {

// One collection changed; nothing when there is none of that id.
CatalogPatch edited(const CatalogData &data, const QUuid &id,
                    const std::function<void(LibraryCollection &)> &edit)
{
    CatalogPatch patch;
    for (LibraryCollection collection : data.meta.collections) {
        if (collection.id != id)
            continue;
        edit(collection);
        patch.collections.append({id, collection});
        break;
    }
    return patch;
}

} // namespace

void LibraryCatalog::renameCollection(const QUuid &id, const QString &name)
{
    change([&](const CatalogData &data) {
        return edited(data, id, [&](LibraryCollection &collection) { collection.name = name; });
    });
}

void LibraryCatalog::add(const QStringList &names, const QUuid &collection)
{
    change([&](const CatalogData &data) {
        return edited(data, collection, [&](LibraryCollection &target) {
            QSet<QString> present(target.items.begin(), target.items.end());
            for (const QString &path : names) {
                const QString name = nameOf(path);
                if (present.contains(name))
                    continue;
                present.insert(name);
                target.items.append(name);
            }
        });
    });
}

void LibraryCatalog::removeFrom(const QStringList &names, const QUuid &collection)
{
    QSet<QString> gone;
    for (const QString &name : names)
        gone.insert(nameOf(name));
    change([&](const CatalogData &data) {
        return edited(data, collection, [&](LibraryCollection &target) {
            target.items.removeIf([&](const QString &name) { return gone.contains(name); });
        });
    });
}

void LibraryCatalog::updateMeta(const std::function<void(LibraryMeta &)> &edit)
{
    change([&](const CatalogData &data) {
        LibraryMeta after = data.meta;
        edit(after);
        return CatalogPatch::between(data.meta, after);
    });
}

void LibraryCatalog::change(const CatalogPatch &patch)
{
    store(begin(Needs::Nothing), patch);
    followDisk();
}

void LibraryCatalog::change(const std::function<CatalogPatch(const CatalogData &)> &make)
{
    const auto lock = begin();
    store(lock, make(data()));
}

Result<FileLock> LibraryCatalog::begin(Needs needs)
{
    snapshot();
    auto lock = m_files->lock();
    if (lock && m_files->marks() != m_snapshot->marks) {
        const auto news = needs == Needs::Data ? m_files->refresh(*m_snapshot)
                                               : m_files->catchUp(*m_snapshot).value_or(CatalogPatch());
        if (!news.isEmpty()) {
            for (const CatalogPatch &patch : m_unwritten)
                patch.apply(m_snapshot->data);
            tellOfOthers(news);
        }
    }
    return lock;
}

void LibraryCatalog::store(const Result<FileLock> &lock, const CatalogPatch &patch)
{
    Result<void> stored = lock ? Result<void>{} : Result<void>(std::unexpected(lock.error()));
    while (stored && !m_unwritten.isEmpty()) {
        stored = m_files->append(snapshot(), m_unwritten.first());
        if (stored)
            m_unwritten.removeFirst();
    }
    if (!patch.isEmpty()) {
        if (stored)
            stored = m_files->append(snapshot(), patch);
        if (!stored) {
            patch.apply(snapshot().data);
            m_unwritten.append(patch);
        }
    }
    if (!stored) {
        // Told once, not for each of a thousand texts.
        if (m_lastError != stored.error())
            Log::error(QStringLiteral("Library metadata could not be saved"), stored.error());
        m_lastError = stored.error();
    } else {
        m_lastError.reset();
    }
    scheduleFold();
    announce(patch);
}

void LibraryCatalog::announce(const CatalogPatch &patch)
{
    if (const QSet<QString> names = patch.names(); !names.isEmpty())
        Q_EMIT changed(QStringList(names.begin(), names.end()));
    if (!patch.collections.isEmpty())
        Q_EMIT collectionsChanged();
}

void LibraryCatalog::scheduleFold()
{
    if (m_foldTimer.isActive() || m_fold.isRunning())
        return;
    m_foldTimer.start(static_cast<int>(
        std::clamp<qint64>(m_files->jsonBytes() / kBytesPerMillisecond, kShortestWait, kLongestWait)));
}

void LibraryCatalog::fold()
{
    if (!m_unwritten.isEmpty())
        store(begin(), {});
    m_isFolding = true;
    m_fold = runInBackground([files = m_files] { return files->fold(); });
    whenDone(QFuture<Result<void>>(m_fold), this, [this, files = m_files](const Result<void> &folded) {
        if (files != m_files)
            return;
        m_isFolding = false;
        m_fold = {}; // its result is taken: it can't be waited for any more
        if (!folded)
            Log::error(QStringLiteral("Library metadata could not be saved"), folded.error());
        std::ignore = begin(Needs::Nothing); // sees that the files are our own
        followDisk();
        if (folded && m_files->hasJournal())
            scheduleFold();
    });
}

Result<void> LibraryCatalog::flush()
{
    m_foldTimer.stop();
    m_fold.waitForFinished();
    if (!m_unwritten.isEmpty())
        store(begin(), {});
    m_foldTimer.stop();
    if (m_lastError)
        return std::unexpected(*m_lastError);
    return m_files->fold();
}

// What a worker read, and how it differs from what was known as it began.
struct LibraryCatalog::Read {
    std::shared_ptr<CatalogFiles> files;
    CatalogFiles::Snapshot snapshot;
    CatalogPatch news;
};

void LibraryCatalog::followDisk()
{
    if (!m_snapshot || m_isReading || m_isFolding || m_files->marks() == m_snapshot->marks)
        return;
    m_isReading = true;
    const auto read = [files = m_files, before = m_snapshot->data]() mutable {
        auto found = std::make_shared<Read>(Read{files, files->load(), {}});
        found->news = CatalogPatch::between(before, found->snapshot.data);
        return found;
    };
    whenDone(runInBackground(read), this, [this](const std::shared_ptr<Read> &found) {
        m_isReading = false;
        if (found->files == m_files)
            takeIn(*found);
    });
}

void LibraryCatalog::takeIn(Read &read)
{
    {
        const auto lock = m_files->lock();
        // What was stored meanwhile; more than that is read in another go.
        const auto later = m_files->catchUp(read.snapshot);
        if (!later)
            return followDisk();
        read.news.add(*later);
    }
    for (const CatalogPatch &patch : m_unwritten)
        patch.apply(read.snapshot.data);
    std::swap(*m_snapshot, read.snapshot);
    drop(std::move(read.snapshot.data));
    tellOfOthers(read.news);
}

// To give the memory of so much back takes a while.
void LibraryCatalog::drop(CatalogData data)
{
    runInBackground([old = std::make_shared<CatalogData>(std::move(data))]() mutable { old.reset(); });
}

void LibraryCatalog::tellOfOthers(const CatalogPatch &news)
{
    if (news.isEmpty())
        return;
    announce(news);
    Q_EMIT changedOutside();
}
