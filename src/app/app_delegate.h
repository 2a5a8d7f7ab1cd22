#pragma once

#include "app/activity.h"
#include "app/alerts.h"
#include "app/capture_flow.h"
#include "app/command_links.h"
#include "app/countdown.h"
#include "app/delivery.h"
#include "app/quitting.h"
#include "app/requests.h"
#include "app/shell_windows.h"
#include "app/shortcuts.h"
#include "app/single_instance.h"
#include "app/singleton_windows.h"
#include "app/source_application.h"
#include "app/status_item.h"
#include "base/clock.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "platform/platform.h"
#include "settings/capture_settings.h"

#include <QObject>
#include <memory>

class AppSettings;
class Appearance;
class CapturePresetStore;
class ClaudeClient;
class Defaults;
class DocumentRouting;
class FilmWindows;
class Library;
class LibraryModel;
class LibraryWork;
class Pins;
class PresetStore;
class QApplication;
class RecordingFlow;
class ScreenCapturer;
class StepsFlow;
class TextIndexing;
class TextRecognizer;
class TipCenter;
class ToastPresenter;
class Uploader;

// Among the words of a start: opens what is on the clipboard.
inline constexpr const char *kOpenClipboard = "--open-clipboard";

// The one controller of the running program. It makes every shared object, starts them in their order, and
// joins the subsystems; each road (captures, shortcuts, the tray) has a class of its own.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    explicit AppDelegate(QApplication &application);
    ~AppDelegate() override;

    // Brings the program up. False when another instance runs and took the arguments; an error when it
    // doesn't answer.
    Result<bool> launch(const QStringList &words);

    void showLibrary();
    void openArguments(const QStringList &arguments);
    // Opens what is on the clipboard.
    void openInLumenpost();
    void relaunch();

private:
    void buildCaptures();
    void buildRecordings();
    void tellFailed(const QString &heading, const Error &error);
    void buildRequests();
    void buildSteps();
    void buildLinks();
    void buildEditors();
    void buildShell();
    void buildLibraryWindow();
    void buildStatusItem();
    void answerTheDesktop();
    void tellOfTheLastSession(bool hasCrashed, bool hasMigrated);
    void warmUp();
    void tidyLibrary();
    void leaveClipboard();

    QApplication &m_application;
    SingleInstance m_instance;
    Platform m_platform;
    Clock m_clock;
    NoticeBoard m_notices;
    PendingWork m_pending;
    Quitting m_quitting;
    Activity m_activity{m_clock};
    Countdown m_countdown;
    std::unique_ptr<Defaults> m_defaults;
    std::unique_ptr<AppSettings> m_prefs;
    std::unique_ptr<CaptureSettings> m_settings;
    std::unique_ptr<CapturePresetStore> m_presets;
    std::unique_ptr<Library> m_library;
    std::unique_ptr<ScreenCapturer> m_capturer;
    std::unique_ptr<TextRecognizer> m_recognizer;
    std::unique_ptr<ClaudeClient> m_claude;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<ToastPresenter> m_toasts;
    std::unique_ptr<TipCenter> m_tips;
    std::unique_ptr<Uploader> m_uploader;
    std::unique_ptr<PresetStore> m_stylePresets;
    std::unique_ptr<Pins> m_pins;
    std::unique_ptr<LibraryModel> m_libraryModel;
    std::unique_ptr<TextIndexing> m_indexing;
    std::unique_ptr<LibraryWork> m_libraryWork;
    std::unique_ptr<SingletonWindows> m_windows;
    std::unique_ptr<ShellWindows> m_shell;
    std::unique_ptr<DocumentRouting> m_documents;
    std::unique_ptr<FilmWindows> m_films;
    std::unique_ptr<SourceApplication> m_source;
    std::unique_ptr<Delivery> m_delivery;
    std::unique_ptr<CaptureFlow> m_captures;
    std::unique_ptr<RecordingFlow> m_recordings;
    std::unique_ptr<Requests> m_requests;
    std::unique_ptr<StepsFlow> m_steps;
    std::unique_ptr<CommandLinks> m_links;
    std::unique_ptr<Shortcuts> m_shortcuts;
    std::unique_ptr<StatusItem> m_statusItem;
    Alerts m_alerts;
};
