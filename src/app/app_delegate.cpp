#include "app/app_delegate.h"

#include "app/document_routing.h"
#include "app/film_windows.h"
#include "app/pasteboard_opening.h"
#include "app/recording_flow.h"
#include "app/steps_flow.h"
#include "app/texts.h"
#include "base/crash_report.h"
#include "base/log.h"
#include "capture/screen_capturer.h"
#include "capture/ui/capture_overlay.h"
#include "diagnostics/diagnostics.h"
#include "editor/style_presets.h"
#include "library/batch/duplicates.h"
#include "library/clipboard_owner.h"
#include "library/library.h"
#include "library/library_backup.h"
#include "library/model/library_model.h"
#include "library/model/text_indexing.h"
#include "library/ui/library_window.h"
#include "library/ui/library_work.h"
#include "pins/pins.h"
#include "platform/desktop_activation.h"
#include "platform/face_engine.h"
#include "platform/hot_keys.h"
#include "platform/http.h"
#include "platform/login_item.h"
#include "platform/pasteboard.h"
#include "platform/paths.h"
#include "platform/permissions.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/secrets.h"
#include "platform/session/make_platform.h"
#include "platform/sounds.h"
#include "platform/text_engine.h"
#include "platform/trash.h"
#include "platform/workspace.h"
#include "recording/recording_place.h"
#include "services/claude_client.h"
#include "services/further_kinds.h"
#include "services/text_recognizer.h"
#include "services/uploader.h"
#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "settings/migration.h"
#include "ui/appearance.h"
#include "ui/floating.h"
#include "ui/tips.h"
#include "ui/toast.h"

#include <QApplication>
#include <QFileInfo>
#include <QProcess>
#include <QThreadPool>

namespace {
constexpr int kTrayPatience = 10000;  // milliseconds
constexpr int kIdleAfterStart = 1500; // milliseconds; the desktop's own start is over by then
} // namespace

AppDelegate::AppDelegate(QApplication &application)
    : m_application(application), m_platform(makePlatform()), m_quitting(application, m_pending)
{
    Log::setDirectory(m_platform.paths->state());
    if (m_platform.workspace->placesFloats()) {
        Floating::setPlacer([this](const QString &title, const QRect &frame) {
            m_platform.workspace->placeFloat(title, frame);
        });
    }
}

AppDelegate::~AppDelegate()
{
    Floating::setPlacer({});
    if (m_library)
        m_library->stopCopying();
    // What workers still do, such as reading the text of a capture, refers to parts that go now.
    QThreadPool::globalInstance()->waitForDone(int(PendingWork::kLimit.count()));
}

