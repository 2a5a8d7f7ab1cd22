#include "settings/app_settings.h"

#include "base/async.h"
#include "base/log.h"
#include "base/notice.h"
#include "platform/login_item.h"
#include "platform/paths.h"
#include "settings/defaults.h"
#include "settings/texts.h"

#include <QDir>
#include <QJsonDocument>
#include <QMutexLocker>
#include <array>

namespace {

constexpr std::array<const char *, 3> kFormats{"png", "jpg", "heic"};

// Beside the shortcuts of the actions, with the same modifiers.
constexpr KeyCombo kPanelHotkey{46, KeyCombo::Control | KeyCombo::Shift};

QString cleanPath(const QString &path)
{
    return QDir::cleanPath(QDir(path).absolutePath());
}

} // namespace

// Answers come on a thread of the secrets, perhaps after a newer key was set.
class AppSettings::KeptKey {
public:
    QString key() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_key;
    }
    void set(const QString &key)
    {
        const QMutexLocker lock(&m_mutex);
        m_key = key;
        ++m_version;
    }
    int version() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_version;
    }
    // What holds now: the answer, or what was set since the question.
    QString learn(const QString &answer, int version)
    {
        const QMutexLocker lock(&m_mutex);
        if (version == m_version)
            m_key = answer;
        return m_key;
    }

private:
    mutable QMutex m_mutex;
    QString m_key;
    int m_version = 0;
};

QString rawValue(ImageFormat format)
{
    return QLatin1String(kFormats[static_cast<size_t>(format)]);
}

AppSettings::AppSettings(Defaults &defaults, Secrets &secrets, LoginItem &loginItem, const Paths &paths,
                         NoticeBoard &notices, QObject *parent)
    : QObject(parent),
      m_defaults(defaults),
      m_secrets(secrets),
      m_loginItem(loginItem),
      m_paths(paths),
      m_notices(notices),
      m_launchAtLogin(loginItem.isEnabled()),
      m_apiKey(std::make_shared<KeptKey>())
{
    loadHotkeys();
}

void AppSettings::store(const char *key, const QJsonValue &value)
{
    m_defaults.set(QLatin1String(key), value);
    Q_EMIT changed();
}

QString AppSettings::defaultFolder() const
{
    return QDir(m_paths.pictures()).filePath(QStringLiteral("Lumenpost"));
}

QString AppSettings::saveFolder() const
{
    if (!m_saveFolderOverride.isEmpty())
        return m_saveFolderOverride;
    const QString stored = m_defaults.string(QStringLiteral("saveFolder"));
    return stored.isEmpty() ? defaultFolder() : cleanPath(stored);
}

void AppSettings::setSaveFolder(const QString &path)
{
    m_saveFolderOverride.clear();
    store("saveFolder", cleanPath(path));
    Q_EMIT saveFolderChanged();
}

void AppSettings::overrideSaveFolder(const QString &path)
{
    m_saveFolderOverride = cleanPath(path);
    Q_EMIT saveFolderChanged();
}

void AppSettings::loadHotkeys()
{
    for (const HotKeyInfo &info : kHotKeys)
        m_hotkeys.insert(info.action, info.defaultCombo());
    // The value is the text of a JSON object, as one piece of data.
    const QJsonObject stored =
        QJsonDocument::fromJson(m_defaults.string(QStringLiteral("hotkeys")).toUtf8()).object();
    QHash<HotKeyAction, KeyCombo> loaded;
    for (auto entry = stored.begin(); entry != stored.end(); ++entry) {
        const auto combo = KeyCombo::fromJson(entry.value().toObject());
        if (!combo)
            return; // one bad combination makes the whole value unreadable
        if (const auto action = hotKeyAction(entry.key()))
            loaded.insert(*action, *combo);
    }
    m_hotkeys.insert(loaded);
}

