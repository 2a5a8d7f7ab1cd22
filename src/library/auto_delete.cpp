#include "library/auto_delete.h"

#include "base/async.h"
#include "library/library.h"

#include <algorithm>

namespace {

QSet<QString> keptOf(const LibraryCatalog &catalog)
{
    QSet<QString> kept = catalog.data().favorites;
    for (const LibraryCollection &collection : catalog.meta().collections)
        kept += QSet<QString>(collection.items.begin(), collection.items.end());
    return kept;
}

QStringList outdatedOf(FolderWatch::Listing files, const QString &folder, const QSet<QString> &kept,
                       const QDateTime &cutoff)
{
    const qint64 first = cutoff.toMSecsSinceEpoch() * 1'000'000;
    files.removeIf([&](FolderWatch::Listing::iterator file) {
        return file->modified == FolderWatch::State::kUnknown || file->modified >= first ||
               kept.contains(file.key());
    });
    return Library::newest(files, folder);
}

QDateTime cutoffOf(int days, const QDateTime &now)
{
    return now.addSecs(-86400ll * days);
}

} // namespace

void whenOutdated(Library &library, int days, const QDateTime &now, QObject *owner,
                  std::function<void(const QStringList &)> callback)
{
    if (days < 1)
        return whenDone(readyFuture(QStringList()), owner, std::move(callback));
    const auto look = [&library, owner, cutoff = cutoffOf(days, now),
                       callback = std::move(callback)](const FolderWatch::Listing &files) {
        whenDone(runInBackground([files, folder = library.folder(), kept = keptOf(library.catalog()), cutoff] {
                     return outdatedOf(files, folder, kept, cutoff);
                 }),
                 owner, callback);
    };
    library.whenListed(owner, look);
}

int autoDelete(Library &library, int days, const QDateTime &now)
{
    if (days < 1)
        return 0;
    const QStringList paths = outdatedOf(FolderWatch::list(library.folder(), Library::isOfLibrary),
                                         library.folder(), keptOf(library.catalog()), cutoffOf(days, now));
    // One that the Trash doesn't take stays, and isn't told of as gone.
    return static_cast<int>(std::count_if(paths.begin(), paths.end(), [&library](const QString &path) {
        return library.remove(path).has_value();
    }));
}
