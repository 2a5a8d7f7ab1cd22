#pragma once

#include "shell/settings_parts.h"

#include <QUuid>
#include <QWidget>

struct CapturePreset;
class QLineEdit;
class SettingsRow;
class ShortcutField;

// The row of one preset. It always shows the store: every control reads the preset of its id, and writes it back.
class PresetEditor : public QWidget {
    Q_OBJECT
public:
    PresetEditor(const SettingsParts &parts, const QUuid &id, QWidget *parent = nullptr);

    const QUuid &id() const { return m_id; }
    void refresh();

private:
    void change(const std::function<void(CapturePreset &)> &edit);
    QWidget *makeNameAndMode();
    QWidget *makeSwitches();
    QWidget *makeShortcut();

    SettingsParts m_parts;
    QUuid m_id;
    QList<std::function<void(const CapturePreset &)>> m_shows;
};
