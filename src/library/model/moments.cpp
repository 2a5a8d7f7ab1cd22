#include "library/model/moments.h"

#include "library/model/capture_table.h"
#include "library/texts.h"

#include <QLocale>
#include <algorithm>

namespace {

constexpr qint64 kDay = 86'400'000;

qint64 startOf(const QDate &date)
{
    return date.startOfDay().toMSecsSinceEpoch();
}

Moments lastDays(int days, const QDateTime &now)
{
    return {now.toMSecsSinceEpoch() - days * kDay + 1, Moments::kEver};
}

DateHeading monthOf(qint64 moment, qint64 weekAgo)
{
    const bool isKnown = moment != CaptureTable::kUnknownDate;
    const QDate date = isKnown ? QDateTime::fromMSecsSinceEpoch(moment).date() : QDate(1, 1, 1);
    const QDate first(date.year(), date.month(), 1);
    const QString title = QLocale().toString(first, QStringLiteral("MMMM yyyy")); // untranslated: a format
    if (!isKnown)
        return {title, {moment, moment + 1}};
    return {title, {startOf(first), std::min(startOf(first.addMonths(1)), weekAgo + 1)}};
}

} // namespace

Moments momentsOf(DateRange range, const QDateTime &now)
{
    switch (range) {
    case DateRange::Any:
        return {};
    case DateRange::Today:
        return momentsOf(LibraryFilter::Today, now);
    case DateRange::Week:
        return lastDays(7, now);
    case DateRange::Month:
        return lastDays(30, now);
    case DateRange::Year:
        return lastDays(365, now);
    }
    Q_UNREACHABLE();
}

Moments momentsOf(LibraryFilter filter, const QDateTime &now)
{
    switch (filter) {
    case LibraryFilter::Today:
        return {startOf(now.date()), startOf(now.date().addDays(1))};
    case LibraryFilter::Week:
        return lastDays(7, now);
    case LibraryFilter::Month:
        return lastDays(30, now);
    case LibraryFilter::All:
    case LibraryFilter::Images:
    case LibraryFilter::Videos:
    case LibraryFilter::Favorites:
        return {};
    }
    Q_UNREACHABLE();
}

DateHeading dateHeading(qint64 moment, const QDateTime &now)
{
    const Moments today = momentsOf(LibraryFilter::Today, now);
    const Moments yesterday{startOf(now.date().addDays(-1)), today.from};
    const qint64 weekAgo = now.toMSecsSinceEpoch() - 7 * kDay;
    if (today.contains(moment))
        return {LibraryTexts::tr("Today"), today};
    if (yesterday.contains(moment))
        return {LibraryTexts::tr("Yesterday"), yesterday};
    if (moment > weekAgo)
        return {LibraryTexts::tr("This Week"), moment >= today.to ? Moments{today.to, Moments::kEver}
                                                                  : Moments{weekAgo + 1, yesterday.from}};
    return monthOf(moment, weekAgo);
}
