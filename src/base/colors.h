#pragma once

#include <QColor>

// The brand colour, which marks clicks, numbers, redactions and ripples.
inline QColor brandColor(double alpha = 1)
{
    return QColor::fromRgbF(0.45f, 0.38f, 0.98f, static_cast<float>(alpha));
}

// The luminance of a colour, 0.299 r + 0.587 g + 0.114 b in sRGB (the luma of ITU-R BT.601), 0.5 if it can't
// be told. It decides the colour of text that must stand out.
inline double brightnessComponentSafe(const QColor &color)
{
    const QColor rgb = color.toRgb();
    if (!rgb.isValid())
        return 0.5;
    return 0.299 * rgb.redF() + 0.587 * rgb.greenF() + 0.114 * rgb.blueF();
}
