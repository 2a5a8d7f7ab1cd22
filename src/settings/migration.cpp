#include "settings/migration.h"

#include "base/async.h"
#include "base/json.h"
#include "base/log.h"
#include "platform/paths.h"
#include "platform/secrets.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"

#include <QDir>
#include <QFileInfo>
#include <unistd.h>

namespace {

const QString kOldName = QStringLiteral("Tidegrasp");
const QString kNewName = QStringLiteral("Lumenpost");
const QString kSaveFolder = QStringLiteral("saveFolder");

// The settings of the earlier program; empty when there are none, or none that can be read.
QJsonObject oldSettings(const Paths &paths)
{
    const QDir parent(QFileInfo(paths.config()).path());
    const auto document = Json::readFile(
        parent.filePath(QLatin1String(Migration::kOldService) + QStringLiteral("/defaults.json")));
    return document ? document->object() : QJsonObject();
}

void carrySettings(const QJsonObject &old, Defaults &defaults)
{
    for (auto value = old.begin(); value != old.end(); ++value) {
        // What the desktop's toolkit keeps in a program's settings is its own.
        const bool isOfTheSystem = value.key().startsWith(QLatin1String("NS")) ||
                                   value.key().startsWith(QLatin1String("Apple"));
        if (!isOfTheSystem && !defaults.contains(value.key()))
            defaults.set(value.key(), value.value());
    }
}

// What is locked may be asked for: there is no second time.
QFuture<Result<void>> carryKey(Secrets &secrets)
{
    const auto account = QString::fromLatin1(AppSettings::kApiKeyAccount);
    const auto service = QString::fromLatin1(AppSettings::kService);
    constexpr auto kSync = QtFuture::Launch::Sync;
    return secrets.get(account, service, SecretsAccess::MayAsk)
        .then(kSync,
              [&secrets, account](const Result<QString> &own) {
                  if (own || own.error().kind != Error::Kind::NotFound)
                      return readyFuture(Result<QString>(QString()));
                  return secrets.get(account, QString::fromLatin1(Migration::kOldService),
                                     SecretsAccess::MayAsk);
              })
        .unwrap()
        .then(kSync,
              [&secrets, account, service](const Result<QString> &old) {
                  if (!old || old->isEmpty())
                      return readyFuture(Result<void>());
                  return secrets.set(*old, account, service);
              })
        .unwrap()
        .then(kSync, [](const Result<void> &stored) {
            if (!stored)
                Log::error(QStringLiteral("The API key of Tidegrasp could not be carried over"),
                           stored.error());
            return stored;
        });
}

// Only a real folder moves, and never over anything, be it a link that leads nowhere.
bool moveFolder(const QString &from, const QString &to)
{
    const QFileInfo target(to);
    if (target.exists() || target.isSymLink() || !QFileInfo(from).isDir())
        return false;
    return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

void moveCaptures(Defaults &defaults, const Paths &paths)
{
    const QString stored = defaults.string(kSaveFolder);
    QString folder =
        QDir::cleanPath(stored.isEmpty() ? paths.pictures() + QLatin1Char('/') + kOldName : stored);
    if (QFileInfo(folder).fileName() == kOldName) {
        const QString sibling = QFileInfo(folder).path() + QLatin1Char('/') + kNewName;
        if (moveFolder(folder, sibling)) {
            folder = sibling;
            defaults.set(kSaveFolder, folder);
        } else if (stored.isEmpty() && QFileInfo(folder).isDir() && !QFileInfo::exists(sibling)) {
            // It couldn't be moved: the captures are still found where they are.
            defaults.set(kSaveFolder, folder);
        }
    }
    moveFolder(folder + QStringLiteral("/.tidegrasp"), folder + QStringLiteral("/.lumenpost"));
}

} // namespace

bool Migration::isDue(const Defaults &defaults, const Paths &paths)
{
    return !defaults.boolean(QString::fromLatin1(kDoneKey), false) && !oldSettings(paths).isEmpty();
}

Migration::Outcome Migration::runIfNeeded(Defaults &defaults, Secrets &secrets, const Paths &paths)
{
    const auto done = QString::fromLatin1(kDoneKey);
    if (defaults.boolean(done, false))
        return {false, readyFuture(Result<void>())};
    // At once, so that a failure can't make the work run twice.
    defaults.set(done, true);
    const QJsonObject old = oldSettings(paths);
    if (old.isEmpty())
        return {false, readyFuture(Result<void>())};
    carrySettings(old, defaults);
    moveCaptures(defaults, paths);
    return {true, carryKey(secrets)};
}