void AppSettings::setHotkeys(const QHash<HotKeyAction, KeyCombo> &hotkeys)
{
    m_hotkeys = hotkeys;
    QJsonObject object;
    for (auto entry = hotkeys.begin(); entry != hotkeys.end(); ++entry)
        object.insert(QLatin1String(hotKeyInfo(entry.key()).rawValue), entry.value().toJson());
    store("hotkeys", QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    Q_EMIT hotkeysChanged();
}

void AppSettings::resetHotkeys()
{
    QHash<HotKeyAction, KeyCombo> hotkeys;
    for (const HotKeyInfo &info : kHotKeys)
        hotkeys.insert(info.action, info.defaultCombo());
    m_defaults.set(QStringLiteral("printKeys"), false);
    m_defaults.set(QStringLiteral("panelHotkey"), kPanelHotkey.toJson());
    setHotkeys(hotkeys);
}

KeyCombo AppSettings::panelHotkey() const
{
    return KeyCombo::fromJson(m_defaults.value(QStringLiteral("panelHotkey")).toObject())
        .value_or(kPanelHotkey);
}

void AppSettings::setPanelHotkey(const KeyCombo &combo)
{
    store("panelHotkey", combo.toJson());
    Q_EMIT hotkeysChanged();
}

bool AppSettings::printKeys() const
{
    return m_defaults.boolean(QStringLiteral("printKeys"), false);
}

void AppSettings::setPrintKeys(bool on)
{
    store("printKeys", on);
    Q_EMIT hotkeysChanged();
}

QList<ExtraShortcut> AppSettings::extraShortcuts() const
{
    using Command = ExtraShortcut::Command;
    QList<ExtraShortcut> shortcuts{{Command::Panel, panelHotkey()}};
    if (printKeys()) {
        shortcuts += {{Command::Region, {KeyCombo::kPrint, 0}},
                      {Command::Screen, {KeyCombo::kPrint, KeyCombo::Shift}},
                      {Command::Window, {KeyCombo::kPrint, KeyCombo::Option}},
                      {Command::Delayed, {KeyCombo::kPrint, KeyCombo::Command}}};
    }
    return shortcuts;
}

void AppSettings::setRecordingShortcut(bool recording)
{
    m_isRecordingShortcut = recording;
    Q_EMIT hotkeysChanged();
}

void AppSettings::setSettingsTab(const QString &tab)
{
    m_settingsTab = tab;
    Q_EMIT changed();
}

bool AppSettings::showTips() const
{
    return m_defaults.boolean(QStringLiteral("showTips"), true);
}

void AppSettings::setShowTips(bool on)
{
    store("showTips", on);
}

bool AppSettings::showInDock() const
{
    return m_defaults.boolean(QStringLiteral("showInDock"), true);
}

void AppSettings::setShowInDock(bool on)
{
    store("showInDock", on);
    Q_EMIT dockChanged();
}

ImageFormat AppSettings::imageFormat() const
{
    const QString stored = m_defaults.string(QStringLiteral("imageFormat"));
    for (size_t i = 0; i < kFormats.size(); ++i) {
        if (stored == QLatin1String(kFormats[i]))
            return static_cast<ImageFormat>(i);
    }
    return ImageFormat::Png;
}

void AppSettings::setImageFormat(ImageFormat format)
{
    store("imageFormat", rawValue(format));
}

bool AppSettings::shutterSound() const
{
    return m_defaults.boolean(QStringLiteral("shutterSound"), true);
}

void AppSettings::setShutterSound(bool on)
{
    store("shutterSound", on);
}

bool AppSettings::backdropForWindows() const
{
    return m_defaults.boolean(QStringLiteral("backdropForWindows"), false);
}

void AppSettings::setBackdropForWindows(bool on)
{
    store("backdropForWindows", on);
}

bool AppSettings::aiAutoName() const
{
    return m_defaults.boolean(QStringLiteral("aiAutoName"), false);
}

void AppSettings::setAiAutoName(bool on)
{
    store("aiAutoName", on);
}

int AppSettings::autoDeleteDays() const
{
    return m_defaults.integer(QStringLiteral("autoDeleteDays"), 0);
}

void AppSettings::setAutoDeleteDays(int days)
{
    store("autoDeleteDays", days);
}

QStringList AppSettings::privateKindsOff() const
{
    QStringList names;
    for (const QJsonValue &name : m_defaults.value(QStringLiteral("privateKindsOff")).toArray())
        names.append(name.toString());
    return names;
}

void AppSettings::setPrivateKind(const QString &name, bool on)
{
    QStringList names = privateKindsOff();
    names.removeAll(name);
    if (!on)
        names.append(name);
    store("privateKindsOff", QJsonArray::fromStringList(names));
}

QString AppSettings::imgurClientID() const
{
    return m_defaults.string(QStringLiteral("imgurClientID"));
}

void AppSettings::setImgurClientID(const QString &clientID)
{
    store("imgurClientID", clientID);
}

void AppSettings::setLaunchAtLogin(bool on)
{
    m_launchAtLogin = on;
    Q_EMIT changed();
    if (on == m_loginItem.isEnabled())
        return;
    if (const auto done = m_loginItem.setEnabled(on); !done)
        m_notices.post(SettingsTexts::tr("Couldn't change login item: ") + done.error().message,
                       QStringLiteral("exclamationmark.triangle.fill"));
}

QFuture<Result<QString>> AppSettings::apiKey(SecretsAccess access) const
{
    if (const QString kept = m_apiKey->key(); !kept.isEmpty())
        return readyFuture(Result<QString>(kept));
    return m_secrets.get(QLatin1String(kApiKeyAccount), QLatin1String(kService), access)
        .then(QtFuture::Launch::Sync,
              [kept = m_apiKey, version = m_apiKey->version()](const Result<QString> &answer) {
                  if (!answer && answer.error().kind != Error::Kind::NotFound)
                      return answer;
                  return Result<QString>(kept->learn(answer.value_or(QString()), version));
              });
}

void AppSettings::setApiKey(const QString &key)
{
    m_apiKey->set(key);
    whenDone(m_secrets.set(key, QLatin1String(kApiKeyAccount), QLatin1String(kService)), this,
             [this](const Result<void> &stored) {
                 if (stored)
                     return;
                 Log::error(QStringLiteral("The API key could not be stored"), stored.error());
                 m_notices.post(stored.error().message, QStringLiteral("exclamationmark.triangle.fill"));
             });
    Q_EMIT changed();
}
