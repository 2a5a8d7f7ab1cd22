#include "platform/recognition/languages.h"

#include "platform/texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QRegularExpression>

namespace {

const QHash<QString, QString> &namesByCode()
{
    static const QHash<QString, QString> names{
        {"af", "afr"}, {"am", "amh"}, {"ar", "ara"}, {"as", "asm"}, {"az", "aze"}, {"be", "bel"},
        {"bg", "bul"}, {"bn", "ben"}, {"br", "bre"}, {"bs", "bos"}, {"ca", "cat"}, {"cs", "ces"},
        {"cy", "cym"}, {"da", "dan"}, {"de", "deu"}, {"el", "ell"}, {"en", "eng"}, {"eo", "epo"},
        {"es", "spa"}, {"et", "est"}, {"eu", "eus"}, {"fa", "fas"}, {"fi", "fin"}, {"fo", "fao"},
        {"fr", "fra"}, {"ga", "gle"}, {"gd", "gla"}, {"gl", "glg"}, {"gu", "guj"}, {"he", "heb"},
        {"hi", "hin"}, {"hr", "hrv"}, {"hu", "hun"}, {"hy", "hye"}, {"id", "ind"}, {"is", "isl"},
        {"it", "ita"}, {"ja", "jpn"}, {"ka", "kat"}, {"kk", "kaz"}, {"km", "khm"}, {"kn", "kan"},
        {"ko", "kor"}, {"ky", "kir"}, {"la", "lat"}, {"lb", "ltz"}, {"lo", "lao"}, {"lt", "lit"},
        {"lv", "lav"}, {"mk", "mkd"}, {"ml", "mal"}, {"mn", "mon"}, {"mr", "mar"}, {"ms", "msa"},
        {"mt", "mlt"}, {"my", "mya"}, {"nb", "nor"}, {"ne", "nep"}, {"nl", "nld"}, {"nn", "nor"},
        {"no", "nor"}, {"oc", "oci"}, {"or", "ori"}, {"pa", "pan"}, {"pl", "pol"}, {"pt", "por"},
        {"ro", "ron"}, {"ru", "rus"}, {"si", "sin"}, {"sk", "slk"}, {"sl", "slv"}, {"sq", "sqi"},
        {"sr", "srp"}, {"sv", "swe"}, {"sw", "swa"}, {"ta", "tam"}, {"te", "tel"}, {"th", "tha"},
        {"tr", "tur"}, {"uk", "ukr"}, {"ur", "urd"}, {"uz", "uzb"}, {"vi", "vie"}, {"yi", "yid"},
    };
    return names;
}

QStringList dataFolders()
{
    const QString given = qEnvironmentVariable("TESSDATA_PREFIX");
    if (!given.isEmpty())
        return {given, given + "/tessdata"};
    QStringList folders{QCoreApplication::applicationDirPath() + "/../share/lumenpost/tessdata"};
    for (const QString &root : {QString("/usr/local/share"), QString("/usr/share")}) {
        const QDir versions(root + "/tesseract-ocr");
        for (const QString &version :
             versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed))
            folders.append(versions.filePath(version) + "/tessdata");
        folders.append(root + "/tessdata");
    }
    return folders;
}

} // namespace

QString dataName(const QString &locale)
{
    const QString code = locale.section(QRegularExpression("[-_.@]"), 0, 0).toLower();
    if (code == "zh") {
        const bool traditional = locale.contains("TW") || locale.contains("HK") || locale.contains("Hant");
        return traditional ? "chi_tra" : "chi_sim";
    }
    return namesByCode().value(code);
}

QString localeCode(const QString &dataName)
{
    return dataName.startsWith("chi_") ? "zh" : namesByCode().key(dataName);
}

QMap<QString, QString> installedLanguages()
{
    QMap<QString, QString> installed;
    for (const QString &folder : dataFolders())
        for (const QString &file : QDir(folder).entryList({"*.traineddata"}, QDir::Files)) {
            const QString name = file.chopped(int(qstrlen(".traineddata")));
            // Data for the direction of pages and for formulas.
            if (name != "osd" && name != "equ" && !installed.contains(name))
                installed.insert(name, folder);
        }
    return installed;
}

Result<ReadingOrder> readingOrder(const TextLanguages &languages)
{
    const QMap<QString, QString> installed = installedLanguages();
    if (installed.isEmpty())
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("No language data for reading text is installed; the package "
                                      "tesseract-ocr-eng has the one for English."));
    const bool isOpen = languages.others == TextLanguages::Others::WhereSeen;
    ReadingOrder order;
    for (const QString &wanted : languages.preferred) {
        const QString name = installed.contains(wanted) ? wanted : dataName(wanted);
        if (installed.contains(name))
            order.names.append(name);
        else if (!isOpen)
            return fail(Error::Kind::Invalid,
                        PlatformTexts::tr("No language data for “%1” is installed; there is: %2.")
                            .arg(wanted, QStringList(installed.keys()).join(", ")));
    }
    if (isOpen) {
        if (installed.contains("eng"))
            order.names.append("eng");
        order.names.append(installed.keys());
    }
    order.names.removeDuplicates();
    for (const QString &name : std::as_const(order.names))
        order.folders.append(installed[name]);
    return order;
}
