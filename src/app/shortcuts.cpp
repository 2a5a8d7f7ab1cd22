#include "app/shortcuts.h"

#include "base/log.h"
#include "platform/hot_keys.h"
#include "settings/app_settings.h"

Shortcuts::Shortcuts(HotKeys &hotKeys, AppSettings &prefs, IsAvailable isAvailable, QObject *parent)
    : QObject(parent), m_hotKeys(hotKeys), m_prefs(prefs), m_isAvailable(std::move(isAvailable))
{
    // Queued: a press never runs inside the event that brought it.
    connect(&hotKeys, &HotKeys::pressed, this, &Shortcuts::dispatch, Qt::QueuedConnection);
    connect(&prefs, &AppSettings::hotkeysChanged, this, &Shortcuts::registerHotkeys);
}

void Shortcuts::registerHotkeys()
{
    m_hotKeys.unregisterAll();
    m_handlers.clear();
    if (m_prefs.isRecordingShortcut())
        return;
    for (const HotKeyInfo &info : kHotKeys) {
        if (!m_isAvailable(info.action))
            continue;
        const KeyCombo combo = m_prefs.hotkey(info.action);
        const quint32 id = m_nextID++;
        if (const auto done = m_hotKeys.registerKey(id, combo.keyCode, combo.carbonModifiers); !done) {
            // The user can see in the settings which shortcut it is; the log tells why it does nothing.
            Log::info(QStringLiteral("Shortcut %1 of %2 is not available: %3")
                          .arg(combo.display(), QLatin1String(info.rawValue), done.error().message));
            continue;
        }
        m_handlers.insert(id, [this, action = info.action] { Q_EMIT performed(action); });
    }
}

void Shortcuts::dispatch(quint32 id)
{
    if (const auto handler = m_handlers.value(id))
        handler();
}
