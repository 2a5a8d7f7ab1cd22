#include "shell/shortcut_field.h"

#include "base/async.h"
#include "platform/modifier_keys.h"
#include "platform/shortcut_holders.h"
#include "shell/key_recorder.h"
#include "shell/settings_page.h"
#include "shell/shortcut_use.h"
#include "shell/shortcut_words.h"
#include "shell/texts.h"

ShortcutField::ShortcutField(const SettingsParts &parts, const KeyCombo &combo, const QString &identity,
                             QObject *parent)
    : QObject(parent),
      m_parts(parts),
      m_identity(identity),
      m_recorder(new KeyRecorder({parts.prefs, parts.sounds, parts.monitors}, combo))
{
    m_recorder->setObjection([this](const KeyCombo &wanted) {
        const QString user = ownUse(m_parts.prefs, m_parts.presets, wanted, m_identity);
        return user.isEmpty() ? QString()
                              : ShellTexts::tr("“%1” uses %2 already.").arg(user, shortcutWords(wanted));
    });
    connect(m_recorder, &KeyRecorder::chosen, this, &ShortcutField::chosen);
    connect(m_recorder, &KeyRecorder::refused, this, [this](const QString &reason) {
        if (m_row)
            m_row->setProblem(reason);
    });
    connect(m_recorder, &KeyRecorder::heardElsewhere, this, &ShortcutField::tellTaken);
    connect(m_recorder, &KeyRecorder::listeningChanged, this, [this](bool isListening) {
        if (m_row && isListening)
            m_row->setProblem({});
        else if (!isListening)
            show(m_recorder->combo());
    });
}

void ShortcutField::setRow(SettingsRow *row)
{
    m_row = row;
    show(m_recorder->combo());
}

void ShortcutField::show(const KeyCombo &combo)
{
    if (m_recorder->isListening())
        return;
    m_recorder->setCombo(combo);
    // Where no program gets shortcuts, the page says it once.
    if (!m_row || m_parts.commandKeys)
        return;
    const QString problem = m_parts.registrationProblem ? m_parts.registrationProblem(combo) : QString();
    m_row->setProblem(problem);
    if (!problem.isEmpty() && ownUse(m_parts.prefs, m_parts.presets, combo, m_identity).isEmpty())
        tellTaken(combo);
}

void ShortcutField::tellTaken(const KeyCombo &combo)
{
    if (m_row)
        m_row->setProblem(ShellTexts::tr("Another program has taken %1.").arg(shortcutWords(combo)));
    whenDone(m_parts.holders.holder(keyWord(combo), keyboardModifiers(combo.carbonModifiers)), this,
             [this, combo](const QString &holder) {
                 if (m_row && !holder.isEmpty())
                     m_row->setProblem(
                         ShellTexts::tr("%1 is used by “%2”.").arg(shortcutWords(combo), holder));
             });
}
