#include "app/shell_windows.h"

#include "app/activity.h"
#include "app/singleton_windows.h"
#include "app/texts.h"
#include "base/async.h"
#include "base/clock.h"
#include "base/notice.h"
#include "document/image_files.h"
#include "library/library.h"
#include "library/library_backup.h"
#include "pins/pins.h"
#include "platform/command_keys.h"
#include "platform/platform.h"
#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "shell/capture_panel.h"
#include "shell/menu_bar_panel.h"
#include "shell/settings_view.h"
#include "shell/shortcut_words.h"
#include "shell/welcome_view.h"

#include <QPointer>
#include <QSystemTrayIcon>

namespace {

constexpr const char *kDidShowWelcome = "didShowWelcome";
constexpr const char *kDidTellOfTray = "didTellOfMissingTray";
const QString kWarning = QStringLiteral("exclamationmark.triangle.fill");

} // namespace

ShellWindows::ShellWindows(Parts parts, Actions actions, QObject *parent)
    : QObject(parent), m_parts(parts), m_actions(std::move(actions))
{
    provideWindows();
}

ShellWindows::~ShellWindows() = default;

void ShellWindows::provideWindows()
{
    using Kind = SingletonWindows::Kind;
    m_parts.windows.provide(Kind::Settings, [this]() -> std::unique_ptr<QWidget> {
        const Platform &platform = m_parts.platform;
        return std::make_unique<SettingsView>(SettingsParts{
            .prefs = m_parts.prefs,
            .capture = m_parts.settings,
            .presets = m_parts.presets,
            .library = m_parts.library,
            .paths = *platform.paths,
            .permissions = *platform.permissions,
            .desktop = *platform.parts,
            .holders = *platform.shortcutHolders,
            .monitors = *platform.inputMonitors,
            .sounds = *platform.sounds,
            .workspace = *platform.workspace,
            .notices = m_parts.notices,
            .registrationProblem = m_actions.registrationProblem,
            .showWelcome = [this] { m_parts.windows.show(Kind::Welcome); },
            .makeDiagnostics = m_actions.makeDiagnostics,
            .exportData =
                [this](const QString &path) {
                    return LibraryBackup::exportData(m_parts.library, path, m_parts.clock.now());
                },
            .importData = [this](const QString &path) -> Result<void> {
                const auto news = LibraryBackup::importData(m_parts.library, path);
                if (!news)
                    return std::unexpected(news.error());
                return {};
            },
            .commandKeys = platform.commandKeys->areNeeded() ? platform.commandKeys.get() : nullptr,
        });
    });
    m_parts.windows.provide(Kind::Welcome, [this]() -> std::unique_ptr<QWidget> {
        return std::make_unique<WelcomeView>(WelcomeView::Parts{
            .prefs = m_parts.prefs,
            .permissions = *m_parts.platform.permissions,
            .holders = *m_parts.platform.shortcutHolders,
            .tryCapture =
                [this] {
                    if (QWidget *guide = m_parts.windows.window(Kind::Welcome))
                        guide->hide();
                    m_actions.captureRegion();
                },
            .finish =
                [this] {
                    m_parts.defaults.set(QLatin1String(kDidShowWelcome), true);
                    if (QWidget *guide = m_parts.windows.window(Kind::Welcome))
                        guide->close();
                },
        });
    });
}

MenuBarPanel &ShellWindows::panel()
{
    if (m_panel)
        return *m_panel;
    const Platform &platform = m_parts.platform;
    CapturePanelActions actions;
    actions.capture = m_actions.capture;
    actions.openLibrary = m_actions.openLibrary;
    actions.openImage = m_actions.openImage;
    actions.openItem = m_actions.openItem;
    actions.pinItem = [this](const QString &path) { pin(path); };
    actions.openSettings = [this] { showSettings({}); };
    actions.runPreset = m_actions.runPreset;
    actions.savePreset = [this] { m_parts.presets.addFromCurrent(); };
    actions.openPermissions = [this] { showSettings(QStringLiteral("help")); };
    actions.quit = m_actions.quit;
    auto content = std::make_unique<CapturePanel>(CapturePanel::Parts{m_parts.settings, m_parts.presets,
                                                                      m_parts.library, *platform.pasteboard,
                                                                      *platform.workspace, m_parts.notices},
                                                  std::move(actions));
    m_content = content.get();
    m_panel =
        std::make_unique<MenuBarPanel>(std::move(content), *platform.inputMonitors, *platform.workspace);
    connect(m_content, &CapturePanel::leaving, this, [this] { m_panel->dismiss(QStringLiteral("action")); });
    const auto showState = [this] {
        m_content->setRecording(m_parts.activity.isRecording());
        m_content->setAvailable(m_actions.isAvailable);
    };
    connect(&m_parts.activity, &Activity::changed, m_content, showState);
    showState();
    return *m_panel;
}

void ShellWindows::togglePanel(const QRect &icon)
{
    if (panel().isVisible())
        panel().dismiss(QStringLiteral("action"));
    else if (!panel().hasJustClosed())
        panel().showAt(icon);
}

void ShellWindows::openPanel()
{
    if (panel().isVisible())
        panel().dismiss(QStringLiteral("action"));
    else
        panel().showAt({});
}

QString ShellWindows::panelState() const
{
    if (!m_panel)
        return QStringLiteral("closed");
    if (m_panel->isVisible())
        return QStringLiteral("open");
    return m_panel->hasJustClosed() ? QStringLiteral("closed, just closed") : QStringLiteral("closed");
}

void ShellWindows::warmUp()
{
    panel().warmUp();
}

bool ShellWindows::isPanelTheWayIn() const
{
    return !QSystemTrayIcon::isSystemTrayAvailable();
}

void ShellWindows::tellOfTheTray()
{
    if (!isPanelTheWayIn() || m_parts.defaults.boolean(QLatin1String(kDidTellOfTray), false))
        return;
    m_parts.defaults.set(QLatin1String(kDidTellOfTray), true);
    const KeyCombo combo = m_parts.prefs.panelHotkey();
    const bool hasShortcut = m_actions.registrationProblem(combo).isEmpty();
    m_parts.notices.post(Notice{
        .text = hasShortcut
                    ? AppTexts::tr("This desktop shows no tray: start Lumenpost again, or press %1, for the "
                                   "capture panel")
                          .arg(shortcutWords(combo))
                    : AppTexts::tr("This desktop shows no tray: start Lumenpost again for the capture panel"),
        .symbol = QStringLiteral("camera.viewfinder"),
        .actions = {{AppTexts::tr("Open Panel"), QStringLiteral("slider.horizontal.3"),
                     [self = QPointer(this)] {
                         if (self)
                             self->openPanel();
                     }}},
    });
}

void ShellWindows::pin(const QString &path)
{
    whenDone(runInBackground([path] { return ImageFiles::read(path); }), this,
             [this](const Result<QImage> &image) {
                 if (image)
                     m_parts.pins.pin(*image);
                 else
                     m_parts.notices.post(image.error().message, kWarning);
             });
}

void ShellWindows::showSettings(const QString &tab)
{
    if (!tab.isEmpty())
        m_parts.prefs.setSettingsTab(tab);
    m_parts.windows.show(SingletonWindows::Kind::Settings);
}
