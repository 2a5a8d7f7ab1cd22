#include "library/library_names.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>

QString LibraryNames::nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

QString LibraryNames::baseOf(const QString &path)
{
    return QFileInfo(path).completeBaseName();
}

bool LibraryNames::isProper(const QString &name)
{
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1Char('/'));
}

QString LibraryNames::cleaned(QString name)
{
    static const QRegularExpression forbidden(QStringLiteral("[/:\\\\\\n\\r\\t\"*?<>|\\x{0}]"));
    static const QRegularExpression leading(QStringLiteral("^[\\s.]+"));
    name = name.remove(forbidden).remove(leading).trimmed();
    // File systems count bytes, 255 of them; " 12345.jpeg" may follow.
    constexpr qsizetype kMostBytes = 240;
    while (name.toUtf8().size() > kMostBytes) {
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
        name = name.trimmed();
    }
    return name;
}
