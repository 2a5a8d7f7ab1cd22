#pragma once

#include "base/result.h"

#include <QString>
#include <QStringList>

struct LanguageData {
    QString folder;    // of the .traineddata files
    QString languages; // names of data files joined by "+", the preferred first
};

// The data to read with for a user of these locales ("de_DE", the preferred first): at most two languages, as
// each costs its own time, and English when it is there, as most screens hold some. Locales without data are
// skipped. Error::Kind::Unavailable when there is no data at all.
Result<LanguageData> languageData(const QStringList &locales);

// The name of a locale's data file without extension: "deu" for "de_AT", "chi_tra" for "zh_TW"; empty for
// unknown.
QString dataName(const QString &locale);
