#pragma once

#include "library/library_filter.h"
#include "library/library_meta.h"

#include <QString>
#include <QStringList>
#include <QUuid>
#include <array>
#include <variant>

// What a person chooses from in a Library window, and how it is called.

// "All Captures", "Screenshots", …
QString title(LibraryFilter filter);
QString title(LibrarySort sort);
// As settings keep it, and as `librarySort` reads it.
QString rawValue(LibrarySort sort);

enum class DateRange { Any, Today, Week, Month, Year };
constexpr std::array kDateRanges{DateRange::Any, DateRange::Today, DateRange::Week, DateRange::Month,
                                 DateRange::Year};
QString title(DateRange range);

// A row of the sidebar.
struct CollectionRow {
    QUuid id;
    bool operator==(const CollectionRow &) const = default;
};
struct ApplicationRow {
    QString name;
    bool operator==(const ApplicationRow &) const = default;
};
using SidebarItem = std::variant<LibraryFilter, CollectionRow, ApplicationRow>;

// The sheet in front of the window.
struct LibrarySheet {
    enum class Kind { Export, Pdf, Combine, Rename, Guide, NewCollection, RenameCollection, CleanUp };

    Kind kind = Kind::Export;
    QStringList paths;            // what it is about; for a new collection, what goes into it
    LibraryCollection collection; // the one to rename

    QString id() const;
    bool operator==(const LibrarySheet &) const = default;
};
