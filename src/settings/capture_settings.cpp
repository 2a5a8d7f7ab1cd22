#include "settings/capture_settings.h"

#include "settings/defaults.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<CaptureMode, const char *>, 6> kModes{{
    {CaptureMode::AllInOne, "allInOne"},
    {CaptureMode::Screen, "screen"},
    {CaptureMode::Scrolling, "scrolling"},
    {CaptureMode::Video, "video"},
    {CaptureMode::Steps, "steps"},
    {CaptureMode::Text, "text"},
}};

constexpr CaptureSettings::Switch kLastSwitch = CaptureSettings::Switch::Webcam;

struct StoredSwitch {
    const char *key;
    bool fallback;
};

StoredSwitch stored(CaptureSettings::Switch which)
{
    switch (which) {
    case CaptureSettings::Switch::PreviewInEditor:
        return {"openEditorAfterCapture", true};
    case CaptureSettings::Switch::CopyToClipboard:
        return {"copyToClipboard", false};
    case CaptureSettings::Switch::IncludeCursor:
        return {"includeCursor", false};
    case CaptureSettings::Switch::Delay:
        return {"delayCapture", false};
    case CaptureSettings::Switch::SystemAudio:
        return {"recordSystemAudio", true};
    case CaptureSettings::Switch::Microphone:
        return {"recordMicrophone", false};
    case CaptureSettings::Switch::StepsMarkClicks:
        return {"stepsMarkClicks", true};
    case CaptureSettings::Switch::StepsAutoRedact:
        return {"stepsAutoRedact", true};
    case CaptureSettings::Switch::ShowClicks:
        return {"recordShowClicks", false};
    case CaptureSettings::Switch::ShowKeys:
        return {"recordShowKeys", false};
    case CaptureSettings::Switch::Webcam:
        return {"recordWebcam", false};
    }
    Q_UNREACHABLE();
}

} // namespace

QString rawValue(CaptureMode mode)
{
    return QLatin1String(kModes[static_cast<size_t>(mode)].second);
}

std::optional<CaptureMode> captureMode(const QString &rawValue)
{
    for (const auto &[mode, word] : kModes) {
        if (rawValue == QLatin1String(word))
            return mode;
    }
    return std::nullopt;
}

CaptureSettings::CaptureSettings(Defaults &defaults, QObject *parent) : QObject(parent), m_defaults(defaults)
{}

CaptureMode CaptureSettings::mode() const
{
    return captureMode(m_defaults.string(QStringLiteral("captureMode"))).value_or(CaptureMode::AllInOne);
}

void CaptureSettings::setMode(CaptureMode mode)
{
    m_defaults.set(QStringLiteral("captureMode"), rawValue(mode));
    Q_EMIT changed();
}

bool CaptureSettings::isOn(Switch which) const
{
    const StoredSwitch entry = stored(which);
    return m_defaults.boolean(QLatin1String(entry.key), entry.fallback);
}

void CaptureSettings::setOn(Switch which, bool on)
{
    m_defaults.set(QLatin1String(stored(which).key), on);
    Q_EMIT changed();
}

void CaptureSettings::reset()
{
    for (int i = 0; i <= static_cast<int>(kLastSwitch); ++i) {
        const StoredSwitch entry = stored(static_cast<Switch>(i));
        m_defaults.set(QLatin1String(entry.key), entry.fallback);
    }
    Q_EMIT changed();
}

CaptureOptions CaptureSettings::current() const
{
    CaptureOptions options;
    options.editor = isOn(Switch::PreviewInEditor);
    options.clipboard = isOn(Switch::CopyToClipboard);
    options.cursor = isOn(Switch::IncludeCursor);
    options.delay = isOn(Switch::Delay);
    options.systemAudio = isOn(Switch::SystemAudio);
    options.microphone = isOn(Switch::Microphone);
    options.showClicks = isOn(Switch::ShowClicks);
    options.showKeys = isOn(Switch::ShowKeys);
    options.webcam = isOn(Switch::Webcam);
    return options;
}
