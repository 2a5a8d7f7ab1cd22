#include "editor/drag_shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kPlacedShare = 0.4; // of the shorter side that is seen
constexpr double kPlacedHeight = 0.6; // of its width
constexpr double kLeastPlaced = 24;  // image pixels

// The size of a callout that was clicked instead of drawn.
QPointF defaultCallout(const QPointF &start, double imageWidth)
{
    const double width = std::max(imageWidth * 0.18, 220.0);
    return start + QPointF(width, width * 0.45);
}

// The box of a stamp that was clicked instead of drawn, centred on the click.
QRectF defaultStamp(const QPointF &center, const QString &value, const QSize &image)
{
    const double height = std::max(std::min(image.width(), image.height()) * 0.08, 48.0);
    const bool wideKey = value.startsWith("key:") && value.size() - 4 >= 3;
    const QSizeF size(wideKey ? height * 2.2 : height, height);
    return {center - QPointF(size.width(), size.height()) / 2, size};
}

void normalize(Annotation &annotation)
{
    const QRectF rect = annotation.rect();
    annotation.start = rect.topLeft();
    annotation.end = rect.bottomRight();
}

} // namespace

QPointF constrained(const QPointF &a, const QPointF &b, ToolKind kind)
{
    const QPointF d = b - a;
    switch (kind) {
    case ToolKind::Arrow:
    case ToolKind::Line:
    case ToolKind::Measure: {
        constexpr double kEighth = std::numbers::pi / 4;
        const double angle = std::round(std::atan2(d.y(), d.x()) / kEighth) * kEighth;
        const double length = std::hypot(d.x(), d.y());
        return a + QPointF(std::cos(angle), std::sin(angle)) * length;
    }
    case ToolKind::Pen:
        return b;
    case ToolKind::Select:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Highlight:
    case ToolKind::Text:
    case ToolKind::Callout:
    case ToolKind::Step:
    case ToolKind::Stamp:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Image:
        break;
    }
    const double side = std::max(std::abs(d.x()), std::abs(d.y()));
    return a + QPointF(d.x() < 0 ? -side : side, d.y() < 0 ? -side : side);
}

Annotation placed(Annotation draft, const QPointF &center, const QSizeF &visible)
{
    const double width = std::max(std::min(visible.width(), visible.height()) * kPlacedShare, kLeastPlaced);
    const auto around = [&](double w, double h) {
        draft.start = center - QPointF(w, h) / 2;
        draft.end = center + QPointF(w, h) / 2;
    };
    switch (draft.kind) {
    case ToolKind::Arrow:
    case ToolKind::Line:
    case ToolKind::Measure:
        around(width, 0);
        break;
    case ToolKind::Pen: {
        around(width, 0);
        draft.points.clear();
        constexpr int kSteps = 24;
        for (int i = 0; i <= kSteps; ++i) {
            const double along = double(i) / kSteps;
            draft.points.append(draft.start +
                                QPointF(width * along, std::sin(along * 2 * std::numbers::pi) * width / 8));
        }
        break;
    }
    case ToolKind::Highlight:
        around(width, width / 4);
        break;
    case ToolKind::Callout: {
        const QPointF size = defaultCallout({}, visible.width());
        around(size.x(), size.y());
        break;
    }
    case ToolKind::Text:
    case ToolKind::Step:
    case ToolKind::Stamp:
        draft.start = draft.end = center;
        break;
    case ToolKind::Select:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Image:
        around(width, width * kPlacedHeight);
        break;
    }
    return draft;
}

std::optional<Annotation> drawn(Annotation draft, const QSize &image)
{
    const bool isCallout = draft.kind == ToolKind::Callout;
    const bool isStamp = draft.kind == ToolKind::Stamp;
    if (isCallout && !draft.isMeaningful())
        draft.end = defaultCallout(draft.start, image.width());
    if (isStamp && !draft.isMeaningful()) {
        const QRectF box = defaultStamp(draft.start, draft.text, image);
        draft.start = box.topLeft();
        draft.end = box.bottomRight();
    }
    if (!draft.isMeaningful())
        return std::nullopt;
    if (isCallout || isStamp)
        normalize(draft);
    return draft;
}
