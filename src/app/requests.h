#pragma once

#include "settings/capture_settings.h"
#include "settings/extra_shortcut.h"
#include "settings/hot_key_action.h"

#include <functional>

class Activity;
class CaptureFlow;
struct CapturePreset;
class RecordingFlow;

// What the program can be asked to do, and how it begins, whether a shortcut, the tray, the panel or a link
// asks.
class Requests {
public:
    struct Parts {
        const Activity &activity;
        const CaptureSettings &settings;
        CaptureFlow &captures;
        RecordingFlow &recordings;
    };
    // What the windows serve.
    struct Actions {
        std::function<void()> openPanel;
        std::function<void()> showLibrary;
        std::function<void()> pinLastCapture;
    };

    Requests(Parts parts, Actions actions) : m_parts(parts), m_actions(std::move(actions)) {}

    // Starts a steps session after a delay, or finishes the one that runs.
    std::function<void(int delay)> toggleSteps;

    bool isAvailable(HotKeyAction action) const;
    bool isAvailable(CaptureMode mode) const;
    void perform(HotKeyAction action);
    void performExtra(ExtraShortcut::Command command);
    void capture(CaptureMode mode, int delay = 0);
    void captureWithCurrentMode();
    void runPreset(const CapturePreset &preset);

private:
    void toggleRecording(int delay);

    Parts m_parts;
    Actions m_actions;
};
