#pragma once

#include "settings/key_combo.h"
#include "shell/settings_parts.h"

#include <QWidget>

class KeyRecorder;
class SettingsRow;

// A KeyRecorder in a row of the settings, which tells in the row what stands against a combination: which action
// of this program has it, or which other program.
class ShortcutField : public QObject {
    Q_OBJECT
public:
    // `identity` as ownUse() takes it.
    ShortcutField(const SettingsParts &parts, const KeyCombo &combo, const QString &identity,
                  QObject *parent = nullptr);

    KeyRecorder *recorder() const { return m_recorder; }
    // Where problems are told.
    void setRow(SettingsRow *row);
    // Shows the combination that is stored now, and whether it works.
    void show(const KeyCombo &combo);

Q_SIGNALS:
    void chosen(const KeyCombo &combo);

private:
    void tellTaken(const KeyCombo &combo);

    SettingsParts m_parts;
    QString m_identity;
    KeyRecorder *m_recorder;
    QPointer<SettingsRow> m_row;
};
