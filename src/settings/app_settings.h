#pragma once

#include "base/result.h"
#include "platform/secrets.h"
#include "settings/extra_shortcut.h"
#include "settings/hot_key_action.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

class Defaults;
class LoginItem;
class NoticeBoard;
class Paths;

enum class ImageFormat { Png, Jpg, Heic };

// "png", "jpg", "heic": what the settings store, and the extension of a capture.
QString rawValue(ImageFormat format);

// Everything that the user can set for the whole program. Stored as it changes; the API key lives with the
// desktop's secrets and never in the defaults.
class AppSettings : public QObject {
    Q_OBJECT
public:
    AppSettings(Defaults &defaults, Secrets &secrets, LoginItem &loginItem, const Paths &paths,
                NoticeBoard &notices, QObject *parent = nullptr);

    static constexpr const char *kService = "com.oakfenrow.lumenpost";
    static constexpr const char *kApiKeyAccount = "anthropic-api-key";

    // "Lumenpost" in the user's pictures folder.
    QString defaultFolder() const;

    // An absolute path without a trailing slash.
    QString saveFolder() const;
    void setSaveFolder(const QString &path);
    // For this process alone, not stored.
    void overrideSaveFolder(const QString &path);

    QHash<HotKeyAction, KeyCombo> hotkeys() const { return m_hotkeys; }
    KeyCombo hotkey(HotKeyAction action) const
    {
        return m_hotkeys.value(action, hotKeyInfo(action).defaultCombo());
    }
    void setHotkeys(const QHash<HotKeyAction, KeyCombo> &hotkeys);
    // Those of the nine actions and of the panel go back to what they were at first; the Print key is let go.
    void resetHotkeys();
    KeyCombo panelHotkey() const;
    void setPanelHotkey(const KeyCombo &combo);
    // Print takes a region, with Shift the screen, with Alt the window in front, with Ctrl a region after a
    // delay; beside the other shortcuts.
    bool printKeys() const;
    void setPrintKeys(bool on);
    // The panel's, and those of the Print key while they are on.
    QList<ExtraShortcut> extraShortcuts() const;
    // True while a shortcut field listens; not stored.
    bool isRecordingShortcut() const { return m_isRecordingShortcut; }
    void setRecordingShortcut(bool recording);

    QString settingsTab() const { return m_settingsTab; }
    void setSettingsTab(const QString &tab);
    bool showTips() const;
    void setShowTips(bool on);
    bool showInDock() const;
    void setShowInDock(bool on);
    ImageFormat imageFormat() const;
    void setImageFormat(ImageFormat format);
    bool shutterSound() const;
    void setShutterSound(bool on);
    bool backdropForWindows() const;
    void setBackdropForWindows(bool on);
    bool aiAutoName() const;
    void setAiAutoName(bool on);
    int autoDeleteDays() const;
    void setAutoDeleteDays(int days);
    // Names of kinds of private text that are left as they are.
    QStringList privateKindsOff() const;
    void setPrivateKind(const QString &name, bool on);
    QString imgurClientID() const;
    void setImgurClientID(const QString &clientID);

    bool launchAtLogin() const { return m_launchAtLogin; }
    void setLaunchAtLogin(bool on);
    // The API key, empty when there is none. Kept once it was found; until then each call asks anew, since a
    // locked store may be open by then. Fails when the store of passwords doesn't give it.
    QFuture<Result<QString>> apiKey(SecretsAccess access) const;
    void setApiKey(const QString &key);

    Defaults &defaults() { return m_defaults; }

Q_SIGNALS:
    void changed();
    void hotkeysChanged();
    void dockChanged();
    void saveFolderChanged();

private:
    class KeptKey;

    void store(const char *key, const QJsonValue &value);
    void loadHotkeys();

    Defaults &m_defaults;
    Secrets &m_secrets;
    LoginItem &m_loginItem;
    const Paths &m_paths;
    NoticeBoard &m_notices;
    QHash<HotKeyAction, KeyCombo> m_hotkeys;
    QString m_saveFolderOverride;
    QString m_settingsTab = QStringLiteral("general");
    bool m_isRecordingShortcut = false;
    bool m_launchAtLogin = false;
    std::shared_ptr<KeptKey> m_apiKey; // with who waits for an answer
};
