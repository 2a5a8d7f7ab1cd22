#include "library/model/library_choices.h"

#include "library/texts.h"

QString title(LibraryFilter filter)
{
    switch (filter) {
    case LibraryFilter::All:
        return LibraryTexts::tr("All Captures");
    case LibraryFilter::Images:
        return LibraryTexts::tr("Screenshots");
    case LibraryFilter::Videos:
        return LibraryTexts::tr("Recordings");
    case LibraryFilter::Favorites:
        return LibraryTexts::tr("Favorites");
    case LibraryFilter::Today:
        return LibraryTexts::tr("Today");
    case LibraryFilter::Week:
        return LibraryTexts::tr("Last 7 Days");
    case LibraryFilter::Month:
        return LibraryTexts::tr("Last 30 Days");
    }
    Q_UNREACHABLE();
}

QString title(LibrarySort sort)
{
    switch (sort) {
    case LibrarySort::Newest:
        return LibraryTexts::tr("Newest First");
    case LibrarySort::Oldest:
        return LibraryTexts::tr("Oldest First");
    case LibrarySort::Name:
        return LibraryTexts::tr("Name");
    case LibrarySort::Size:
        return LibraryTexts::tr("File Size");
    }
    Q_UNREACHABLE();
}

QString rawValue(LibrarySort sort)
{
    switch (sort) {
    case LibrarySort::Newest:
        return QStringLiteral("newest");
    case LibrarySort::Oldest:
        return QStringLiteral("oldest");
    case LibrarySort::Name:
        return QStringLiteral("name");
    case LibrarySort::Size:
        return QStringLiteral("size");
    }
    Q_UNREACHABLE();
}

QString title(DateRange range)
{
    switch (range) {
    case DateRange::Any:
        return LibraryTexts::tr("Any Date");
    case DateRange::Today:
        return LibraryTexts::tr("Today");
    case DateRange::Week:
        return LibraryTexts::tr("Past Week");
    case DateRange::Month:
        return LibraryTexts::tr("Past Month");
    case DateRange::Year:
        return LibraryTexts::tr("Past Year");
    }
    Q_UNREACHABLE();
}

QString LibrarySheet::id() const
{
    switch (kind) {
    case Kind::Export:
        return QStringLiteral("export");
    case Kind::Pdf:
        return QStringLiteral("pdf");
    case Kind::Combine:
        return QStringLiteral("combine");
    case Kind::Rename:
        return QStringLiteral("rename");
    case Kind::Guide:
        return QStringLiteral("guide");
    case Kind::NewCollection:
        return QStringLiteral("newCollection");
    case Kind::RenameCollection:
        return QStringLiteral("renameCollection-") + collection.id.toString(QUuid::WithoutBraces).toUpper();
    case Kind::CleanUp:
        return QStringLiteral("cleanup");
    }
    Q_UNREACHABLE();
}