Result<bool> AppDelegate::launch(const QStringList &words)
{
    // Another instance may run in another folder.
    QStringList arguments = words;
    for (QString &argument : arguments) {
        if (QFileInfo(argument).isFile())
            argument = QFileInfo(argument).absoluteFilePath();
    }
    const auto role = m_instance.start(arguments);
    if (role && *role == SingleInstance::Role::HandedOver)
        return false;
    if (!role && role.error().kind == Error::Kind::Unavailable)
        return std::unexpected(role.error());
    if (!role) // the program serves all the same
        Log::error(QStringLiteral("One running instance can't be kept"), role.error());
    connect(&m_instance, &SingleInstance::received, this, &AppDelegate::openArguments);

    const bool crashedLastTime = Log::startSession();
    CrashReport::install(CrashReport::folderIn(m_platform.paths->state()),
                         QCoreApplication::applicationVersion());
    m_quitting.lastWork = [this] { leaveClipboard(); };
    connect(&m_application, &QCoreApplication::aboutToQuit, this, [] { Log::endSession(); });

    m_defaults = std::make_unique<Defaults>(m_platform.paths->config() + QStringLiteral("/defaults.json"));
    const Migration::Outcome migration =
        Migration::runIfNeeded(*m_defaults, *m_platform.secrets, *m_platform.paths);
    m_pending.keep(QStringLiteral("carrying the API key over"), migration.key);
    m_prefs = std::make_unique<AppSettings>(*m_defaults, *m_platform.secrets, *m_platform.loginItem,
                                            *m_platform.paths, m_notices);
    m_settings = std::make_unique<CaptureSettings>(*m_defaults);
    m_presets = std::make_unique<CapturePresetStore>(*m_defaults, *m_settings);
    m_library = std::make_unique<Library>(*m_prefs, *m_platform.trash, m_clock);
    connect(m_library.get(), &Library::working, &m_pending,
            [this](const QString &what, const QFuture<void> &work) { m_pending.keep(what, work); });
    m_library->watch();
    m_capturer = std::make_unique<ScreenCapturer>(*m_platform.screens, *m_platform.pictures);
    m_recognizer = std::make_unique<TextRecognizer>(*m_platform.text, *m_platform.faces);
    const auto chooseKinds = [this] {
        m_recognizer->setFurtherKinds(SensitiveText::furtherKindsBut(m_prefs->privateKindsOff()));
    };
    chooseKinds();
    connect(m_prefs.get(), &AppSettings::changed, this, chooseKinds);
    m_claude = std::make_unique<ClaudeClient>(*m_platform.http, *m_prefs);
    buildCaptures();
    buildRecordings();
    buildRequests();
    buildSteps();
    buildLinks();

    // First what a waiting user needs: the shortcuts. The tray and the look follow.
    m_shortcuts =
        std::make_unique<Shortcuts>(*m_platform.hotKeys, *m_prefs, *m_presets,
                                    [this](HotKeyAction action) { return m_requests->isAvailable(action); });
    connect(m_shortcuts.get(), &Shortcuts::performed, this,
            [this](HotKeyAction action) { m_requests->perform(action); });
    connect(m_shortcuts.get(), &Shortcuts::presetCalled, this,
            [this](const CapturePreset &preset) { m_requests->runPreset(preset); });
    connect(m_shortcuts.get(), &Shortcuts::extraCalled, this,
            [this](ExtraShortcut::Command command) { m_requests->performExtra(command); });
    m_shortcuts->registerHotkeys();
    Log::info(QStringLiteral("Ready for shortcuts"));

    m_appearance = std::make_unique<Appearance>(m_application, m_platform.appearance.get());
    QApplication::setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName(), StatusItem::icon()));
    m_toasts = std::make_unique<ToastPresenter>(m_notices);
    m_tips = std::make_unique<TipCenter>(m_prefs.get());
    buildEditors();
    buildStatusItem();
    tellOfTheLastSession(crashedLastTime, migration.hasMigrated);
    if (!arguments.isEmpty())
        openArguments(arguments);
    else if (!m_defaults->boolean(QStringLiteral("didShowWelcome"), false))
        m_windows->show(SingletonWindows::Kind::Welcome);
    answerTheDesktop();
    // A tray may come later than this program.
    QTimer::singleShot(kTrayPatience, m_shell.get(), [this] { m_shell->tellOfTheTray(); });
    QTimer::singleShot(kIdleAfterStart, this, &AppDelegate::warmUp);
    QTimer::singleShot(kIdleAfterStart, this, &AppDelegate::tidyLibrary);
    return true;
}

void AppDelegate::buildCaptures()
{
    m_source = std::make_unique<SourceApplication>(*m_platform.workspace);
    m_delivery = std::make_unique<Delivery>(Delivery::Parts{
        .activity = m_activity,
        .library = *m_library,
        .pasteboard = *m_platform.pasteboard,
        .sounds = *m_platform.sounds,
        .recognizer = *m_recognizer,
        .claude = *m_claude,
        .prefs = *m_prefs,
        .notices = m_notices,
        .pending = m_pending,
    });
    m_captures = std::make_unique<CaptureFlow>(CaptureFlow::Parts{
        .activity = m_activity,
        .countdown = m_countdown,
        .source = *m_source,
        .delivery = *m_delivery,
        .capturer = *m_capturer,
        .screens = *m_platform.screens,
        .pictures = *m_platform.pictures,
        .pointer = *m_platform.pointer,
        .permissions = *m_platform.permissions,
        .workspace = *m_platform.workspace,
        .settings = *m_settings,
        .notices = m_notices,
    });
    connect(m_captures.get(), &CaptureFlow::failed, this,
            [this](const Error &error) { tellFailed(AppTexts::tr("Capture failed"), error); });
}

void AppDelegate::tellFailed(const QString &heading, const Error &error)
{
    m_alerts.showCaptureError(
        heading, error, [this] { relaunch(); },
        [this] { m_platform.permissions->openSettings(Permission::ScreenRecording); });
}

