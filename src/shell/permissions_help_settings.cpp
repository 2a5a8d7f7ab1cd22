#include "shell/settings_pages.h"

#include "base/async.h"
#include "base/log.h"
#include "base/notice.h"
#include "platform/desktop_parts.h"
#include "platform/paths.h"
#include "platform/workspace.h"
#include "shell/permission_monitor.h"
#include "shell/settings_page.h"
#include "shell/status_row.h"
#include "shell/texts.h"

#include <QFileDialog>
#include <QPushButton>

namespace {

QPushButton *addButtonRow(SettingsPage *page, const QString &title, const QString &note, const QString &button,
                          const std::function<void()> &call)
{
    auto *push = new QPushButton(button);
    QObject::connect(push, &QPushButton::clicked, page, call);
    page->add(title, note, push);
    return push;
}

void addDesktop(SettingsPage *page, const SettingsParts &parts)
{
    page->beginSection(ShellTexts::tr("This desktop"));
    page->addWide(makeTrayRow(), ShellTexts::tr("Tray"));
    whenDone(parts.desktop.look(), page, [page](const QList<DesktopPart> &found) {
        for (const DesktopPart &part : found) {
            StatusRow *row = makePartRow(part);
            page->addWide(row, row->title() + QLatin1Char(' ') + part.package);
        }
    });
}

void runTransfer(SettingsPage *page, const SettingsParts &parts, const Result<void> &done, const QString &success,
                 const QString &failure)
{
    if (done) {
        parts.notices.post(success, QStringLiteral("checkmark.circle.fill"));
        return;
    }
    Log::error(failure, done.error());
    SettingsPages::showError(page, failure, done.error());
}

void chooseFile(SettingsPage *page, const SettingsParts &parts, QFileDialog::AcceptMode mode,
                const std::function<void(const QString &)> &chosen)
{
    auto *dialog = new QFileDialog(page->window(), ShellTexts::tr("Library data"), parts.paths.home(),
                                   ShellTexts::tr("Library data (*.json)"));
    dialog->setAcceptMode(mode);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (mode == QFileDialog::AcceptSave) {
        dialog->setDefaultSuffix(QStringLiteral("json"));
        // untranslated: a file name
        dialog->selectFile(QStringLiteral("Lumenpost Library Data.json"));
    } else {
        dialog->setFileMode(QFileDialog::ExistingFile);
    }
    QObject::connect(dialog, &QFileDialog::fileSelected, page, chosen);
    dialog->open();
}

void addLibraryData(SettingsPage *page, const SettingsParts &parts)
{
    if (!parts.exportData || !parts.importData)
        return;
    page->beginSection(ShellTexts::tr("Library data"));
    addButtonRow(page, ShellTexts::tr("Export"),
                 ShellTexts::tr("Collections, favorites, source apps, AI descriptions and the text index. Backed up "
                                "automatically each day."),
                 ShellTexts::tr("Export…"), [page, parts] {
                     chooseFile(page, parts, QFileDialog::AcceptSave, [page, parts](const QString &path) {
                         runTransfer(page, parts, parts.exportData(path), ShellTexts::tr("Exported library data"),
                                     ShellTexts::tr("Library data export failed"));
                     });
                 });
    addButtonRow(page, ShellTexts::tr("Import"),
                 ShellTexts::tr("Merges a backup into this library. Nothing existing is removed."),
                 ShellTexts::tr("Import…"), [page, parts] {
                     chooseFile(page, parts, QFileDialog::AcceptOpen, [page, parts](const QString &path) {
                         runTransfer(page, parts, parts.importData(path), ShellTexts::tr("Imported library data"),
                                     ShellTexts::tr("Library data import failed"));
                     });
                 });
}

void addHelp(SettingsPage *page, const SettingsParts &parts)
{
    if (!parts.showWelcome && !parts.makeDiagnostics)
        return;
    page->beginSection(ShellTexts::tr("Help"));
    if (parts.showWelcome)
        addButtonRow(page, ShellTexts::tr("Welcome guide"), {}, ShellTexts::tr("Show Welcome Guide"),
                     parts.showWelcome);
    if (!parts.makeDiagnostics)
        return;
    auto *button = new QPushButton(ShellTexts::tr("Create Diagnostics File"));
    page->add(ShellTexts::tr("Diagnostics"),
              ShellTexts::tr("Saves logs, crash reports and system info (no images, no API keys) as a zip on your "
                             "Desktop. Nothing is sent."),
              button);
    QObject::connect(button, &QPushButton::clicked, page, [page, parts, button] {
        button->setEnabled(false);
        whenDone(parts.makeDiagnostics(), page, [parts, button](const Result<QString> &path) {
            button->setEnabled(true);
            if (path && parts.workspace.reveal(*path))
                return;
            if (!path)
                Log::error(QStringLiteral("No diagnostics file"), path.error());
            parts.notices.post(path ? ShellTexts::tr("Saved %1").arg(*path)
                                    : ShellTexts::tr("Couldn't create the diagnostics file"),
                               path ? QStringLiteral("checkmark.circle.fill")
                                    : QStringLiteral("exclamationmark.triangle.fill"));
        });
    });
}

} // namespace

SettingsPage *SettingsPages::makePermissionsAndHelp(const SettingsParts &parts)
{
    auto *page = new SettingsPage(ShellTexts::tr("Permissions & Help"));
    page->beginSection(ShellTexts::tr("Permissions"));
    auto *monitor = new PermissionMonitor(parts.permissions, page);
    for (const Permission permission : kPermissions) {
        StatusRow *row = makePermissionRow(permission, parts.permissions, *monitor);
        page->addWide(row, row->title());
    }
    addLibraryData(page, parts);
    addHelp(page, parts);
    addDesktop(page, parts);
    return page;
}
