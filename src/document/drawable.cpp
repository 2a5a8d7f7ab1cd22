#include "document/drawable.h"

#include "base/colors.h"

#include <algorithm>
#include <cmath>

namespace {

// Far beyond any picture; keeps numbers from a broken project out of the rasteriser's reach.
constexpr double kFarthest = 2e5;
constexpr double kWidestLine = 1000;

double sane(double coordinate)
{
    return std::clamp(coordinate, -kFarthest, kFarthest);
}
QPointF sane(const QPointF &point)
{
    return {sane(point.x()), sane(point.y())};
}
bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

} // namespace

std::optional<Annotation> drawable(const Annotation &annotation)
{
    if (!isFinite(annotation.start) || !isFinite(annotation.end) || !std::isfinite(annotation.lineWidth) ||
        !std::all_of(annotation.points.begin(), annotation.points.end(), isFinite))
        return {};
    Annotation result = annotation;
    result.start = sane(annotation.start);
    result.end = sane(annotation.end);
    result.lineWidth = std::clamp(annotation.lineWidth, 0.0, kWidestLine);
    if (std::any_of(annotation.points.begin(), annotation.points.end(),
                    [](auto p) { return p != sane(p); })) {
        for (QPointF &point : result.points)
            point = sane(point);
    }
    if (!result.color.isValid())
        result.color = SystemColors::red();
    return result;
}