void AppDelegate::buildRecordings()
{
    m_recordings = std::make_unique<RecordingFlow>(RecordingFlow::Parts{
        .activity = m_activity,
        .delivery = *m_delivery,
        .library = *m_library,
        .prefs = *m_prefs,
        .notices = m_notices,
        .pending = m_pending,
        .films = *m_platform.films,
        .sounds = *m_platform.soundSources,
        .movies = *m_platform.movies,
        .permissions = *m_platform.permissions,
        .inputs = *m_platform.inputMonitors,
        .cameras = *m_platform.cameras,
        .workspace = *m_platform.workspace,
        .notes = RecordingPlace::notesIn(m_platform.paths->state()),
    });
    m_captures->startRecording = [this](Activity::Run run, const Screen &screen, const QRectF &rect,
                                        const Delivery::Order &order) {
        m_recordings->start(run, screen, rect, order);
    };
    connect(m_recordings.get(), &RecordingFlow::failed, this,
            [this](const Error &error) { tellFailed(AppTexts::tr("Recording failed"), error); });
    m_quitting.firstWork = [this] {
        m_recordings->stop();
        m_steps->leave();
    };
    QTimer::singleShot(kIdleAfterStart, m_recordings.get(), &RecordingFlow::recover);
}

void AppDelegate::buildSteps()
{
    m_steps = std::make_unique<StepsFlow>(StepsFlow::Parts{
        .activity = m_activity,
        .settings = *m_settings,
        .prefs = *m_prefs,
        .library = *m_library,
        .recognizer = *m_recognizer,
        .claude = *m_claude,
        .notices = m_notices,
        .pending = m_pending,
        .presses = *m_platform.presses,
        .elements = *m_platform.elements,
        .screens = *m_platform.screens,
        .pictures = *m_platform.pictures,
        .pointer = *m_platform.pointer,
        .permissions = *m_platform.permissions,
        .workspace = *m_platform.workspace,
        .sounds = *m_platform.sounds,
        .folder = m_platform.paths->state() + QStringLiteral("/steps"),
    });
    m_steps->setActions({
        .openFile = [this](const QString &path) { m_documents->openFile(path); },
        .openEditor =
            [this](std::unique_ptr<EditorDocument> document) {
                return &m_documents->openEditor(std::move(document));
            },
        .showLibrary = [this] { showLibrary(); },
        .showError = [this](const Error &error) { m_alerts.showError(error); },
    });
    connect(m_steps.get(), &StepsFlow::failed, m_captures.get(), &CaptureFlow::failed);
    m_requests->toggleSteps = [this](int delay) { m_steps->toggle(delay); };
}

// The first shortcut should be answered as quickly as every other.
void AppDelegate::warmUp()
{
    if (!m_activity.isIdle())
        return;
    m_documents->offerDrafts();
    m_steps->offerUnfinished();
    CaptureOverlayController::warmUp();
    m_shell->warmUp();
    // Where pictures need the user's consent nothing may be asked now.
    if (m_platform.pictures->capabilities().excludesOwn)
        whenDone(m_capturer->captureAllDisplays(Pointer::Hidden), this, [](const auto &) {});
}

// What nobody waits for.
void AppDelegate::tidyLibrary()
{
    LibraryBackup::autoBackup(*m_library, m_clock.now());
    m_libraryWork->runAutoDelete(LibraryWork::WhenNothing::Silent);
}

// What was copied here can be pasted after the program has gone.
void AppDelegate::leaveClipboard()
{
    const QList<Pasteboard::Flavor> flavors = m_platform.pasteboard->lostAtQuit();
    if (flavors.isEmpty())
        return;
    const QFuture<Result<void>> left = ClipboardOwner::start(flavors);
    m_pending.keep(QStringLiteral("leaving the clipboard"), left);
}

void AppDelegate::buildStatusItem()
{
    StatusItem::Actions actions;
    actions.perform = [this](HotKeyAction action) { m_requests->perform(action); };
    actions.isAvailable = [this](HotKeyAction action) { return m_requests->isAvailable(action); };
    actions.openImage = [this] { m_documents->openImage(); };
    actions.hasPins = [this] { return !m_pins->windows().empty(); };
    actions.goToPin = [this] { m_pins->goToNext(); };
    actions.closePins = [this] { m_pins->closeAll(); };
    actions.quit = [] { QCoreApplication::quit(); };
    actions.bringDialogForward = [this] {
        m_activity.clearStuckCapture();
        return m_alerts.bringForward();
    };
    actions.togglePanel = [this](const QRect &icon) { m_shell->togglePanel(icon); };
    actions.panelState = [this] { return m_shell->panelState(); };
    if (m_windows->canShow(SingletonWindows::Kind::Settings))
        actions.showSettings = [this] { m_windows->show(SingletonWindows::Kind::Settings); };
    if (m_windows->canShow(SingletonWindows::Kind::Welcome))
        actions.showWelcome = [this] { m_windows->show(SingletonWindows::Kind::Welcome); };
    m_statusItem = std::make_unique<StatusItem>(std::move(actions), m_activity, *m_prefs, *m_settings);
    connect(&m_countdown, &Countdown::ticked, m_statusItem.get(), &StatusItem::setCountdown);
    connect(m_recordings.get(), &RecordingFlow::titleChanged, m_statusItem.get(), &StatusItem::setTitle);
    connect(m_steps.get(), &StepsFlow::countedDown, m_statusItem.get(), &StatusItem::setCountdown);
    connect(m_steps.get(), &StepsFlow::titleChanged, m_statusItem.get(), &StatusItem::setTitle);
    m_statusItem->show();
}

