#include "recording/film_time.h"

#include <QRegularExpression>
#include <cmath>

QString FilmTime::text(double seconds)
{
    // 0.29 s are 28.999… hundredths.
    const auto hundredths = qint64(std::floor(std::max(seconds, 0.0) * 100 + 1e-6));
    const qint64 minutes = hundredths / 6000;
    const QString rest = QString::asprintf("%02lld.%02lld", hundredths / 100 % 60, hundredths % 100);
    if (minutes < 60)
        return QStringLiteral("%1:%2").arg(minutes).arg(rest);
    return QString::asprintf("%lld:%02lld:", minutes / 60, minutes % 60) + rest;
}

std::optional<double> FilmTime::parse(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:(?:(\\d{1,3}):)?(\\d{1,5}):)?(\\d{1,6}(?:[.,]\\d{1,6})?|[.,]\\d{1,6})$"));
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    const bool hasMinutes = !match.captured(2).isEmpty();
    const double seconds = match.captured(3).replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
    const int minutes = match.captured(2).toInt();
    const bool hasHours = !match.captured(1).isEmpty();
    if ((hasMinutes && seconds >= 60) || (hasHours && minutes >= 60))
        return std::nullopt;
    return match.captured(1).toInt() * 3600.0 + minutes * 60.0 + seconds;
}
