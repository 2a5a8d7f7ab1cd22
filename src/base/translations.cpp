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

} // namespace

void installTranslations()
{
    install(QStringLiteral("en"));
    const QString asked = qEnvironmentVariable("LUMENPOST_LANGUAGE");
    const QStringList wanted = asked.isEmpty() ? QLocale::system().uiLanguages() : QStringList{asked};
    for (const QString &name : wanted) {
        const QString language = name.section(QLatin1Char('-'), 0, 0).section(QLatin1Char('_'), 0, 0);
        if (language == QLatin1String("en") || language == QLatin1String("C") || install(language))
            return;
    }
}
