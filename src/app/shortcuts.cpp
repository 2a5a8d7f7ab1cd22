#include "app/shortcuts.h"

#include "base/log.h"
#include "platform/hot_keys.h"
#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"

Shortcuts::Shortcuts(HotKeys &hotKeys, AppSettings &prefs, CapturePresetStore &presets,
                     IsAvailable isAvailable, QObject *parent)
    : QObject(parent),
      m_hotKeys(hotKeys),
      m_prefs(prefs),
      m_presets(presets),
      m_isAvailable(std::move(isAvailable))
{
    // Queued: a press never runs inside the event that brought it.
    connect(&hotKeys, &HotKeys::pressed, this, &Shortcuts::dispatch, Qt::QueuedConnection);
    connect(&prefs, &AppSettings::hotkeysChanged, this, &Shortcuts::registerHotkeys);
    connect(&presets, &CapturePresetStore::changed, this, &Shortcuts::registerHotkeys);
}

void Shortcuts::registerHotkeys()
{
    m_hotKeys.unregisterAll();
    m_handlers.clear();
    m_problems.clear();
    if (m_prefs.isRecordingShortcut())
        return;
    for (const HotKeyInfo &info : kHotKeys) {
        if (m_isAvailable(info.action))
            registerKey(m_prefs.hotkey(info.action), QLatin1String(info.rawValue),
                        [this, action = info.action] { Q_EMIT performed(action); });
    }
    for (const CapturePreset &preset : m_presets.presets()) {
        if (!preset.hotkey)
            continue;
        // By its id: the preset may have been changed or removed when the key is pressed.
        registerKey(*preset.hotkey, QStringLiteral("a preset"), [this, id = preset.id] {
            if (const auto called = m_presets.preset(id))
                Q_EMIT presetCalled(*called);
        });
    }
    for (const ExtraShortcut &extra : m_prefs.extraShortcuts())
        registerKey(extra.combo, QStringLiteral("the panel or the Print key"),
                    [this, command = extra.command] { Q_EMIT extraCalled(command); });
}

void Shortcuts::registerKey(const KeyCombo &combo, const QString &what, const std::function<void()> &handler)
{
    const quint32 id = m_nextID++;
    if (const auto done = m_hotKeys.registerKey(id, combo.keyCode, combo.carbonModifiers); !done) {
        // The user can see in the settings which shortcut it is; the log tells why it does nothing.
        Log::info(QStringLiteral("Shortcut %1 of %2 is not available: %3")
                      .arg(combo.display(), what, done.error().message));
        m_problems.append({combo, done.error().message});
        return;
    }
    m_handlers.insert(id, handler);
}

QString Shortcuts::problem(const KeyCombo &combo) const
{
    for (const auto &[refused, reason] : m_problems) {
        if (refused == combo)
            return reason;
    }
    return {};
}

void Shortcuts::dispatch(quint32 id)
{
    if (const auto handler = m_handlers.value(id))
        handler();
}
