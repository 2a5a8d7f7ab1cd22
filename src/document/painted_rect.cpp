#include "base/geometry.h"
#include "document/drawable.h"
#include "document/outline_paint.h"
#include "document/renderer.h"
#include "document/stamps.h"
#include "document/text_block.h"

#include <algorithm>

// How far each kind of object reaches.

namespace Renderer {

namespace {

// How far the ink of an object reaches beyond the rectangle of its points.
double inkReach(const Annotation &a)
{
    const double lw = a.lineWidth;
    switch (a.kind) {
    case ToolKind::Arrow:
        return std::max(lw * 4, 18.0);
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Magnify:
    case ToolKind::Callout:
        return std::max(lw, 2.0);
    case ToolKind::Text:
        return a.textSize() * 0.5;
    case ToolKind::Stamp:
    case ToolKind::Select:
    case ToolKind::Highlight:
    case ToolKind::Step:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Crop:
    case ToolKind::Cutout:
    case ToolKind::Measure:
    case ToolKind::Image:
        return 0;
    }
    return 0;
}

} // namespace

QRectF paintedRect(const Annotation &annotation)
{
    const std::optional<Annotation> object = drawable(annotation);
    if (!object)
        return {};
    const Annotation &a = *object;
    const double shadow = OutlinePaint::commonShadow.reach();
    switch (a.kind) {
    case ToolKind::Select:
    case ToolKind::Crop:
    case ToolKind::Cutout:
        return {};
    case ToolKind::Highlight:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
        return outset(a.rect(), 1);
    case ToolKind::Measure: {
        // The pill is at most as wide as its longest possible text.
        const double size = std::max(a.lineWidth * 2.6, 13.0);
        const QPointF m = (a.start + a.end) / 2;
        const QSizeF pill(size * 0.75 * measureLabel(a).size() + 20, size * 2 + 10);
        const double ticks = std::max(a.lineWidth * 0.4 * 4, 10.0) + a.lineWidth;
        return outset(a.rect(), ticks) | QRectF(centered(pill, m), pill);
    }
    case ToolKind::Callout: {
        QRectF all = a.bounds();
        if (!a.text.isEmpty()) { // which may overflow its box above and below
            const double size = a.textSize();
            const TextBlock block(a.text, designOf(a.textFont()), size,
                                  std::max(a.rect().width() - size, 1.0), TextBlock::Alignment::Centered);
            QRectF text(0, 0, std::max(a.rect().width(), size * 2), block.size().height() + size);
            text.moveCenter(a.rect().center());
            all |= text;
        }
        return outset(all, inkReach(a) + shadow);
    }
    case ToolKind::Stamp:
        return outset(stampInk(a), shadow);
    case ToolKind::Arrow:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Text:
    case ToolKind::Step:
    case ToolKind::Magnify:
    case ToolKind::Image:
        return outset(a.bounds(), inkReach(a) + shadow);
    }
    return {};
}

} // namespace Renderer
