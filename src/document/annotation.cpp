#include "document/annotation.h"

#include "base/colors.h"
#include "base/geometry.h"
#include "document/text_block.h"

#include <algorithm>
#include <cmath>

namespace {

// A union that also counts rectangles without width or height, as a point is one.
QRectF withPoint(const QRectF &rect, const QPointF &point)
{
    QRectF result = rect;
    result.setLeft(std::min(rect.left(), point.x()));
    result.setTop(std::min(rect.top(), point.y()));
    result.setRight(std::max(rect.right(), point.x()));
    result.setBottom(std::max(rect.bottom(), point.y()));
    return result;
}

QRectF around(const QList<QPointF> &points)
{
    if (points.isEmpty())
        return {};
    QRectF result(points.first(), QSizeF(0, 0));
    for (const QPointF &point : points)
        result = withPoint(result, point);
    return result;
}

bool movesLeft(AnnotationHandle handle)
{
    using enum AnnotationHandle;
    return handle == TopLeft || handle == BottomLeft || handle == Left;
}
bool movesRight(AnnotationHandle handle)
{
    using enum AnnotationHandle;
    return handle == TopRight || handle == BottomRight || handle == Right;
}
bool movesTop(AnnotationHandle handle)
{
    using enum AnnotationHandle;
    return handle == TopLeft || handle == TopRight || handle == Top;
}
bool movesBottom(AnnotationHandle handle)
{
    using enum AnnotationHandle;
    return handle == BottomLeft || handle == BottomRight || handle == Bottom;
}

} // namespace

TextFont Annotation::textFont() const
{
    return font >= 0 && font <= 4 ? static_cast<TextFont>(font) : TextFont::System;
}

double Annotation::textSize() const
{
    return std::max(lineWidth * 6, 14.0);
}

TextAttributes Annotation::textAttributes() const
{
    const double size = textSize();
    const double brightness = brightnessComponentSafe(color);
    if (style != 0)
        return {textFont(), size, brightness > 0.7 ? Qt::black : Qt::white, {}, 0};
    QColor glow = brightness > 0.6 ? Qt::black : Qt::white;
    glow.setAlphaF(0.8f);
    return {textFont(), size, color, glow, std::max(size * 0.12, 2.0)};
}

QRectF Annotation::rect() const
{
    return {std::min(start.x(), end.x()), std::min(start.y(), end.y()), std::abs(end.x() - start.x()),
            std::abs(end.y() - start.y())};
}

QPointF Annotation::tailPoint() const
{
    if (!points.isEmpty())
        return points.first();
    const QRectF r = rect();
    return {r.left() + r.width() * 0.25, r.bottom() + std::max(r.height() * 0.5, 30.0)};
}

QPointF Annotation::curveControl() const
{
    return {(start.x() + end.x()) / 2 - (end.y() - start.y()) * 0.3,
            (start.y() + end.y()) / 2 + (end.x() - start.x()) * 0.3};
}

double Annotation::stepDiameter() const
{
    return std::max(lineWidth * 7, 28.0);
}

QRectF Annotation::bounds() const
{
    const double lw = lineWidth;
    switch (kind) {
    case ToolKind::Arrow:
        if (style == 3)
            return outset(withPoint(rect(), curveControl()), lw * 2, lw * 2);
        return outset(rect(), lw * 0.5, lw * 0.5);
    case ToolKind::Pen:
        return points.isEmpty() ? QRectF() : outset(around(points), lw, lw);
    case ToolKind::Text: {
        const TextAttributes attributes = textAttributes();
        const QRectF written(start, TextBlock(text, designOf(attributes.font), attributes.size).size());
        return style == 1 ? outset(written, attributes.size * 0.45, attributes.size * 0.2) : written;
    }
    case ToolKind::Callout:
        return outset(withPoint(rect(), tailPoint()), lw, lw);
    case ToolKind::Step: {
        const double d = stepDiameter();
        return {start.x() - d / 2, start.y() - d / 2, d, d};
    }
    case ToolKind::Select:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Line:
    case ToolKind::Highlight:
    case ToolKind::Stamp:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Measure:
    case ToolKind::Image:
        return outset(rect(), lw * 0.5, lw * 0.5);
    }
    return {};
}

bool Annotation::isHit(const QPointF &point, double tolerance) const
{
    const QRectF r = outset(bounds(), tolerance, tolerance);
    return point.x() >= r.left() && point.x() <= r.right() && point.y() >= r.top() && point.y() <= r.bottom();
}