void AppDelegate::buildEditors()
{
    m_uploader = std::make_unique<Uploader>(*m_platform.http, *m_prefs);
    m_stylePresets = std::make_unique<PresetStore>(*m_defaults);
    m_pins = std::make_unique<Pins>(*m_platform.pasteboard, m_notices);
    m_windows = std::make_unique<SingletonWindows>(*m_defaults);
    buildShell();
    // Only what there is a window for is offered.
    std::function<void()> openSettings;
    if (m_windows->canShow(SingletonWindows::Kind::Settings))
        openSettings = [this] { m_windows->show(SingletonWindows::Kind::Settings); };
    m_documents = std::make_unique<DocumentRouting>(EditorPorts{
        .library = *m_library,
        .settings = *m_prefs,
        .pasteboard = *m_platform.pasteboard,
        .notices = m_notices,
        .workspace = *m_platform.workspace,
        .recognizer = *m_recognizer,
        .claude = *m_claude,
        .uploader = *m_uploader,
        .presets = *m_stylePresets,
        .pins = *m_pins,
        .clock = m_clock,
        .pending = m_pending,
        .openSettings = openSettings,
        .draftFolder = m_platform.paths->state() + QStringLiteral("/drafts"),
    });
    m_delivery->openEditor = [this](const DeliveredPicture &picture) { m_documents->openEditor(picture); };
    m_films = std::make_unique<FilmWindows>(
        FilmWindows::Parts{*m_platform.movies, *m_platform.soundOutput, *m_platform.speech, *m_prefs,
                           *m_library, *m_platform.pasteboard, *m_platform.workspace, m_notices, m_pending});
    m_documents->openVideoEditor = [this](const QString &path) { m_films->open(path); };
    m_delivery->openVideoEditor = m_documents->openVideoEditor;
    m_delivery->pin = [this](const QImage &image) { m_pins->pin(image); };
    buildLibraryWindow();
}

void AppDelegate::buildLibraryWindow()
{
    m_libraryModel = std::make_unique<LibraryModel>(*m_library, *m_defaults, m_clock);
    m_indexing = std::make_unique<TextIndexing>(*m_library, *m_recognizer);
    connect(m_library.get(), &Library::imported, m_indexing.get(), &TextIndexing::indexMissingText);
    m_libraryWork = std::make_unique<LibraryWork>(LibraryWork::Parts{
        .library = *m_library,
        .workspace = *m_platform.workspace,
        .notices = m_notices,
        .claude = *m_claude,
        .prefs = *m_prefs,
        .pending = m_pending,
        .clock = m_clock,
        .indexing = *m_indexing,
        .openItem = [this](const QString &path) { m_documents->openLibraryItem(path); },
    });
    // The user's captures come first.
    connect(&m_activity, &Activity::changed, m_indexing.get(),
            [this] { m_indexing->setPaused(!m_activity.isIdle()); });
    m_windows->provide(SingletonWindows::Kind::Library, [this] {
        m_indexing->indexMissingText();
        return std::make_unique<LibraryWindow>(LibraryPorts{
            .model = *m_libraryModel,
            .pasteboard = *m_platform.pasteboard,
            .workspace = *m_platform.workspace,
            .notices = m_notices,
            .pins = *m_pins,
            .movies = *m_platform.movies,
            .settings = *m_prefs,
            .work = *m_libraryWork,
            .hashFile = Duplicates::cacheFile(*m_platform.paths),
            .openItem = [this](const QString &path) { m_documents->openLibraryItem(path); },
            .playSound = playSound(*m_platform.movies, *m_platform.soundOutput),
        });
    });
}

