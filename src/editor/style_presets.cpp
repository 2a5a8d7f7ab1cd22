#include "editor/style_presets.h"

#include "base/json.h"
#include "document/editor_document.h"
#include "editor/texts.h"
#include "settings/defaults.h"

namespace {

QJsonObject toJson(const StylePreset &preset)
{
    QJsonArray rgba;
    for (double part : preset.rgba)
        rgba.append(part);
    return {{"id", preset.id.toString(QUuid::WithoutBraces).toUpper()},
            {"name", preset.name},
            {"tool", preset.tool},
            {"rgba", rgba},
            {"lineWidth", preset.lineWidth},
            {"style", preset.style},
            {"font", preset.font}};
}

std::optional<StylePreset> fromJson(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    const auto id = Json::string(object, "id"), name = Json::string(object, "name"),
               tool = Json::string(object, "tool");
    const auto rgba = Json::array(object, "rgba");
    const auto lineWidth = Json::number(object, "lineWidth");
    const auto style = Json::integer(object, "style"), font = Json::integer(object, "font");
    if (!id || !name || !tool || !rgba || !lineWidth || !style || !font)
        return std::nullopt;
    const QUuid uuid(*id);
    if (uuid.isNull())
        return std::nullopt;
    StylePreset preset{uuid, *name, *tool, {}, *lineWidth, *style, *font};
    for (const QJsonValue &part : *rgba) {
        if (!part.isDouble())
            return std::nullopt;
        preset.rgba.append(part.toDouble());
    }
    return preset;
}

std::optional<QList<StylePreset>> fromJson(const QJsonArray &array)
{
    QList<StylePreset> presets;
    for (const QJsonValue &value : array) {
        const auto preset = fromJson(value);
        if (!preset)
            return std::nullopt;
        presets.append(*preset);
    }
    return presets;
}

QList<StylePreset> firstPresets()
{
    return {{QUuid::createUuid(), EditorTexts::tr("Red Arrow"), "arrow", {1.0, 0.23, 0.19, 1.0}, 6, 0, 0},
            {QUuid::createUuid(),
             EditorTexts::tr("Yellow Highlight"),
             "highlight",
             {1.0, 0.8, 0.0, 1.0},
             6,
             0,
             0},
            {QUuid::createUuid(), EditorTexts::tr("Blue Callout"), "callout", {0.0, 0.48, 1.0, 1.0}, 6, 0, 1},
            {QUuid::createUuid(), EditorTexts::tr("Purple Steps"), "step", {0.45, 0.38, 0.98, 1.0}, 6, 0, 0}};
}

} // namespace

PresetStore::PresetStore(Defaults &defaults, QObject *parent) : QObject(parent), m_defaults(defaults)
{
    const QJsonValue stored = defaults.value(QLatin1String(kKey));
    const auto read = stored.isArray() ? fromJson(stored.toArray()) : std::nullopt;
    m_presets = read ? *read : firstPresets();
}

void PresetStore::setPresets(const QList<StylePreset> &presets)
{
    m_presets = presets;
    QJsonArray array;
    for (const StylePreset &preset : presets)
        array.append(toJson(preset));
    m_defaults.set(QLatin1String(kKey), array);
    Q_EMIT changed();
}

void PresetStore::apply(const StylePreset &preset, EditorDocument &document)
{
    const auto tool = Tools::fromRawValue(preset.tool);
    if (!tool)
        return;
    document.setSelectedID({});
    document.setTool(*tool);
    if (preset.rgba.size() == 4) {
        const auto part = [&preset](int i) { return static_cast<float>(qBound(0.0, preset.rgba[i], 1.0)); };
        document.setColor(QColor::fromRgbF(part(0), part(1), part(2), part(3)));
    }
    document.setLineWidth(preset.lineWidth);
    document.setStyle(preset.style, *tool);
    const bool known = preset.font >= static_cast<int>(TextFont::System) &&
                       preset.font <= static_cast<int>(TextFont::Marker);
    document.setTextFont(known ? static_cast<TextFont>(preset.font) : TextFont::System);
}

void PresetStore::saveCurrent(const EditorDocument &document, const QString &name)
{
    const QColor color = document.color().toRgb();
    StylePreset preset{QUuid::createUuid(),
                       name,
                       Tools::rawValue(document.tool()),
                       {color.redF(), color.greenF(), color.blueF(), color.alphaF()},
                       document.lineWidth(),
                       document.toolStyle(document.tool()),
                       static_cast<int>(document.textFont())};
    setPresets(m_presets + QList{preset});
}

void PresetStore::remove(const QUuid &id)
{
    QList<StylePreset> left = m_presets;
    left.removeIf([&id](const StylePreset &preset) { return preset.id == id; });
    setPresets(left);
}
