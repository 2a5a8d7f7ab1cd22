#include "artwork/fonts.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace Fonts {

namespace {

const QString kEmojiFamily = "Noto Color Emoji"; // untranslated: names of fonts

// The best family first; the system's own stands behind each, as the fall-back the designs promise.
QStringList families(Design design)
{
    switch (design) {
    case Design::System:
        return {"Inter", kEmojiFamily, "Noto Sans", "DejaVu Sans"}; // untranslated: names of fonts
    case Design::Rounded:
        return {"Quicksand", "Inter", kEmojiFamily, "Noto Sans"}; // untranslated: names of fonts
    case Design::Serif:
        return {"Noto Serif", "DejaVu Serif", "Inter", kEmojiFamily}; // untranslated: names of fonts
    case Design::Mono:
        return {"JetBrains Mono", "DejaVu Sans Mono", "Inter", kEmojiFamily}; // untranslated: names of fonts
    case Design::Marker:
        return {"Yusei Magic", "Comic Neue", "Inter", kEmojiFamily}; // untranslated: names of fonts
    }
    return {};
}

QFont make(const QStringList &families, double pixelSize, QFont::Weight weight)
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

QFont font(Design design, double pixelSize, QFont::Weight weight)
{
    return make(families(design), pixelSize, weight);
}

QFont emoji(double pixelSize)
{
    return make({kEmojiFamily, "Inter", "Noto Sans"}, pixelSize, QFont::Bold); // untranslated: names of fonts
}

} // namespace Fonts
