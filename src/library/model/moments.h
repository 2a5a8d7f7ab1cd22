#pragma once

#include "library/model/library_choices.h"

#include <QDateTime>
#include <QString>
#include <limits>

// Moments in milliseconds since 1970.
struct Moments {
    static constexpr qint64 kFirst = std::numeric_limits<qint64>::min();
    static constexpr qint64 kEver = std::numeric_limits<qint64>::max();

    qint64 from = kFirst;
    qint64 to = kEver; // one past the last
    bool contains(qint64 moment) const { return moment >= from && moment < to; }
};

Moments momentsOf(DateRange range, const QDateTime &now);
// All moments for a filter that isn't about dates.
Moments momentsOf(LibraryFilter filter, const QDateTime &now);

// "Today", "Yesterday", "This Week" or a month, and the moments around one that share it. A file without a
// date (`CaptureTable::kUnknownDate`) is older than any.
struct DateHeading {
    QString title;
    Moments moments;
};
DateHeading dateHeading(qint64 moment, const QDateTime &now);
