#pragma once

#include <QString>
#include <QStringList>
#include <ostream>

// So that a failed comparison shows texts instead of their bytes.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    PrintTo(texts.join(QStringLiteral("\", \"")), out);
}
