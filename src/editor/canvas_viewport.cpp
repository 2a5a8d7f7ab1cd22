#include "editor/canvas_viewport.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFitMargin = 56;  // points, both sides together
constexpr double kTallPicture = 3; // views
constexpr double kLeastFitScale = 0.02;
constexpr double kPanMargin = 40;       // points of the view that may show beside a pushed picture
constexpr double kBackdropShare = 0.08; // of the longer side, on each side

double clampedAxis(double origin, double length, double view)
{
    if (length + 2 * kPanMargin <= view)
        return (view - length) / 2;
    return std::clamp(origin, view - length - kPanMargin, kPanMargin);
}

} // namespace

double CanvasViewport::fitScale() const
{
    const double grow =
        backdrop ? 2 * std::trunc(std::max(image.width(), image.height()) * kBackdropShare) : 0;
    const double sx = (view.width() - kFitMargin) / (image.width() + grow);
    const double sy = (view.height() - kFitMargin) / (image.height() + grow);
    return std::max(std::min({sx, sy, 1 / backing}), kLeastFitScale);
}

QPointF CanvasViewport::centeredOrigin(double scale) const
{
    return {(view.width() - scale * image.width()) / 2, (view.height() - scale * image.height()) / 2};
}

QPointF CanvasViewport::clampedOrigin(const QPointF &origin, double scale) const
{
    return {clampedAxis(origin.x(), scale * image.width(), view.width()),
            clampedAxis(origin.y(), scale * image.height(), view.height())};
}

QPointF CanvasViewport::origin() const
{
    const double s = scale();
    return clampedOrigin(centeredOrigin(s) + pan, s);
}

void CanvasViewport::setZoom(std::optional<double> newZoom, const QPointF &around)
{
    if (!newZoom) {
        zoom.reset();
        pan = {};
        return;
    }
    const QPointF under = toImage(around);
    zoom = std::clamp(*newZoom, kLeastZoom, kMostZoom);
    const double s = scale();
    pan = around - under * s - centeredOrigin(s);
}

void CanvasViewport::showFromStart()
{
    zoom.reset();
    pan = {};
    if (view.isEmpty() || image.isEmpty())
        return;
    const double wide = std::min((view.width() - kFitMargin) / image.width(), 1 / backing);
    if (wide * image.height() <= kTallPicture * view.height())
        return;
    zoom = std::clamp(wide * backing, kLeastZoom, kMostZoom);
    panTo({centeredOrigin(scale()).x(), kFitMargin / 2});
}

void CanvasViewport::panTo(const QPointF &origin)
{
    if (!zoom)
        return;
    const double s = scale();
    pan = clampedOrigin(origin, s) - centeredOrigin(s);
}
