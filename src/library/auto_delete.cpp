#include "library/auto_delete.h"

#include "library/library.h"

int autoDelete(Library &library, int days, const QDateTime &now)
{
    if (days < 1)
        return 0;
    const QDateTime cutoff = now.addSecs(-86400ll * days);
    int count = 0;
    for (const QString &path : library.items()) {
        const QDateTime date = library.item(path).date;
        if (!date.isValid() || date >= cutoff)
            continue;
        if (library.catalog().isFavorite(path) || library.catalog().isInAnyCollection(path))
            continue;
        // One that the Trash doesn't take stays, and isn't told of as gone.
        if (library.remove(path))
            ++count;
    }
    return count;
}
