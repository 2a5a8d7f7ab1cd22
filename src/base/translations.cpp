#include "base/translations.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace {

bool install(const QString &language)
{
    auto *const translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QStringLiteral(":/translations/lumenpost_%1.qm").arg(language)) &&
        QCoreApplication::installTranslator(translator))
        return true;
    delete translator;
    return false;
}

QStringList wantedLanguages()
{
    const QString asked = qEnvironmentVariable("LUMENPOST_LANGUAGE");
    QStringList languages;
    for (const QString &name : asked.isEmpty() ? QLocale::system().uiLanguages() : QStringList{asked})
        languages.append(name.section(QLatin1Char('-'), 0, 0).section(QLatin1Char('_'), 0, 0));
    return languages;
}

bool isEnglish(const QString &language)
{
    return language == QLatin1String("en") || language == QLatin1String("C");
}

} // namespace

void installTranslations()
{
    install(QStringLiteral("en"));
    for (const QString &language : wantedLanguages()) {
        if (isEnglish(language) || install(language))
            return;
    }
}

bool speaksEnglish()
{
    return isEnglish(wantedLanguages().value(0, QStringLiteral("en")));
}
