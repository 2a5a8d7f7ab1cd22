#include "shell/settings_pages.h"

#include "base/async.h"
#include "base/notice.h"
#include "library/library.h"
#include "platform/paths.h"
#include "platform/workspace.h"
#include "services/further_kinds.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "shell/pieces.h"
#include "shell/settings_page.h"
#include "shell/texts.h"
#include "ui/sheet.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int kFieldWidth = 190;

// The home folder as "~".
QString shortened(const QString &path, const QString &home)
{
    if (path == home)
        return QStringLiteral("~");
    return path.startsWith(home + QLatin1Char('/')) ? QLatin1Char('~') + path.mid(home.size()) : path;
}

void chooseFolder(QWidget *over, const SettingsParts &parts)
{
    auto *dialog = new QFileDialog(over->window(), ShellTexts::tr("Save captures to"), parts.prefs.saveFolder());
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QFileDialog::fileSelected, over,
                     [over, &prefs = parts.prefs, &library = parts.library](const QString &folder) {
                         QDir().mkpath(folder);
                         if (!QFileInfo(folder).isWritable()) {
                             SettingsPages::showError(
                                 over, ShellTexts::tr("This folder can't be used"),
                                 Error{Error::Kind::Denied,
                                       ShellTexts::tr("Lumenpost may not write to “%1”.").arg(folder),
                                       {}});
                             return;
                         }
                         prefs.setSaveFolder(folder);
                         library.postChanged();
                     });
    dialog->open();
}

QWidget *formatPicker(SettingsPage *page, AppSettings &prefs)
{
    auto *picker = new Picker;
    picker->addItems({QStringLiteral("PNG"), QStringLiteral("JPG"), QStringLiteral("HEIC")});
    const auto show = [picker, &prefs] { picker->setCurrentIndex(static_cast<int>(prefs.imageFormat())); };
    show();
    page->onRefresh(show);
    QObject::connect(picker, &QComboBox::activated, page,
                     [&prefs](int index) { prefs.setImageFormat(static_cast<ImageFormat>(index)); });
    return picker;
}

QWidget *deletePicker(SettingsPage *page, AppSettings &prefs)
{
    auto *picker = new Picker;
    picker->addItem(ShellTexts::tr("Never"), 0);
    picker->addItem(ShellTexts::tr("After 30 days"), 30);
    picker->addItem(ShellTexts::tr("After 90 days"), 90);
    picker->addItem(ShellTexts::tr("After 1 year"), 365);
    const auto show = [picker, &prefs] {
        const int days = prefs.autoDeleteDays();
        // A number that someone wrote into the file is shown as it is.
        if (picker->findData(days) < 0)
            picker->addItem(ShellTexts::tr("After %n day(s)", nullptr, days), days);
        picker->setCurrentIndex(picker->findData(days));
    };
    show();
    page->onRefresh(show);
    QObject::connect(picker, &QComboBox::activated, page,
                     [picker, &prefs](int index) { prefs.setAutoDeleteDays(picker->itemData(index).toInt()); });
    return picker;
}

QString titleOf(SensitiveText::FurtherKind kind)
{
    using SensitiveText::FurtherKind;
    switch (kind) {
    case FurtherKind::Ipv6:
        return ShellTexts::tr("IPv6 addresses");
    case FurtherKind::Mac:
        return ShellTexts::tr("Addresses of network devices");
    case FurtherKind::Iban:
        return ShellTexts::tr("Bank accounts (IBAN)");
    case FurtherKind::Named:
        return ShellTexts::tr("What stands after “password”, “token” and the like");
    case FurtherKind::LongKey:
        return ShellTexts::tr("Long keys with + and /");
    }
    Q_UNREACHABLE();
}

void addPrivateKinds(SettingsPage *page, AppSettings &prefs)
{
    page->beginSection(ShellTexts::tr("Automatic redaction also hides"));
    for (const SensitiveText::FurtherKind kind : SensitiveText::allFurtherKinds()) {
        const QString name = SensitiveText::nameOf(kind);
        page->addToggle(
            titleOf(kind), {}, [&prefs, name] { return !prefs.privateKindsOff().contains(name); },
            [&prefs, name](bool on) { prefs.setPrivateKind(name, on); });
    }
    page->addNote(ShellTexts::tr(
        "E-mail addresses, telephone and other long numbers, and the keys of well-known services are "
        "hidden in any case."));
}

// A field whose text is stored when the user leaves it.
QLineEdit *storedField(SettingsPage *page, const std::function<QString()> &value,
                       const std::function<void(QString)> &store)
{
    auto *field = new QLineEdit(value());
    field->setFixedWidth(kFieldWidth);
    page->onRefresh([field, value] {
        if (!field->hasFocus() && field->text() != value())
            field->setText(value());
    });
    QObject::connect(field, &QLineEdit::editingFinished, page, [field, value, store] {
        if (field->text().trimmed() != value())
            store(field->text().trimmed());
    });
    return field;
}

// The key comes when the store of passwords gives it; until then, and while it stays locked, the field is empty,
// and only what is typed is stored.
QLineEdit *keyField(SettingsPage *page, AppSettings &prefs)
{
    auto *field = new QLineEdit;
    field->setFixedWidth(kFieldWidth);
    field->setEchoMode(QLineEdit::Password);
    whenDone(prefs.apiKey(SecretsAccess::Quiet), field, [field](const Result<QString> &key) {
        if (key && !field->isModified())
            field->setText(*key);
    });
    QObject::connect(field, &QLineEdit::editingFinished, page, [field, &prefs] {
        if (!field->isModified())
            return;
        field->setModified(false);
        prefs.setApiKey(field->text().trimmed());
    });
    return field;
}

} // namespace

