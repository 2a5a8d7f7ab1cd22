#include "editor/annotation_description.h"

#include "document/renderer.h"

#include <array>

QString spokenColor(const QColor &color)
{
    const QColor rgb = color.toRgb();
    const float hue = rgb.hsvHueF() * 360, saturation = rgb.hsvSaturationF(), value = rgb.valueF();
    if (value < 0.12f)
        return "black";
    if (saturation < 0.12f)
        return value > 0.93f ? "white" : value > 0.65f ? "light gray" : value > 0.35f ? "gray" : "dark gray";
    struct Name {
        float until; // degrees of hue
        const char *name;
    };
    constexpr std::array names{Name{14, "red"},     Name{42, "orange"}, Name{70, "yellow"},
                               Name{165, "green"},  Name{200, "cyan"},  Name{245, "blue"},
                               Name{295, "purple"}, Name{340, "pink"},  Name{361, "red"}};
    const auto *name =
        std::find_if(names.begin(), names.end(), [hue](const Name &n) { return hue < n.until; });
    const QString base = name == names.end() ? QStringLiteral("red") : QString::fromLatin1(name->name);
    if (base == "orange" && value < 0.6f)
        return "brown";
    if (value < 0.45f)
        return "dark " + base;
    return saturation < 0.35f && value > 0.8f ? "light " + base : base;
}

QString describe(const Annotation &annotation)
{
    const QString title = Tools::shortTitle(annotation.kind);
    switch (annotation.kind) {
    case ToolKind::Text:
    case ToolKind::Callout:
        return title + ": " + (annotation.text.isEmpty() ? QStringLiteral("empty") : annotation.text);
    case ToolKind::Step:
        return "Step " +
               (annotation.style == 1 ? Renderer::letters(annotation.number)
                                      : QString::number(annotation.number)) +
               ", " + spokenColor(annotation.color);
    case ToolKind::Stamp:
        return "Stamp " + annotation.text.mid(annotation.text.lastIndexOf(':') + 1);
    case ToolKind::Measure:
        return "Measurement " + Renderer::measureLabel(annotation);
    case ToolKind::Select:
    case ToolKind::Arrow:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Highlight:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Image:
        break;
    }
    return spokenColor(annotation.color) + ' ' + title.toLower();
}
