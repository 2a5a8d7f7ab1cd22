#pragma once

#include "base/result.h"
#include "library/batch/composition.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

// One picture made of several.
namespace Combiner {

enum class Layout { Horizontal, Vertical, Grid };
constexpr std::array kLayouts{Layout::Horizontal, Layout::Vertical, Layout::Grid};
QString title(Layout layout);
QString symbol(Layout layout);

// The longer edge of a result, in pixels.
constexpr int kLongestEdge = 8000;

// Where each picture stands. In pixels of the result, which is at most `kLongestEdge` long.
struct Arrangement {
    QSize canvas;
    QList<QRectF> frames;
};
// Nothing for an empty list, and where a side of the result would be below a pixel.
std::optional<Arrangement> arrange(const QList<QSize> &sizes, Layout layout, double spacing);

// The grounds to choose from, beside none.
QColor white();
QColor dark();

// Without a background colour what lies between the pictures is transparent.
std::optional<QImage> combine(const QList<QImage> &images, Layout layout, double spacing,
                              const std::optional<QColor> &background);
// The same for files, one after the other. What is no picture is left out.
Result<Composition> combineFiles(const QStringList &paths, Layout layout, double spacing,
                                 const std::optional<QColor> &background, const Progress &progress = {});

} // namespace Combiner
