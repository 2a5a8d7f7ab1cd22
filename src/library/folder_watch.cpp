#include "library/folder_watch.h"

#include "base/file_name.h"
#include "base/parallel.h"
#include "library/shared_names.h"

#include <QDateTime>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace {

// Programs that save write several times within this.
constexpr int kSettle = 250;
// A file that was written so short ago is looked at once more: writing into it makes no event.
constexpr int kGrowing = 2000;

FolderWatch::State stateOf(const struct stat &state)
{
    return {state.st_ino, state.st_size, state.st_mtim.tv_sec * 1'000'000'000LL + state.st_mtim.tv_nsec};
}

} // namespace

FolderWatch::FolderWatch(QString folder, std::function<bool(const QString &)> concerns, QObject *parent)
    : QObject(parent), m_folder(std::move(folder)), m_concerns(std::move(concerns))
{
    m_settle.setSingleShot(true);
    connect(&m_settle, &QTimer::timeout, this, &FolderWatch::rescan);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_settle.isActive()) // not put off for ever by one that never settles
            m_settle.start(kSettle);
    });
    m_watcher.addPath(m_folder);
    rescan();
}

FolderWatch::Listing FolderWatch::list(const QString &folder,
                                       const std::function<bool(const QString &)> &concerns)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> directory(opendir(FileName::toBytes(folder).constData()),
                                                         closedir);
    if (!directory)
        return {};
    struct Entry {
        QByteArray bytes;
        QString name;
        std::optional<State> state;
    };
    std::vector<Entry> entries;
    while (const dirent *entry = readdir(directory.get()))
        entries.push_back({entry->d_name, {}, {}});
    const auto look = [&concerns, place = dirfd(directory.get())](Entry &entry) {
        entry.name = FileName::fromBytes(entry.bytes);
        struct stat state;
        if (!concerns(entry.name))
            return;
        if (fstatat(place, entry.bytes.constData(), &state, 0) != 0) {
            if (errno != ENOENT)
                entry.state = {.modified = State::kUnknown};
        } else if (S_ISREG(state.st_mode)) {
            entry.state = stateOf(state);
        }
    };
    // A hundred thousand take a tenth of a second on one thread, and longer where the disk is asked.
    constexpr size_t kWorthThreads = 2000;
    constexpr size_t kThreads = 4;
    const size_t threads = entries.size() < kWorthThreads ? 1 : kThreads;
    inParallel(static_cast<int>(threads), [&](int thread) {
        for (auto i = static_cast<size_t>(thread); i < entries.size(); i += threads)
            look(entries[i]);
    });
    Listing listing;
    listing.reserve(static_cast<qsizetype>(entries.size()));
    for (const Entry &entry : entries) {
        if (entry.state)
            listing.insert(sharedName(entry.name), *entry.state);
    }
    return listing;
}

void FolderWatch::whenListed(QObject *owner, std::function<void(const Listing &)> callback)
{
    if (m_listing)
        whenDone(readyFuture(*m_listing), owner, std::move(callback));
    else
        m_waiting.emplace_back(owner, std::move(callback));
}

FolderWatch::News FolderWatch::difference(const Listing &before, const Listing &after)
{
    News news;
    QHash<quint64, QString> gone;
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        const auto now = after.find(entry.key());
        if (now == after.end())
            gone.insert(entry->inode, entry.key());
        else if (*now != *entry)
            news.modified.append(entry.key());
    }
    for (auto entry = after.begin(); entry != after.end(); ++entry) {
        if (before.contains(entry.key()))
            continue;
        // File systems use the numbers of removed files again: only one that is the same in all is renamed.
        const auto old = gone.find(entry->inode);
        if (old != gone.end() && before.value(*old) == *entry) {
            news.renamed.append({*old, entry.key()});
            gone.erase(old);
        } else {
            news.added.append(entry.key());
        }
    }
    news.removed = gone.values();
    return news;
}

void FolderWatch::know(const QStringList &names)
{
    for (const QString &name : names) {
        if (m_isLooking)
            m_knownMeanwhile.insert(name);
        if (!m_listing)
            continue;
        struct stat state;
        if (stat(FileName::toBytes(m_folder + QLatin1Char('/') + name).constData(), &state) == 0)
            m_listing->insert(name, stateOf(state));
        else
            m_listing->remove(name);
    }
}

void FolderWatch::rescan()
{
    if (m_watcher.directories().isEmpty())
        m_watcher.addPath(m_folder); // a folder that was removed may be there again
    if (std::exchange(m_isLooking, true)) {
        m_looksAgain = true;
        return;
    }
    whenDone(runInBackground([folder = m_folder, concerns = m_concerns] { return list(folder, concerns); }),
             this, [this](const Listing &now) { compare(now); });
}

void FolderWatch::compare(const Listing &found)
{
    m_isLooking = false;
    Listing now = found;
    const QSet<QString> known = std::exchange(m_knownMeanwhile, {});
    for (const QString &name : known) {
        if (m_listing && m_listing->contains(name))
            now.insert(name, m_listing->value(name));
        else if (m_listing)
            now.remove(name);
    }
    const News news = m_listing ? difference(*m_listing, now) : News{};
    m_listing = now;
    for (const auto &[owner, callback] : std::exchange(m_waiting, {})) {
        if (owner)
            callback(*m_listing);
    }
    const qint64 recent = (QDateTime::currentMSecsSinceEpoch() - kGrowing) * 1'000'000;
    const auto isRecent = [&](const QString &name) { return now.value(name).modified > recent; };
    if (std::exchange(m_looksAgain, false))
        rescan();
    else if (std::any_of(news.added.begin(), news.added.end(), isRecent) ||
             std::any_of(news.modified.begin(), news.modified.end(), isRecent))
        m_settle.start(kGrowing);
    if (!news.isEmpty())
        Q_EMIT changed(news);
}
