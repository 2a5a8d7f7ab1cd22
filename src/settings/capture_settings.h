#pragma once

#include "settings/capture_options.h"

#include <QObject>
#include <QString>
#include <optional>

class Defaults;

enum class CaptureMode { AllInOne, Screen, Scrolling, Video, Steps, Text };

QString rawValue(CaptureMode mode);
std::optional<CaptureMode> captureMode(const QString &rawValue);

// The options of the capture panel, persisted as they change. A change during a capture applies to the next
// one.
class CaptureSettings : public QObject {
    Q_OBJECT
public:
    // The switches, each stored under its own key.
    enum class Switch {
        PreviewInEditor,
        CopyToClipboard,
        IncludeCursor,
        Delay,
        SystemAudio,
        Microphone,
        StepsMarkClicks,
        StepsAutoRedact,
        ShowClicks,
        ShowKeys,
        Webcam,
    };

    explicit CaptureSettings(Defaults &defaults, QObject *parent = nullptr);

    CaptureMode mode() const;
    void setMode(CaptureMode mode);
    bool isOn(Switch which) const;
    void setOn(Switch which, bool on);
    // Every switch as it was at first; the mode stays.
    void reset();

    // What a capture that starts now works with. `backdrop` is false: only presets carry it.
    CaptureOptions current() const;

Q_SIGNALS:
    void changed();

private:
    Defaults &m_defaults;
};
