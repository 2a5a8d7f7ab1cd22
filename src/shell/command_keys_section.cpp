#include "shell/command_keys_section.h"

#include "artwork/fonts.h"
#include "base/async.h"
#include "base/notice.h"
#include "platform/command_keys.h"
#include "platform/modifier_keys.h"
#include "settings/app_settings.h"
#include "settings/texts.h"
#include "shell/settings_page.h"
#include "shell/settings_parts.h"
#include "shell/shortcut_words.h"
#include "shell/texts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>

namespace {

QString commandOf(HotKeyAction action)
{
    switch (action) {
    case HotKeyAction::Capture:
        return QStringLiteral("lumenpost capture region");
    case HotKeyAction::FullScreen:
        return QStringLiteral("lumenpost lumenpost://capture/screen");
    case HotKeyAction::Delayed:
        return QStringLiteral("lumenpost capture delayed");
    case HotKeyAction::GrabText:
        return QStringLiteral("lumenpost capture text");
    case HotKeyAction::Scrolling:
        return QStringLiteral("lumenpost capture scrolling");
    case HotKeyAction::Record:
        return QStringLiteral("lumenpost capture video");
    case HotKeyAction::Steps:
        return QStringLiteral("lumenpost capture steps");
    case HotKeyAction::Library:
        return QStringLiteral("lumenpost lumenpost://library");
    case HotKeyAction::PinLast:
        return QStringLiteral("lumenpost lumenpost://pin-last");
    }
    return {};
}

QList<CommandKey> commandKeys(const AppSettings &prefs)
{
    QList<CommandKey> keys;
    const auto add = [&keys](const QString &id, const QString &title, const KeyCombo &combo,
                             const QString &command) {
        keys.append({id.toLower(), QStringLiteral("Lumenpost: ") + title, keyWord(combo),
                     keyboardModifiers(combo.carbonModifiers), command});
    };
    for (const HotKeyInfo &info : kHotKeys)
        add(QLatin1String(info.rawValue), SettingsTexts::tr(info.title), prefs.hotkey(info.action),
            commandOf(info.action));
    add(QStringLiteral("panel"), ShellTexts::tr("Open the capture panel"), prefs.panelHotkey(),
        QStringLiteral("lumenpost capture panel"));
    return keys;
}

// What the desktop's configuration or settings need to be told.
QString textOf(const SettingsParts &parts)
{
    const QList<CommandKey> keys = commandKeys(parts.prefs);
    QString text = parts.commandKeys->lines(keys);
    if (!text.isEmpty())
        return text;
    for (const CommandKey &key : keys)
        text += key.command + QLatin1Char('\n');
    return text;
}

} // namespace

void addCommandKeys(SettingsPage *page, const SettingsParts &parts)
{
    page->beginSection();
    const bool hasFile = !parts.commandKeys->lines({{}}).isEmpty();
    auto *button = new QPushButton(parts.commandKeys->canSet() ? ShellTexts::tr("Set in the Desktop")
                                   : hasFile                   ? ShellTexts::tr("Copy These Lines")
                                                               : ShellTexts::tr("Copy These Commands"));
    page->add(
        ShellTexts::tr("This desktop gives programs no shortcuts"),
        parts.commandKeys->canSet() ? ShellTexts::tr("Its own keys can run Lumenpost's commands instead: the "
                                                     "keys below are put among its custom shortcuts.")
        : hasFile ? ShellTexts::tr("Its own keys can run Lumenpost's commands instead: put these lines into "
                                   "its configuration, and have it read that again.")
                  : ShellTexts::tr("Its own keys can run Lumenpost's commands instead: set them in its "
                                   "keyboard settings."),
        button);
    QObject::connect(button, &QPushButton::clicked, page, [page, parts] {
        if (!parts.commandKeys->canSet()) {
            QGuiApplication::clipboard()->setText(textOf(parts));
            parts.notices.post(ShellTexts::tr("Copied"), QStringLiteral("checkmark.circle.fill"));
            return;
        }
        whenDone(parts.commandKeys->set(commandKeys(parts.prefs)), page,
                 [notices = &parts.notices](const Result<void> &done) {
                     notices->post(done ? ShellTexts::tr("The desktop's keys are set") : done.error().message,
                                   done ? QStringLiteral("checkmark.circle.fill")
                                        : QStringLiteral("keyboard"));
                 });
    });
    if (parts.commandKeys->canSet())
        return;
    auto *lines = new QLabel;
    lines->setTextFormat(Qt::PlainText);
    lines->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lines->setFont(Fonts::font(Fonts::Design::Mono, QFontInfo(lines->font()).pixelSize(), QFont::Normal));
    page->addWide(lines, ShellTexts::tr("Commands for the desktop's keys"));
    const auto show = [lines, parts] { lines->setText(textOf(parts).trimmed()); };
    show();
    page->onRefresh(show);
}
