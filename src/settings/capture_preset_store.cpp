#include "settings/capture_preset_store.h"

#include "base/json.h"
#include "settings/defaults.h"
#include "settings/texts.h"

#include <QJsonArray>
#include <QLocale>

namespace {

// Virtual key code of the digit 1; the next ones follow, as far as the suggestion goes.
constexpr int kFirstDigit = 18;

QList<CapturePreset> firstPresets()
{
    const auto preset = [](const QString &name, CaptureMode mode, bool CaptureOptions::*first,
                           bool CaptureOptions::*second, bool CaptureOptions::*third) {
        CaptureOptions options;
        options.editor = false;
        options.systemAudio = true;
        for (bool CaptureOptions::*field : {first, second, third})
            options.*field = true;
        return CapturePreset{QUuid::createUuid(), name, rawValue(mode), options, std::nullopt};
    };
    using Options = CaptureOptions;
    return {
        preset(SettingsTexts::tr("Window to Clipboard"), CaptureMode::AllInOne, &Options::clipboard,
               &Options::backdrop, &Options::systemAudio),
        preset(SettingsTexts::tr("Delayed Region"), CaptureMode::AllInOne, &Options::editor, &Options::delay,
               &Options::systemAudio),
        preset(SettingsTexts::tr("Recording with Clicks"), CaptureMode::Video, &Options::editor, &Options::cursor,
               &Options::showClicks),
    };
}

// Nothing unless every entry can be read: a half-read list would replace the whole one at the next change.
std::optional<QList<CapturePreset>> decoded(const QString &stored)
{
    const QJsonDocument document = QJsonDocument::fromJson(stored.toUtf8());
    if (!document.isArray())
        return std::nullopt;
    QList<CapturePreset> presets;
    const QJsonArray array = document.array();
    for (const QJsonValue &entry : array) {
        const auto preset = CapturePreset::fromJson(entry.toObject());
        if (!preset)
            return std::nullopt;
        presets.append(*preset);
    }
    return presets;
}

} // namespace

QString CapturePreset::summary() const
{
    QStringList parts{CapturePresetStore::word(captureMode())};
    if (options.delay)
        parts.append(SettingsTexts::tr("%1s delay").arg(5));
    if (options.backdrop)
        parts.append(SettingsTexts::tr("backdrop"));
    if (options.clipboard)
        parts.append(SettingsTexts::tr("clipboard"));
    if (options.editor)
        parts.append(SettingsTexts::tr("editor"));
    return parts.join(QStringLiteral(" → "));
}

QJsonObject CapturePreset::toJson() const
{
    QJsonObject object{{QStringLiteral("id"), id.toString(QUuid::WithoutBraces).toUpper()},
                       {QStringLiteral("name"), name},
                       {QStringLiteral("mode"), mode},
                       {QStringLiteral("options"), options.toJson()}};
    if (hotkey)
        object.insert(QStringLiteral("hotkey"), hotkey->toJson());
    return object;
}

std::optional<CapturePreset> CapturePreset::fromJson(const QJsonObject &object)
{
    const auto id = Json::string(object, "id");
    const auto name = Json::string(object, "name");
    const auto mode = Json::string(object, "mode");
    const auto fields = Json::object(object, "options");
    if (!id || !name || !mode || !fields)
        return std::nullopt;
    const QUuid uuid = QUuid::fromString(*id);
    const auto options = CaptureOptions::fromJson(*fields);
    if (uuid.isNull() || !options)
        return std::nullopt;
    CapturePreset preset{uuid, *name, *mode, *options, std::nullopt};
    const QJsonValue hotkey = object.value(QLatin1String("hotkey"));
    if (!hotkey.isUndefined() && !hotkey.isNull()) {
        preset.hotkey = KeyCombo::fromJson(hotkey.toObject());
        if (!preset.hotkey)
            return std::nullopt;
    }
    return preset;
}

CapturePresetStore::CapturePresetStore(Defaults &defaults, const CaptureSettings &settings, QObject *parent)
    : QObject(parent), m_defaults(defaults), m_settings(settings)
{
    load();
}

QString CapturePresetStore::word(CaptureMode mode)
{
    switch (mode) {
    case CaptureMode::AllInOne:
        return SettingsTexts::tr("Region");
    case CaptureMode::Screen:
        return SettingsTexts::tr("Screen");
    case CaptureMode::Scrolling:
        return SettingsTexts::tr("Scroll");
    case CaptureMode::Video:
        return SettingsTexts::tr("Video");
    case CaptureMode::Steps:
        return SettingsTexts::tr("Steps");
    case CaptureMode::Text:
        return SettingsTexts::tr("Text");
    }
    Q_UNREACHABLE();
}

KeyCombo CapturePresetStore::suggestedHotkey(qsizetype index)
{
    return {kFirstDigit + static_cast<int>(std::min<qsizetype>(index, 8)),
            KeyCombo::Control | KeyCombo::Option | KeyCombo::Shift};
}

std::optional<CapturePreset> CapturePresetStore::preset(const QUuid &id) const
{
    for (const CapturePreset &preset : m_presets) {
        if (preset.id == id)
            return preset;
    }
    return std::nullopt;
}

std::optional<CapturePreset> CapturePresetStore::named(const QString &name) const
{
    const QString wanted = name.toCaseFolded();
    for (const CapturePreset &preset : m_presets) {
        if (preset.name.toCaseFolded() == wanted)
            return preset;
    }
    return std::nullopt;
}

CapturePreset CapturePresetStore::addFromCurrent()
{
    const CaptureMode mode = m_settings.mode();
    const CapturePreset preset{QUuid::createUuid(), SettingsTexts::tr("My %1 Preset").arg(word(mode)),
                               rawValue(mode), m_settings.current(), std::nullopt};
    m_presets.append(preset);
    store();
    return preset;
}

void CapturePresetStore::update(const CapturePreset &preset)
{
    for (CapturePreset &stored : m_presets) {
        if (stored.id != preset.id)
            continue;
        stored = preset;
        store();
        return;
    }
}

void CapturePresetStore::remove(const CapturePreset &preset)
{
    if (m_presets.removeIf([&](const CapturePreset &stored) { return stored.id == preset.id; }) > 0)
        store();
}

void CapturePresetStore::load()
{
    m_presets = decoded(m_defaults.string(QLatin1String(kKey))).value_or(firstPresets());
}

void CapturePresetStore::store()
{
    QJsonArray array;
    for (const CapturePreset &preset : std::as_const(m_presets))
        array.append(preset.toJson());
    // The value is the text of a JSON array, as one piece of data.
    m_defaults.set(QLatin1String(kKey),
                   QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact)));
    Q_EMIT changed();
}
