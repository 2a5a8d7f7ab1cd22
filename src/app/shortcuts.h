#pragma once

#include "settings/hot_key_action.h"

#include <QHash>
#include <QObject>
#include <functional>

class AppSettings;
class CapturePresetStore;
class HotKeys;
struct CapturePreset;

// Keeps the system-wide shortcuts registered as the settings and the presets name them. While a shortcut field
// listens none is active, so that the keys typed reach the field. A combination that another program has taken is
// left out, and so is an action that can't run: its keys stay with the other programs.
class Shortcuts : public QObject {
    Q_OBJECT
public:
    using IsAvailable = std::function<bool(HotKeyAction)>;

    // `isAvailable` is asked at each registration.
    Shortcuts(HotKeys &hotKeys, AppSettings &prefs, CapturePresetStore &presets, IsAvailable isAvailable,
              QObject *parent = nullptr);

    void registerHotkeys();

Q_SIGNALS:
    void performed(HotKeyAction action);
    void presetCalled(const CapturePreset &preset);

private:
    void registerKey(const KeyCombo &combo, const QString &what, const std::function<void()> &handler);
    void dispatch(quint32 id);

    HotKeys &m_hotKeys;
    AppSettings &m_prefs;
    CapturePresetStore &m_presets;
    IsAvailable m_isAvailable;
    QHash<quint32, std::function<void()>> m_handlers;
    quint32 m_nextID = 1; // never reused in a run
};
