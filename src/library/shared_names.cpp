#include "library/shared_names.h"

#include <QSet>
#include <algorithm>
#include <mutex>

QString sharedName(const QString &name)
{
    constexpr qsizetype kFew = 1000;
    static std::mutex mutex;
    static QSet<QString> names;
    static qsizetype next = kFew; // to look for forgotten ones at
    const std::lock_guard guard(mutex);
    if (names.size() >= next) {
        names.removeIf([](const QString &kept) { return kept.isDetached(); });
        next = std::max(kFew, names.size() * 2);
    }
    return *names.insert(name);
}
