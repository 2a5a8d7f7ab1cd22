#include "library/library_filter.h"

#include <QCollator>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <utility>

namespace {

template <typename Value, size_t N>
std::optional<Value> lookUp(const std::array<std::pair<const char *, Value>, N> &table,
                            const QString &rawValue)
{
    for (const auto &[word, value] : table) {
        if (rawValue == QLatin1String(word))
            return value;
    }
    return std::nullopt;
}

constexpr std::array<std::pair<const char *, LibraryFilter>, 7> kFilters{{
    {"all", LibraryFilter::All},
    {"images", LibraryFilter::Images},
    {"videos", LibraryFilter::Videos},
    {"favorites", LibraryFilter::Favorites},
    {"today", LibraryFilter::Today},
    {"week", LibraryFilter::Week},
    {"month", LibraryFilter::Month},
}};

constexpr std::array<std::pair<const char *, LibrarySort>, 4> kSorts{{
    {"newest", LibrarySort::Newest},
    {"oldest", LibrarySort::Oldest},
    {"name", LibrarySort::Name},
    {"size", LibrarySort::Size},
}};

constexpr int kDay = 86400; // seconds

} // namespace

std::optional<LibraryFilter> libraryFilter(const QString &rawValue)
{
    return lookUp(kFilters, rawValue);
}

std::optional<LibrarySort> librarySort(const QString &rawValue)
{
    return lookUp(kSorts, rawValue);
}

bool matches(const Library &library, const LibraryItem &item, LibraryFilter filter, const QDateTime &now)
{
    switch (filter) {
    case LibraryFilter::All:
        return true;
    case LibraryFilter::Images:
        return !Library::isVideo(item.path);
    case LibraryFilter::Videos:
        return Library::isVideo(item.path);
    case LibraryFilter::Favorites:
        return library.catalog().isFavorite(item.path);
    case LibraryFilter::Today:
        return item.date.isValid() && item.date.date() == now.date();
    case LibraryFilter::Week:
        return item.date.isValid() && item.date > now.addSecs(-7 * kDay);
    case LibraryFilter::Month:
        return item.date.isValid() && item.date > now.addSecs(-30 * kDay);
    }
    Q_UNREACHABLE();
}

void sortItems(QList<LibraryItem> &items, LibrarySort sort)
{
    // The C locale knows no numbers in names.
    QCollator collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto before = [&](const LibraryItem &a, const LibraryItem &b) {
        switch (sort) {
        case LibrarySort::Newest:
            return a.date > b.date;
        case LibrarySort::Oldest:
            return a.date < b.date;
        case LibrarySort::Name:
            return collator.compare(QFileInfo(a.path).completeBaseName(),
                                    QFileInfo(b.path).completeBaseName()) < 0;
        case LibrarySort::Size:
            return a.bytes > b.bytes;
        }
        Q_UNREACHABLE();
    };
    std::stable_sort(items.begin(), items.end(), before);
}
