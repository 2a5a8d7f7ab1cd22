#include "library/library_names.h"

#include <QRegularExpression>
#include <QStringList>

QString LibraryNames::nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString LibraryNames::baseOf(const QString &path)
{
    const QString name = nameOf(path);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

bool LibraryNames::isProper(const QString &name)
{
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1Char('/'));
}

QString LibraryNames::cleaned(QString name)
{
    static const QRegularExpression forbidden(QStringLiteral("[/:\\\\\\n\\r\\t\"*?<>|\\x{0}]"));
    static const QRegularExpression leading(QStringLiteral("^[\\s.]+"));
    // Bytes of a foreign name that are no text.
    for (qsizetype i = 0; i < name.size(); ++i) {
        const bool isPaired = name[i].isHighSurrogate() ? i + 1 < name.size() && name[i + 1].isLowSurrogate()
                                                        : i > 0 && name[i - 1].isHighSurrogate();
        if (name[i].isSurrogate() && !isPaired)
            name[i] = QLatin1Char('_');
    }
    name = name.remove(forbidden).remove(leading).trimmed();
    // File systems count bytes, 255 of them; " 12345.jpeg" may follow.
    constexpr qsizetype kMostBytes = 240;
    while (name.toUtf8().size() > kMostBytes) {
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
        name = name.trimmed();
    }
    return name;
}