void SettingsPages::showError(QWidget *over, const QString &title, const Error &error)
{
    auto *sheet = new Sheet(over, QStringLiteral("exclamationmark.triangle.fill"), title);
    sheet->addText(error.message);
    sheet->addPrimaryButton(ShellTexts::tr("OK"));
    sheet->open();
}

SettingsPage *SettingsPages::makeGeneral(const SettingsParts &parts)
{
    AppSettings &prefs = parts.prefs;
    auto *page = new SettingsPage(ShellTexts::tr("General"));
    page->beginSection();
    auto *choose = new QPushButton(ShellTexts::tr("Choose…"));
    SettingsRow *folder = page->add(ShellTexts::tr("Save captures to"), QStringLiteral(" "), choose);
    const auto showFolder = [folder, &prefs, home = parts.paths.home()] {
        folder->setNote(shortened(prefs.saveFolder(), home));
    };
    showFolder();
    page->onRefresh(showFolder);
    QObject::connect(choose, &QPushButton::clicked, page, [page, parts] { chooseFolder(page, parts); });
    page->add(ShellTexts::tr("Image format"), {}, formatPicker(page, prefs));
    page->add(ShellTexts::tr("Delete old captures"),
              ShellTexts::tr("Favorites and anything in a collection are always kept. Deleted items go to the Trash."),
              deletePicker(page, prefs));
    page->beginSection();
    page->addToggle(
        ShellTexts::tr("Play shutter sound"), {}, [&prefs] { return prefs.shutterSound(); },
        [&prefs](bool on) { prefs.setShutterSound(on); });
    page->addToggle(
        ShellTexts::tr("Add gradient backdrop to window captures"), {},
        [&prefs] { return prefs.backdropForWindows(); }, [&prefs](bool on) { prefs.setBackdropForWindows(on); });
    page->addToggle(
        ShellTexts::tr("Launch Lumenpost at login"), {}, [&prefs] { return prefs.launchAtLogin(); },
        [&prefs](bool on) { prefs.setLaunchAtLogin(on); });
    page->addToggle(
        ShellTexts::tr("Show quick tips when hovering over buttons"), {}, [&prefs] { return prefs.showTips(); },
        [&prefs](bool on) { prefs.setShowTips(on); });
    addPrivateKinds(page, prefs);
    return page;
}

SettingsPage *SettingsPages::makeRecording(const SettingsParts &parts)
{
    using Switch = CaptureSettings::Switch;
    CaptureSettings &capture = parts.capture;
    auto *page = new SettingsPage(ShellTexts::tr("Recording"));
    const auto toggle = [page, &capture](const QString &title, Switch which) {
        page->addToggle(
            title, {}, [&capture, which] { return capture.isOn(which); },
            [&capture, which](bool on) { capture.setOn(which, on); });
    };
    page->beginSection();
    toggle(ShellTexts::tr("Record system audio"), Switch::SystemAudio);
    toggle(ShellTexts::tr("Record microphone"), Switch::Microphone);
    page->beginSection();
    toggle(ShellTexts::tr("Show cursor in recordings"), Switch::IncludeCursor);
    toggle(ShellTexts::tr("Highlight clicks"), Switch::ShowClicks);
    toggle(ShellTexts::tr("Show keyboard shortcuts (needs Accessibility)"), Switch::ShowKeys);
    toggle(ShellTexts::tr("Webcam bubble"), Switch::Webcam);
    page->addNote(ShellTexts::tr("Recordings are saved as .mov files in your capture folder. Trim them and export "
                                 "MP4 or GIF from the video editor."));
    return page;
}

SettingsPage *SettingsPages::makeAiAndSharing(const SettingsParts &parts)
{
    AppSettings &prefs = parts.prefs;
    auto *page = new SettingsPage(ShellTexts::tr("AI & Sharing"));
    page->beginSection(ShellTexts::tr("Claude"));
    page->add(ShellTexts::tr("Anthropic API key"), {}, keyField(page, prefs));
    page->addToggle(
        ShellTexts::tr("Auto-name captures with AI"), {}, [&prefs] { return prefs.aiAutoName(); },
        [&prefs](bool on) { prefs.setAiAutoName(on); });
    page->addNote(ShellTexts::tr("Used only for AI actions you trigger and for auto-naming. Images are sent to "
                                 "Anthropic's API. The key is stored in your Keychain."));
    page->beginSection(ShellTexts::tr("Upload"));
    page->add(ShellTexts::tr("Imgur Client ID"), {},
              storedField(
                  page, [&prefs] { return prefs.imgurClientID(); },
                  [&prefs](const QString &text) { prefs.setImgurClientID(text); }));
    auto *registering = new QPushButton(ShellTexts::tr("Register…"));
    QObject::connect(registering, &QPushButton::clicked, page, [page, parts] {
        const QUrl address(QStringLiteral("https://api.imgur.com/oauth2/addclient"));
        if (const auto opened = parts.workspace.open(address); !opened)
            showError(page, ShellTexts::tr("The page couldn't be opened"), opened.error());
    });
    page->add(ShellTexts::tr("Get a Client ID"),
              ShellTexts::tr("Register a free application with Imgur, choosing anonymous usage without a callback, "
                             "and paste its Client ID above. That enables “Upload & Copy Link”."),
              registering);
    return page;
}
