#include "library/auto_delete.h"

#include "library/library.h"
#include "library/library_names.h"

#include <algorithm>

QStringList outdatedCaptures(Library &library, int days, const QDateTime &now)
{
    if (days < 1)
        return {};
    const QDateTime cutoff = now.addSecs(-86400ll * days);
    QSet<QString> kept = library.catalog().data().favorites;
    for (const LibraryCollection &collection : library.catalog().meta().collections)
        kept += QSet<QString>(collection.items.begin(), collection.items.end());
    QStringList paths;
    for (const QString &path : library.items()) {
        const QDateTime date = library.item(path).date;
        if (date.isValid() && date < cutoff && !kept.contains(LibraryNames::nameOf(path)))
            paths.append(path);
    }
    return paths;
}

int autoDelete(Library &library, int days, const QDateTime &now)
{
    const QStringList paths = outdatedCaptures(library, days, now);
    // One that the Trash doesn't take stays, and isn't told of as gone.
    return static_cast<int>(std::count_if(paths.begin(), paths.end(), [&library](const QString &path) {
        return library.remove(path).has_value();
    }));
}
