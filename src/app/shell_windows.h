#pragma once

#include "base/result.h"
#include "settings/key_combo.h"

#include <QFuture>
#include <QObject>
#include <QRect>
#include <functional>
#include <memory>

class Activity;
class AppSettings;
class CapturePresetStore;
class CaptureSettings;
class Clock;
class Defaults;
class Library;
class MenuBarPanel;
class CapturePanel;
class NoticeBoard;
class Pins;
class SingletonWindows;
struct CapturePreset;
struct Platform;
enum class CaptureMode;

// The capture panel, the settings and the welcome guide, and how they are joined to the rest of the program.
class ShellWindows : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Platform &platform;
        const Activity &activity;
        Defaults &defaults;
        AppSettings &prefs;
        CaptureSettings &settings;
        CapturePresetStore &presets;
        Library &library;
        NoticeBoard &notices;
        Pins &pins;
        const Clock &clock;
        SingletonWindows &windows;
    };
    struct Actions {
        std::function<void()> capture;       // with the panel's mode
        std::function<void()> captureRegion; // of the welcome guide
        std::function<void()> openLibrary;
        std::function<void()> openImage;
        std::function<void(const QString &path)> openItem;
        std::function<void(const CapturePreset &)> runPreset;
        std::function<bool(CaptureMode)> isAvailable;
        std::function<QString(const KeyCombo &)> registrationProblem;
        std::function<QFuture<Result<QString>>()> makeDiagnostics;
        std::function<void()> quit;
    };

    ShellWindows(Parts parts, Actions actions, QObject *parent = nullptr);
    ~ShellWindows() override;

    // Beside the tray's icon, or at the pointer where the tray doesn't tell its place. Closes an open panel; does
    // nothing right after a click closed it.
    void togglePanel(const QRect &icon);
    void openPanel();
    // "open", "closed" or "closed, just closed"
    QString panelState() const;
    // Made at an idle moment, so that the first click is as quick as every other.
    void warmUp();
    // Says once, on a desktop without a tray, how the panel is reached. After the desktop's own start.
    void tellOfTheTray();
    // The panel is the program's face where there is no tray.
    bool isPanelTheWayIn() const;

private:
    void provideWindows();
    MenuBarPanel &panel();
    void pin(const QString &path);
    void showSettings(const QString &tab);

    Parts m_parts;
    Actions m_actions;
    CapturePanel *m_content = nullptr; // the panel's
    std::unique_ptr<MenuBarPanel> m_panel;
};
