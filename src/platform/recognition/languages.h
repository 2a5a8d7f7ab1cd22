#pragma once

#include "base/result.h"
#include "platform/text_engine.h"

#include <QMap>
#include <QString>
#include <QStringList>

// The languages to read a picture in by the names of their data: lines are read in the first, and again in
// another that they seem to be in.
struct ReadingOrder {
    QStringList names;
    QStringList folders; // of each one's data
};

// A user's languages without data are skipped; English follows them, as most screens hold some, and then all
// that is installed. Error::Kind::Unavailable when there is no data at all, Error::Kind::Invalid when one
// that alone is to be read has none.
Result<ReadingOrder> readingOrder(const TextLanguages &languages);

// Folders of the data by its name, the one that serves where several hold it.
QMap<QString, QString> installedLanguages();

// The name of a locale's data file without extension: "deu" for "de_AT", "chi_tra" for "zh_TW"; empty for
// unknown.
QString dataName(const QString &locale);
// The other way round: "de" for "deu".
QString localeCode(const QString &dataName);
