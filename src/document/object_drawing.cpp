#include "base/colors.h"
#include "base/geometry.h"
#include "document/drawable.h"
#include "document/even_digits.h"
#include "document/outline_paint.h"
#include "document/pixelation.h"
#include "document/renderer.h"
#include "document/shapes.h"
#include "document/stamps.h"
#include "document/text_block.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

// How each kind of object is drawn.

namespace Renderer {

namespace {

void drawArrow(const Annotation &a, QPainter &painter)
{
    const QPainterPath path = Shapes::arrow(a);
    if (!path.isEmpty())
        OutlinePaint::fill(painter, path, a.color);
}

void drawBox(const Annotation &a, const QPainterPath &path, QPainter &painter)
{
    const QPen pen = OutlinePaint::roundPen(a.color, a.lineWidth);
    switch (a.style) {
    case 2: // solid
        OutlinePaint::fill(painter, path, a.color);
        return;
    case 1: { // tinted
        QColor tint = a.color;
        tint.setAlphaF(0.25f);
        OutlinePaint::fill(painter, path, tint);
        OutlinePaint::stroke(painter, path, pen, OutlinePaint::Shadow::None);
        return;
    }
    default:
        OutlinePaint::stroke(painter, path, pen);
    }
}

void drawEllipse(const Annotation &a, QPainter &painter)
{
    QPainterPath oval;
    oval.addEllipse(a.rect());
    drawBox(a, oval, painter);
}

void drawLine(const Annotation &a, QPainter &painter)
{
    if (a.style == 1)
        return OutlinePaint::strokeDashes(painter, a.start, a.end, a.color, a.lineWidth);
    QPainterPath path(a.start);
    path.lineTo(a.end);
    OutlinePaint::stroke(painter, path, OutlinePaint::roundPen(a.color, a.lineWidth));
}

void drawPen(const Annotation &a, QPainter &painter)
{
    if (!a.points.isEmpty())
        OutlinePaint::strokeLines(painter, {QPolygonF(a.points)}, a.color, a.lineWidth);
}

void drawHighlight(const Annotation &a, QPainter &painter)
{
    QColor color = a.color;
    color.setAlphaF(0.45f);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(a.rect(), color);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void drawText(const Annotation &a, QPainter &painter)
{
    const TextAttributes attributes = a.textAttributes();
    const TextBlock block(a.text, designOf(attributes.font), attributes.size);
    if (a.style == 1) {
        const double radius = attributes.size * 0.25;
        OutlinePaint::fill(painter, Shapes::roundedRect(a.bounds(), radius, radius), a.color);
    }
    if (attributes.glow.isValid()) {
        const SoftShadow glow{attributes.glowBlur, attributes.glow, {}};
        // Letters may reach a little beyond their measured box.
        glow.paint(painter, outset(QRectF(a.start, block.size()), attributes.size * 0.3),
                   [&](QPainter &mask) { block.paint(mask, a.start, Qt::white); });
    }
    block.paint(painter, a.start, attributes.color);
}

void drawCallout(const Annotation &a, QPainter &painter)
{
    const bool outline = a.style == 1;
    const QPainterPath path = Shapes::callout(a);
    OutlinePaint::fill(painter, path, outline ? QColor(Qt::white) : a.color);
    if (outline)
        OutlinePaint::stroke(painter, path, OutlinePaint::roundPen(a.color, std::max(a.lineWidth * 0.6, 2.0)),
                             OutlinePaint::Shadow::None);
    if (a.text.isEmpty())
        return;
    const QColor color = outline                                  ? a.color
                         : brightnessComponentSafe(a.color) > 0.7 ? QColor(Qt::black)
                                                                  : QColor(Qt::white);
    const double size = a.textSize();
    const QRectF box = a.rect().adjusted(size * 0.5, size * 0.35, -size * 0.5, -size * 0.35);
    const TextBlock block(a.text, designOf(a.textFont()), size, std::max(box.width(), 1.0),
                          TextBlock::Alignment::Centered);
    block.paint(painter, {box.left(), box.center().y() - block.size().height() / 2}, color);
}

void drawStep(const Annotation &a, QPainter &painter)
{
    const double d = a.stepDiameter();
    QPainterPath disc;
    disc.addEllipse(a.start, d / 2, d / 2);
    OutlinePaint::fill(painter, disc, a.color);
    const QColor color = brightnessComponentSafe(a.color) > 0.75 ? Qt::black : Qt::white;
    const TextBlock label(a.style == 1 ? letters(a.number) : QString::number(a.number), Fonts::Design::System,
                          d * 0.55, QFont::ExtraBold);
    label.paint(painter, centered(label.size(), a.start), color);
}

// What objects are drawn from.
struct Ground {
    const QImage &base;
    const QImage &pixelated;
    const QList<Annotation> &all;
};

const QColor kBlurWash = QColor::fromRgbF(0.45f, 0.45f, 0.45f, 0.12f); // keeps it visible over a flat area
const QColor kBlurWithoutMosaic(115, 115, 115);

// The pixels `covered` of the picture's mosaic, in `target`.
void drawMosaic(const QRectF &target, const QImage &pixelated, const QRectF &covered, QPainter &painter)
{
    if (pixelated.isNull())
        return painter.fillRect(target, kBlurWithoutMosaic);
    painter.drawImage(target, pixelated, covered);
    painter.fillRect(target, kBlurWash);
}

// Whether an object under the blur would show through where the picture, and so its mosaic, is transparent.
bool hidesObjects(const Annotation &blur, const QRectF &covered, const QList<Annotation> &all)
{
    for (const Annotation &other : all) {
        if (other.id == blur.id)
            return false;
        if (other.kind != ToolKind::Blur && other.kind != ToolKind::Spotlight &&
            paintedRect(other).intersects(covered))
            return true;
    }
    return true;
}

void drawBlur(const Annotation &a, const Ground &ground, QPainter &painter)
{
    const QRectF covered = pixelatedPixels(a.rect(), ground.base.size());
    if (a.rect().isEmpty() || covered.isEmpty())
        return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipRect(covered, Qt::IntersectClip);
    if (ground.pixelated.hasAlphaChannel() && hidesObjects(a, covered, ground.all))
        painter.fillRect(covered, kBlurWithoutMosaic);
    drawMosaic(covered, ground.pixelated, covered, painter);
}

void drawMagnify(const Annotation &a, const Ground &ground, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (rect.isEmpty())
        return;
    QPainterPath ring;
    ring.addEllipse(rect);
    // A pixel q of the image lands at 2q − M, so the middle M stays where it is.
    const QPointF m = rect.center();
    const auto enlarged = [&m](const QRectF &part) {
        return QRectF(part.topLeft() * 2 - m, part.size() * 2);
    };
    const auto reduced = [&m](const QRectF &part) {
        return QRectF((part.topLeft() + m) / 2, part.size() / 2);
    };
    const QRectF part = rect & enlarged(QRectF(ground.base.rect()));
    if (!part.isEmpty()) {
        painter.save();
        painter.setClipPath(ring, Qt::IntersectClip);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(part, ground.base, reduced(part));
        painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
        for (const Annotation &other : ground.all) {
            const auto blur = other.kind == ToolKind::Blur ? drawable(other) : std::nullopt;
            if (!blur || blur->rect().isEmpty())
                continue;
            // A pixel more all around, with which smoothing has mixed what is hidden.
            const QRectF covered = outset(pixelatedPixels(blur->rect(), ground.base.size()), 1);
            if (const QRectF hidden = enlarged(covered) & part; !hidden.isEmpty())
                drawMosaic(hidden, ground.pixelated, reduced(hidden), painter);
        }
        painter.restore();
    }
    OutlinePaint::stroke(painter, ring, OutlinePaint::roundPen(a.color, a.lineWidth));
}

void drawMeasure(const Annotation &a, QPainter &painter)
{
    const double w = std::max(a.lineWidth * 0.4, 2.0);
    const QPointF d = a.end - a.start;
    const double length = std::max(std::hypot(d.x(), d.y()), 1.0);
    const double k = std::max(w * 4, 10.0);
    const QPointF p = QPointF(-d.y(), d.x()) / length;
    QPainterPath path(a.start);
    path.lineTo(a.end);
    for (const QPointF &point : {a.start, a.end}) {
        path.moveTo(point + p * k);
        path.lineTo(point - p * k);
    }
    painter.strokePath(path, QPen(a.color, w, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));

    const EvenDigits label(measureLabel(a), std::max(a.lineWidth * 2.6, 13.0));
    const QSizeF size = label.size();
    const QPointF corner = centered(size, (a.start + a.end) / 2);
    const QRectF pill(corner.x() - 8, corner.y() - 4, size.width() + 16, size.height() + 8);
    QColor ground = a.color;
    ground.setAlphaF(0.92f);
    painter.fillPath(Shapes::roundedRect(pill, pill.height() / 2, pill.height() / 2), ground);
    label.paint(painter, corner, Qt::white);
}

void drawImage(const Annotation &a, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (a.image.isNull() || rect.isEmpty())
        return;
    QPainterPath path;
    path.addRect(rect);
    OutlinePaint::fill(painter, path, Qt::white);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect, a.image);
}

void drawOfKind(const Annotation &a, const Ground &ground, QPainter &painter)
{
    switch (a.kind) {
    case ToolKind::Arrow:
        return drawArrow(a, painter);
    case ToolKind::Rectangle:
        return drawBox(a, Shapes::roundedRect(a.rect(), a.lineWidth, a.lineWidth), painter);
    case ToolKind::Ellipse:
        return drawEllipse(a, painter);
    case ToolKind::Line:
        return drawLine(a, painter);
    case ToolKind::Pen:
        return drawPen(a, painter);
    case ToolKind::Highlight:
        return drawHighlight(a, painter);
    case ToolKind::Text:
        return drawText(a, painter);
    case ToolKind::Callout:
        return drawCallout(a, painter);
    case ToolKind::Step:
        return drawStep(a, painter);
    case ToolKind::Stamp:
        return drawStamp(a, painter);
    case ToolKind::Blur:
        return drawBlur(a, ground, painter);
    case ToolKind::Magnify:
        return drawMagnify(a, ground, painter);
    case ToolKind::Measure:
        return drawMeasure(a, painter);
    case ToolKind::Image:
        return drawImage(a, painter);
    case ToolKind::Select:
    case ToolKind::Spotlight:
    case ToolKind::Crop:
    case ToolKind::Cutout:
        return;
    }
}

} // namespace

void drawObject(const Annotation &annotation, const QImage &base, const QImage &pixelated,
                const QList<Annotation> &all, QPainter &painter)
{
    const std::optional<Annotation> object = drawable(annotation);
    if (!object || !paintedRect(*object).intersects(visibleRect(painter)))
        return;
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawOfKind(*object, {base, pixelated, all}, painter);
    painter.restore();
}

} // namespace Renderer
