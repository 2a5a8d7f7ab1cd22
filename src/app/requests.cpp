#include "app/requests.h"

#include "app/activity.h"
#include "app/capture_flow.h"
#include "app/recording_flow.h"
#include "settings/capture_preset_store.h"

#include <QApplication>
#include <QWidget>

bool Requests::isAvailable(HotKeyAction action) const
{
    switch (action) {
    case HotKeyAction::Capture:
    case HotKeyAction::FullScreen:
    case HotKeyAction::Delayed:
    case HotKeyAction::GrabText:
    case HotKeyAction::Scrolling:
    case HotKeyAction::Library:
    case HotKeyAction::PinLast:
        return true;
    case HotKeyAction::Record:
        return static_cast<bool>(m_parts.captures.startRecording);
    case HotKeyAction::Steps:
        return static_cast<bool>(toggleSteps);
    }
    Q_UNREACHABLE();
}

bool Requests::isAvailable(CaptureMode mode) const
{
    switch (mode) {
    case CaptureMode::AllInOne:
    case CaptureMode::Screen:
    case CaptureMode::Scrolling:
    case CaptureMode::Text:
        return true;
    case CaptureMode::Video:
        return isAvailable(HotKeyAction::Record);
    case CaptureMode::Steps:
        return isAvailable(HotKeyAction::Steps);
    }
    Q_UNREACHABLE();
}

void Requests::perform(HotKeyAction action)
{
    // A menu of ours that is open would keep keyboard and pointer from what follows.
    while (QWidget *menu = QApplication::activePopupWidget()) {
        if (!menu->close())
            break;
    }
    switch (action) {
    case HotKeyAction::Capture:
        captureWithCurrentMode();
        break;
    case HotKeyAction::FullScreen:
        capture(CaptureMode::Screen);
        break;
    case HotKeyAction::Delayed:
        capture(CaptureMode::AllInOne, 3);
        break;
    case HotKeyAction::GrabText:
        capture(CaptureMode::Text);
        break;
    case HotKeyAction::Scrolling:
        capture(CaptureMode::Scrolling);
        break;
    case HotKeyAction::Library:
        m_actions.showLibrary();
        break;
    case HotKeyAction::Record:
        capture(CaptureMode::Video);
        break;
    case HotKeyAction::Steps:
        capture(CaptureMode::Steps);
        break;
    case HotKeyAction::PinLast:
        m_actions.pinLastCapture();
        break;
    }
}

void Requests::performExtra(ExtraShortcut::Command command)
{
    switch (command) {
    case ExtraShortcut::Command::Panel:
        m_actions.openPanel();
        break;
    case ExtraShortcut::Command::Region:
        capture(CaptureMode::AllInOne);
        break;
    case ExtraShortcut::Command::Screen:
        capture(CaptureMode::Screen);
        break;
    case ExtraShortcut::Command::Window:
        m_parts.captures.captureFrontWindow();
        break;
    case ExtraShortcut::Command::Delayed:
        perform(HotKeyAction::Delayed);
        break;
    }
}

void Requests::captureWithCurrentMode()
{
    // The panel's delay; the shortcut for a delayed capture has three seconds of its own.
    capture(m_parts.settings.mode(), m_parts.settings.isOn(CaptureSettings::Switch::Delay) ? 5 : 0);
}

void Requests::runPreset(const CapturePreset &preset)
{
    if (!m_parts.activity.acceptsPreset())
        return;
    m_parts.captures.setPendingOptions(preset.options);
    capture(preset.captureMode(), preset.options.delay ? 5 : 0);
}

void Requests::capture(CaptureMode mode, int delay)
{
    using Intent = CaptureFlow::Intent;
    switch (mode) {
    case CaptureMode::AllInOne:
        m_parts.captures.startCapture(Intent::Capture, delay);
        break;
    case CaptureMode::Screen:
        m_parts.captures.captureFullScreen(delay);
        break;
    case CaptureMode::Scrolling:
        m_parts.captures.startCapture(Intent::Scrolling, delay);
        break;
    case CaptureMode::Text:
        m_parts.captures.startCapture(Intent::GrabText, delay);
        break;
    case CaptureMode::Video:
        toggleRecording(delay);
        break;
    case CaptureMode::Steps:
        if (toggleSteps)
            toggleSteps(delay);
        break;
    }
}

void Requests::toggleRecording(int delay)
{
    if (m_parts.activity.isRecording())
        m_parts.recordings.stop();
    else
        m_parts.captures.startCapture(CaptureFlow::Intent::Video, delay);
}
