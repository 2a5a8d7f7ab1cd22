#pragma once

#include "settings/capture_options.h"
#include "settings/capture_settings.h"
#include "settings/key_combo.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>
#include <optional>

class Defaults;

// A capture mode with its options under a name. Stored as JSON with the keys "id", "name", "mode", "options" and,
// only where there is one, "hotkey".
struct CapturePreset {
    QUuid id;
    QString name;
    QString mode; // raw value of a CaptureMode; an unknown word survives and counts as a region
    CaptureOptions options;
    std::optional<KeyCombo> hotkey;

    bool operator==(const CapturePreset &) const = default;

    CaptureMode captureMode() const { return ::captureMode(mode).value_or(CaptureMode::AllInOne); }
    // "Region → 5s delay → clipboard"
    QString summary() const;

    QJsonObject toJson() const;
    // Nothing when a key is missing or of another type; "hotkey" alone may be absent.
    static std::optional<CapturePreset> fromJson(const QJsonObject &object);
};

// The presets in the user's order. Every change is stored at once. Main thread only.
class CapturePresetStore : public QObject {
    Q_OBJECT
public:
    static constexpr const char *kKey = "capturePresets";

    CapturePresetStore(Defaults &defaults, const CaptureSettings &settings, QObject *parent = nullptr);

    // "Region", "Screen" and so on.
    static QString word(CaptureMode mode);
    // The shortcut that "Add Shortcut" gives the preset at an index.
    static KeyCombo suggestedHotkey(qsizetype index);

    const QList<CapturePreset> &presets() const { return m_presets; }
    std::optional<CapturePreset> preset(const QUuid &id) const;
    // The first of that name, without regard to case.
    std::optional<CapturePreset> named(const QString &name) const;

    // Appends what the capture panel is set to.
    CapturePreset addFromCurrent();
    // Replaces the preset with the same id, if there is one.
    void update(const CapturePreset &preset);
    void remove(const CapturePreset &preset);

Q_SIGNALS:
    void changed();

private:
    void load();
    void store();

    Defaults &m_defaults;
    const CaptureSettings &m_settings;
    QList<CapturePreset> m_presets;
};
