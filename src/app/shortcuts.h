#pragma once

#include "settings/extra_shortcut.h"
#include "settings/hot_key_action.h"

#include <QHash>
#include <QList>
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
    // Why a combination could not be registered the last time; empty when it works, or isn't wanted.
    QString problem(const KeyCombo &combo) const;

Q_SIGNALS:
    void performed(HotKeyAction action);
    void presetCalled(const CapturePreset &preset);
    void extraCalled(ExtraShortcut::Command command);

private:
    void registerKey(const KeyCombo &combo, const QString &what, const std::function<void()> &handler);
    void dispatch(quint32 id);

    HotKeys &m_hotKeys;
    AppSettings &m_prefs;
    CapturePresetStore &m_presets;
    IsAvailable m_isAvailable;
    QHash<quint32, std::function<void()>> m_handlers;
    QList<std::pair<KeyCombo, QString>> m_problems;
    quint32 m_nextID = 1; // never reused in a run
};
