#pragma once

#include "library/library.h"

#include <QDateTime>
#include <QString>
#include <optional>

enum class LibraryFilter { All, Images, Videos, Favorites, Today, Week, Month };
enum class LibrarySort { Newest, Oldest, Name, Size };

// Raw values: "all", "images", "videos", "favorites", "today", "week", "month".
std::optional<LibraryFilter> libraryFilter(const QString &rawValue);
// Raw values: "newest", "oldest", "name", "size".
std::optional<LibrarySort> librarySort(const QString &rawValue);

bool matches(const Library &library, const LibraryItem &item, LibraryFilter filter, const QDateTime &now);
// Stable. Names compare as people count: "Shot 2" comes before "Shot 10".
void sortItems(QList<LibraryItem> &items, LibrarySort sort);
