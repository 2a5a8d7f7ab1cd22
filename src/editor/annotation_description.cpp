#include "editor/annotation_description.h"

#include "document/renderer.h"
#include "editor/texts.h"

#include <array>

namespace {

struct Word {
    const char *value;
    const char *words;
};

// What the stamps show.
constexpr std::array kStampNames{
    Word{"checkmark.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "check mark")},
    Word{"xmark.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "cross")},
    Word{"exclamationmark.triangle.fill", QT_TRANSLATE_NOOP("EditorTexts", "warning")},
    Word{"questionmark.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "question mark")},
    Word{"info.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "information")},
    Word{"star.fill", QT_TRANSLATE_NOOP("EditorTexts", "star")},
    Word{"heart.fill", QT_TRANSLATE_NOOP("EditorTexts", "heart")},
    Word{"hand.thumbsup.fill", QT_TRANSLATE_NOOP("EditorTexts", "thumbs up")},
    Word{"hand.thumbsdown.fill", QT_TRANSLATE_NOOP("EditorTexts", "thumbs down")},
    Word{"lightbulb.fill", QT_TRANSLATE_NOOP("EditorTexts", "light bulb")},
    Word{"flag.fill", QT_TRANSLATE_NOOP("EditorTexts", "flag")},
    Word{"lock.fill", QT_TRANSLATE_NOOP("EditorTexts", "lock")},
    Word{"bolt.fill", QT_TRANSLATE_NOOP("EditorTexts", "lightning bolt")},
    Word{"bell.fill", QT_TRANSLATE_NOOP("EditorTexts", "bell")},
    Word{"cursorarrow", QT_TRANSLATE_NOOP("EditorTexts", "pointer")},
    Word{"cursorarrow.click.2", QT_TRANSLATE_NOOP("EditorTexts", "clicking pointer")},
    Word{"hand.point.up.left.fill", QT_TRANSLATE_NOOP("EditorTexts", "pointing hand")},
    Word{"arrow.up.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "arrow up")},
    Word{"arrow.down.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "arrow down")},
    Word{"arrow.left.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "arrow left")},
    Word{"arrow.right.circle.fill", QT_TRANSLATE_NOOP("EditorTexts", "arrow right")},
};

} // namespace

QString stampWords(const QString &value)
{
    const QString what = value.mid(value.indexOf(':') + 1);
    if (value.startsWith(QLatin1String("key:")))
        return EditorTexts::tr("%1 key").arg(what);
    const auto *name = std::find_if(kStampNames.begin(), kStampNames.end(),
                                    [&what](const Word &word) { return what == QLatin1String(word.value); });
    return name == kStampNames.end() ? what : EditorTexts::tr(name->words);
}

QString spokenColor(const QColor &color)
{
    const QColor rgb = color.toRgb();
    const float hue = rgb.hsvHueF() * 360, saturation = rgb.hsvSaturationF(), value = rgb.valueF();
    if (value < 0.12f)
        return EditorTexts::tr("black");
    if (saturation < 0.12f)
        return value > 0.93f   ? EditorTexts::tr("white")
               : value > 0.65f ? EditorTexts::tr("light gray")
               : value > 0.35f ? EditorTexts::tr("gray")
                               : EditorTexts::tr("dark gray");
    struct Name {
        float until; // degrees of hue
        const char *name;
    };
    constexpr std::array kNames{Name{14, QT_TRANSLATE_NOOP("EditorTexts", "red")},
                                Name{42, QT_TRANSLATE_NOOP("EditorTexts", "orange")},
                                Name{70, QT_TRANSLATE_NOOP("EditorTexts", "yellow")},
                                Name{165, QT_TRANSLATE_NOOP("EditorTexts", "green")},
                                Name{200, QT_TRANSLATE_NOOP("EditorTexts", "cyan")},
                                Name{245, QT_TRANSLATE_NOOP("EditorTexts", "blue")},
                                Name{295, QT_TRANSLATE_NOOP("EditorTexts", "purple")},
                                Name{340, QT_TRANSLATE_NOOP("EditorTexts", "pink")},
                                Name{361, QT_TRANSLATE_NOOP("EditorTexts", "red")}};
    const auto *found =
        std::find_if(kNames.begin(), kNames.end(), [hue](const Name &n) { return hue < n.until; });
    const Name &name = found == kNames.end() ? kNames.front() : *found;
    constexpr float kOrangeEnds = 42;
    if (name.until == kOrangeEnds && value < 0.6f)
        return EditorTexts::tr("brown");
    if (value < 0.45f)
        return EditorTexts::tr("dark %1").arg(EditorTexts::tr(name.name));
    return saturation < 0.35f && value > 0.8f ? EditorTexts::tr("light %1").arg(EditorTexts::tr(name.name))
                                              : EditorTexts::tr(name.name);
}

QString describe(const Annotation &annotation)
{
    const QString title = Tools::shortTitle(annotation.kind);
    switch (annotation.kind) {
    case ToolKind::Text:
    case ToolKind::Callout:
        return title + ": " + (annotation.text.isEmpty() ? EditorTexts::tr("empty") : annotation.text);
    case ToolKind::Step:
        return EditorTexts::tr("Step %1, %2")
            .arg(annotation.style == 1 ? Renderer::letters(annotation.number)
                                       : QString::number(annotation.number),
                 spokenColor(annotation.color));
    case ToolKind::Stamp:
        return EditorTexts::tr("Stamp %1").arg(stampWords(annotation.text));
    case ToolKind::Measure:
        return EditorTexts::tr("Measurement %1").arg(Renderer::measureLabel(annotation));
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

QString statusWords(const Annotation &annotation)
{
    const QString title = Tools::shortTitle(annotation.kind);
    if (annotation.kind == ToolKind::Stamp)
        return EditorTexts::tr("%1: %2").arg(title, stampWords(annotation.text));
    const bool holdsMore = Tools::holdsText(annotation.kind) || annotation.kind == ToolKind::Measure;
    if (!holdsMore && !Tools::usesColor(annotation.kind))
        return title;
    QString words = describe(annotation).simplified();
    words[0] = words[0].toUpper();
    return words;
}
