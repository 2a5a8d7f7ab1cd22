#include "library/folder_watch.h"

#include "base/file_name.h"

#include <QDateTime>
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
    Listing listing;
    const auto close = [](DIR *directory) { closedir(directory); };
    const std::unique_ptr<DIR, decltype(close)> directory(opendir(FileName::toBytes(folder).constData()),
                                                          close);
    if (!directory)
        return listing;
    while (const dirent *entry = readdir(directory.get())) {
        const QString name = FileName::fromBytes(entry->d_name);
        struct stat state;
        if (concerns(name) && fstatat(dirfd(directory.get()), entry->d_name, &state, 0) == 0 &&
            S_ISREG(state.st_mode))
            listing.insert(name, stateOf(state));
    }
    return listing;
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