QList<std::pair<AnnotationHandle, QPointF>> Annotation::handles() const
{
    using enum AnnotationHandle;
    const QRectF r = rect();
    const QPointF c = r.center();
    QList<std::pair<AnnotationHandle, QPointF>> corners{{TopLeft, r.topLeft()},
                                                        {TopRight, r.topRight()},
                                                        {BottomLeft, r.bottomLeft()},
                                                        {BottomRight, r.bottomRight()}};
    const QList<std::pair<AnnotationHandle, QPointF>> edges{{Top, {c.x(), r.top()}},
                                                            {Bottom, {c.x(), r.bottom()}},
                                                            {Left, {r.left(), c.y()}},
                                                            {Right, {r.right(), c.y()}}};
    switch (kind) {
    case ToolKind::Arrow:
    case ToolKind::Line:
    case ToolKind::Measure:
        return {{Start, start}, {End, end}};
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Highlight:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
        return corners + edges;
    case ToolKind::Callout:
        return corners + edges + QList<std::pair<AnnotationHandle, QPointF>>{{Tail, tailPoint()}};
    case ToolKind::Stamp:
    case ToolKind::Image:
        return corners;
    case ToolKind::Select:
    case ToolKind::Pen:
    case ToolKind::Text:
    case ToolKind::Step:
    case ToolKind::Crop:
    case ToolKind::Cutout:
        return {};
    }
    return {};
}

std::optional<QPointF> Annotation::handlePoint(AnnotationHandle wanted) const
{
    for (const auto &[handle, point] : handles()) {
        if (handle == wanted)
            return point;
    }
    return std::nullopt;
}

void Annotation::move(AnnotationHandle handle, const QPointF &point)
{
    switch (handle) {
    case AnnotationHandle::Tail:
        points = {point};
        return;
    case AnnotationHandle::Start:
        start = point;
        return;
    case AnnotationHandle::End:
        end = point;
        return;
    case AnnotationHandle::TopLeft:
    case AnnotationHandle::TopRight:
    case AnnotationHandle::BottomLeft:
    case AnnotationHandle::BottomRight:
    case AnnotationHandle::Top:
    case AnnotationHandle::Bottom:
    case AnnotationHandle::Left:
    case AnnotationHandle::Right:
        break;
    }
    const QRectF r = rect();
    double minX = movesLeft(handle) ? point.x() : r.left();
    double maxX = movesRight(handle) ? point.x() : r.right();
    double minY = movesTop(handle) ? point.y() : r.top();
    double maxY = movesBottom(handle) ? point.y() : r.bottom();
    if ((kind == ToolKind::Stamp || kind == ToolKind::Image) && r.width() > 0 && r.height() > 0) {
        const double height = std::max(std::abs(maxX - minX), 8.0) * (r.height() / r.width());
        if (movesTop(handle))
            minY = maxY - height;
        else
            maxY = minY + height;
    }
    start = {std::min(minX, maxX), std::min(minY, maxY)};
    end = {std::max(minX, maxX), std::max(minY, maxY)};
}

void Annotation::offset(double dx, double dy)
{
    const QPointF by(dx, dy);
    start += by;
    end += by;
    for (QPointF &point : points)
        point += by;
}

bool Annotation::isMeaningful() const
{
    switch (kind) {
    case ToolKind::Arrow:
    case ToolKind::Line:
    case ToolKind::Measure:
        return std::hypot(end.x() - start.x(), end.y() - start.y()) > 6;
    case ToolKind::Pen:
        return points.size() > 1;
    case ToolKind::Text:
        return !text.isEmpty();
    case ToolKind::Step:
        return true;
    case ToolKind::Select:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Highlight:
    case ToolKind::Callout:
    case ToolKind::Stamp:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Image:
        return rect().width() > 4 && rect().height() > 4;
    }
    return false;
}

namespace StampLibrary {

const QStringList &symbols()
{
    static const QStringList list{
        "sym:checkmark.circle.fill",
        "sym:xmark.circle.fill",
        "sym:exclamationmark.triangle.fill",
        "sym:questionmark.circle.fill",
        "sym:info.circle.fill",
        "sym:star.fill",
        "sym:heart.fill",
        "sym:hand.thumbsup.fill",
        "sym:hand.thumbsdown.fill",
        "sym:lightbulb.fill",
        "sym:flag.fill",
        "sym:lock.fill",
        "sym:bolt.fill",
        "sym:bell.fill",
        "sym:cursorarrow",
        "sym:cursorarrow.click.2",
        "sym:hand.point.up.left.fill",
        "sym:arrow.up.circle.fill",
        "sym:arrow.down.circle.fill",
        "sym:arrow.left.circle.fill",
        "sym:arrow.right.circle.fill",
    };
    return list;
}

const QStringList &emoji()
{
    static const QStringList list{"emoji:👍", "emoji:✅", "emoji:❌", "emoji:⚠️",  "emoji:🔥", "emoji:🎉",
                                  "emoji:👀", "emoji:💡", "emoji:🐛", "emoji:❓", "emoji:⭐️", "emoji:🚀"};
    return list;
}

const QStringList &keys()
{
    static const QStringList list{"key:⌘", "key:⌥", "key:⇧", "key:⌃",     "key:↩",
                                  "key:⎋", "key:⇥", "key:⌫", "key:Space", "key:Fn"};
    return list;
}

} // namespace StampLibrary
