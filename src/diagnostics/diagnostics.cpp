#include "diagnostics/diagnostics.h"

#include "base/async.h"
#include "base/atomic_file.h"
#include "base/crash_report.h"
#include "base/free_name.h"
#include "base/log.h"
#include "base/read_file.h"
#include "diagnostics/private_text.h"
#include "diagnostics/texts.h"
#include "diagnostics/zip.h"
#include "library/library.h"
#include "platform/paths.h"
#include "platform/permissions.h"
#include "platform/screens.h"
#include "platform/secrets.h"
#include "settings/app_settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QThread>
#include <unistd.h>

namespace {

constexpr qint64 kMostBytes = 8 << 20; // of one text; a log has at most 2 MB
constexpr qsizetype kCrashReports = 5;

QString machineModel()
{
    QFile file(QStringLiteral("/sys/class/dmi/id/product_name"));
    const QString model =
        file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed() : QString();
    return model.isEmpty() ? QSysInfo::currentCpuArchitecture() : model;
}

qint64 wholeGigabytes()
{
    const auto bytes = qint64(::sysconf(_SC_PHYS_PAGES)) * ::sysconf(_SC_PAGESIZE);
    return (bytes + (1ll << 29)) >> 30;
}

QString word(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString word(PermissionStatus status, bool canBeUnasked)
{
    switch (status) {
    case PermissionStatus::Granted:
        return QStringLiteral("Granted");
    case PermissionStatus::Denied:
        // untranslated: a report for those who mend
        return QStringLiteral("Not granted");
    case PermissionStatus::NotAsked:
        // untranslated: a report for those who mend
        return canBeUnasked ? QStringLiteral("Not asked yet") : QStringLiteral("Not granted");
    }
    Q_UNREACHABLE();
}

const QString kKeyGap = QStringLiteral("<key>");

// A store of passwords that is locked isn't opened for this.
QString wordForKey(const Result<QString> &key)
{
    if (!key && key.error().kind != Error::Kind::NotFound)
        return QStringLiteral("unknown");
    return word(key && !key->isEmpty());
}

struct Work {
    QFuture<Result<QString>> key;
    QString logs;
    QString summary;
    QString target;
    QString title; // of the folder in the archive
    PrivateText::Known known;
};

Result<QString> pack(const Work &work)
{
    Log::flush();
    const Result<QString> key = work.key.result();
    PrivateText::Known known = work.known;
    known.secrets.append(key.value_or(QString()));
    const PrivateText text(known);
    QList<Zip::Entry> entries;
    const auto add = [&](const QString &path) {
        const auto bytes = ReadFile::whole(path, kMostBytes);
        if (bytes)
            entries.append({work.title + QLatin1Char('/') + QFileInfo(path).fileName(),
                            text.without(QString::fromUtf8(*bytes)).toUtf8()});
    };
    const QDir logs(work.logs);
    for (const auto &name : {"lumenpost.log", "lumenpost.1.log", "last-exception.txt"})
        add(logs.filePath(QLatin1String(name)));
    const QDir crashes(CrashReport::folderIn(work.logs));
    const QStringList reports = crashes.entryList({QStringLiteral("Lumenpost*")}, QDir::Files, QDir::Name);
    for (const QString &name : reports.last(std::min(kCrashReports, reports.size())))
        add(crashes.filePath(name));
    entries.append({work.title + QStringLiteral("/system.txt"),
                    QString(work.summary).replace(kKeyGap, wordForKey(key)).toUtf8()});

    const auto archive = Zip::pack(entries);
    if (!archive)
        return std::unexpected(archive.error());
    const QFileInfo target(work.target);
    return AtomicFile::writeNew(target.path(), target.completeBaseName(), target.suffix(), *archive);
}

} // namespace

QFuture<Result<QString>> Diagnostics::makeBundle(const QDateTime &now) const
{
    const QString stamp = now.toUTC().toString(Qt::ISODate).replace(QLatin1Char(':'), QLatin1Char('-'));
    // untranslated: a report for those who mend
    const QString title = QStringLiteral("Lumenpost Diagnostics ") + stamp;
    QString folder = m_parts.paths.desktop();
    if (!QFileInfo(folder).isDir())
        folder = m_parts.paths.home();
    QStringList names{m_parts.library.folder()};
    for (const QString &path : m_parts.library.items())
        names.append(QFileInfo(path).fileName());
    const Work work{m_parts.settings.apiKey(SecretsAccess::Quiet),
                    m_parts.paths.state(),
                    systemSummary(),
                    folder + QLatin1Char('/') + title + QStringLiteral(".zip"),
                    title,
                    {m_parts.paths.home(), names, {m_parts.settings.imgurClientID()}}};
    return runInBackground([work]() -> Result<QString> {
        const auto packed = pack(work);
        if (!packed)
            Log::error(QStringLiteral("Couldn't create diagnostics zip"), packed.error());
        return packed;
    });
}

QString Diagnostics::systemSummary() const
{
    const QString version = QCoreApplication::applicationVersion();
    // untranslated: a report for those who mend
    QString text = QStringLiteral("Lumenpost %1 (-)\n%2, Linux %3")
                       .arg(version.isEmpty() ? QStringLiteral("dev") : version,
                            QSysInfo::prettyProductName(), QSysInfo::kernelVersion());
    text += QStringLiteral("\nHardware: %1, %2 cores, %3 GB RAM\nDisplays: ")
                .arg(machineModel())
                .arg(QThread::idealThreadCount())
                .arg(wholeGigabytes());
    QStringList displays;
    for (const Screen &screen : m_parts.screens.screens()) {
        const QSizeF size = screen.frame().size();
        displays.append(QStringLiteral("%1×%2@%3x").arg(size.width()).arg(size.height()).arg(screen.scale));
    }
    text += displays.join(QStringLiteral(", "));

    text += QStringLiteral("\n\nPermissions\n");
    struct Row {
        const char *name;
        Permission permission;
        bool canBeUnasked;
    };
    // untranslated: a report for those who mend
    static constexpr Row kRows[] = {{"Screen Recording", Permission::ScreenRecording, false},
                                    {"Accessibility", Permission::Accessibility, false},
                                    {"Camera", Permission::Camera, true},
                                    {"Microphone", Permission::Microphone, true}};
    for (const Row &row : kRows)
        text += QStringLiteral("  %1: %2\n")
                    .arg(QLatin1String(row.name),
                         word(m_parts.permissions.status(row.permission), row.canBeUnasked));

    const AppSettings &settings = m_parts.settings;
    text += QStringLiteral("\nSettings (no secrets)\n  Save folder in iCloud: ") +
            word(m_parts.library.isInICloud()) + QStringLiteral("\n  Image format: ") +
            rawValue(settings.imageFormat()) + QStringLiteral("\n  Show in Dock: ") +
            word(settings.showInDock()) + QStringLiteral("\n  API key set: ") + kKeyGap +
            QStringLiteral("\n  Imgur set: ") + word(!settings.imgurClientID().isEmpty()) +
            QStringLiteral("\n  Auto-delete days: ") + QString::number(settings.autoDeleteDays()) +
            QStringLiteral("\n  Library items: ") + QString::number(m_parts.library.items().size()) +
            QLatin1Char('\n');
    return text;
}