void AppDelegate::buildShell()
{
    ShellWindows::Actions actions;
    actions.capture = [this] { m_requests->captureWithCurrentMode(); };
    actions.captureRegion = [this] { m_requests->capture(CaptureMode::AllInOne); };
    actions.openLibrary = [this] { showLibrary(); };
    actions.openImage = [this] { m_documents->openImage(); };
    actions.openItem = [this](const QString &path) { m_documents->openLibraryItem(path); };
    actions.runPreset = [this](const CapturePreset &preset) { m_requests->runPreset(preset); };
    actions.isAvailable = [this](CaptureMode mode) { return m_requests->isAvailable(mode); };
    actions.registrationProblem = [this](const KeyCombo &combo) { return m_shortcuts->problem(combo); };
    actions.makeDiagnostics = [this] {
        const Diagnostics diagnostics(
            {*m_platform.paths, *m_platform.screens, *m_platform.permissions, *m_prefs, *m_library});
        return diagnostics.makeBundle(m_clock.now());
    };
    actions.quit = [] { QCoreApplication::quit(); };
    m_shell = std::make_unique<ShellWindows>(
        ShellWindows::Parts{m_platform, m_activity, *m_defaults, *m_prefs, *m_settings, *m_presets,
                            *m_library, m_notices, *m_pins, m_clock, *m_windows},
        std::move(actions));
}

void AppDelegate::buildRequests()
{
    m_requests = std::make_unique<Requests>(
        Requests::Parts{m_activity, *m_settings, *m_captures, *m_recordings},
        Requests::Actions{.openPanel = [this] { m_shell->openPanel(); },
                          .showLibrary = [this] { showLibrary(); },
                          .pinLastCapture = [this] { m_documents->pinLastCapture(); }});
}

void AppDelegate::buildLinks()
{
    CommandLinks::Actions actions;
    actions.perform = [this](HotKeyAction action) { m_requests->perform(action); };
    actions.captureWithCurrentMode = [this] { m_requests->captureWithCurrentMode(); };
    actions.captureRegion = [this] { m_requests->capture(CaptureMode::AllInOne); };
    actions.runPreset = [this](const QString &name) {
        const auto preset = m_presets->named(name);
        if (preset)
            m_requests->runPreset(*preset);
        return preset.has_value();
    };
    actions.openFile = [this](const QString &path) { m_documents->openFile(path); };
    m_links = std::make_unique<CommandLinks>(std::move(actions), m_notices);
}

void AppDelegate::answerTheDesktop()
{
    m_platform.activation->serve({
        .activate = [this] { openArguments({}); },
        .open = [this](const QStringList &addresses) { openArguments(addresses); },
        .perform =
            [this](const QString &action) {
                const auto link = launcherAction(action);
                if (link)
                    m_links->open(*link);
            },
    });
}

void AppDelegate::tellOfTheLastSession(bool hasCrashed, bool hasMigrated)
{
    if (hasMigrated) {
        Log::info(QStringLiteral("Migrated settings and captures from Tidegrasp"));
        m_notices.post(AppTexts::tr("Tidegrasp is now Lumenpost — your captures and settings came along"),
                       QStringLiteral("sparkles"));
    }
    if (hasCrashed)
        m_notices.post(
            AppTexts::tr(
                "Lumenpost didn't quit normally last time — Settings › Help can make a diagnostics file"),
            QStringLiteral("exclamationmark.triangle.fill"));
}

void AppDelegate::showLibrary()
{
    if (m_windows->show(SingletonWindows::Kind::Library))
        return;
    m_library->ensureDirectory();
    if (const auto opened = m_platform.workspace->open(QUrl::fromLocalFile(m_library->folder())); !opened)
        m_notices.post(opened.error().message, QStringLiteral("exclamationmark.triangle.fill"));
}

void AppDelegate::openArguments(const QStringList &arguments)
{
    if (arguments.isEmpty()) {
        // The guide is what a first start is about.
        if (QWidget *guide = m_windows->window(SingletonWindows::Kind::Welcome); guide && guide->isVisible())
            m_windows->show(SingletonWindows::Kind::Welcome);
        else if (m_shell->isPanelTheWayIn())
            m_shell->openPanel();
        else
            showLibrary();
    }
    for (const QString &argument : arguments) {
        if (argument == QLatin1String(kOpenClipboard))
            openInLumenpost();
        else
            m_links->open(argument);
    }
}

void AppDelegate::openInLumenpost()
{
    const PasteboardOpening opening(
        *m_platform.pasteboard,
        {[this](const QString &path) { m_documents->openFile(path); },
         [this](const QImage &image) { m_documents->openEditor(std::make_unique<EditorDocument>(image)); }});
    if (const auto opened = opening.open(); !opened)
        m_notices.post(opened.error().message, QStringLiteral("exclamationmark.triangle.fill"));
}

void AppDelegate::relaunch()
{
    const QString program = QCoreApplication::applicationFilePath();
    QProcess::startDetached(QStringLiteral("/bin/sh"),
                            {QStringLiteral("-c"), QStringLiteral("sleep 1; exec \"$0\""), program});
    QCoreApplication::quit();
}
