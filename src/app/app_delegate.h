#pragma once

#include "app/alerts.h"
#include "app/capture_flow.h"
#include "app/shortcuts.h"
#include "app/single_instance.h"
#include "app/status_item.h"
#include "base/clock.h"
#include "base/notice.h"
#include "platform/platform.h"

#include <QObject>
#include <memory>

class AppSettings;
class Appearance;
class CaptureSettings;
class ClaudeClient;
class Defaults;
class DocumentRouting;
class Library;
class Pins;
class PresetStore;
class QApplication;
class ScreenCapturer;
class TextRecognizer;
class TipCenter;
class ToastPresenter;
class Uploader;

// The one controller of the running program. It makes every shared object, starts them in their order, and
// joins the subsystems; each road (captures, shortcuts, the tray) has a class of its own.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    explicit AppDelegate(QApplication &application);
    ~AppDelegate() override;

    // Brings the program up. False when another instance runs and took the arguments.
    bool launch(const QStringList &words);

    void perform(HotKeyAction action);
    void captureWithCurrentMode();
    void showLibrary();
    void openArguments(const QStringList &arguments);
    void relaunch();

private:
    bool isAvailable(HotKeyAction action) const;
    void warmUp();
    void buildStatusItem();
    void buildCaptures();
    void buildEditors();
    void followActiveApplication();

    QApplication &m_application;
    SingleInstance m_instance;
    Platform m_platform;
    Clock m_clock;
    NoticeBoard m_notices;
    std::unique_ptr<Defaults> m_defaults;
    std::unique_ptr<AppSettings> m_prefs;
    std::unique_ptr<CaptureSettings> m_settings;
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
    std::unique_ptr<DocumentRouting> m_documents;
    std::unique_ptr<CaptureFlow> m_captures;
    std::unique_ptr<Shortcuts> m_shortcuts;
    std::unique_ptr<StatusItem> m_statusItem;
    Alerts m_alerts;
};
