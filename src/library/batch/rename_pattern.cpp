#include "library/batch/rename_pattern.h"

QString RenamePattern::name(const QString &pattern, int index, const QDate &date, const QString &original)
{
    const QString number = QString::number(index);
    const QString numberMark = QStringLiteral("{n}");
    QString name = pattern;
    name.replace(numberMark, number);
    name.replace(QStringLiteral("{date}"), date.toString(QStringLiteral("yyyy-MM-dd")));
    name.replace(QStringLiteral("{name}"), original);
    if (!pattern.contains(numberMark))
        name += QLatin1Char(' ') + number;
    while (name.startsWith(QLatin1Char(' ')))
        name.remove(0, 1);
    while (name.endsWith(QLatin1Char(' ')))
        name.chop(1);
    return name;
}
