#include "base/colors.h"
#include "base/geometry.h"
#include "document/drawable.h"
#include "document/even_digits.h"
#include "document/ink.h"
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
        Ink::fill(painter, path, a.color);
}

void drawBox(const Annotation &a, const QPainterPath &path, QPainter &painter)
{
    const QPen pen = Ink::roundPen(a.color, a.lineWidth);
    switch (a.style) {
    case 2: // solid
        Ink::fill(painter, path, a.color);
        return;
    case 1: { // tinted
        QColor tint = a.color;
        tint.setAlphaF(0.25f);
        Ink::fill(painter, path, tint);
        Ink::stroke(painter, path, pen, Ink::Shadow::None);
        return;
    }
    default:
        Ink::stroke(painter, path, pen);
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
        return Ink::strokeDashes(painter, a.start, a.end, a.color, a.lineWidth);
    QPainterPath path(a.start);
    path.lineTo(a.end);
    Ink::stroke(painter, path, Ink::roundPen(a.color, a.lineWidth));
}

void drawPen(const Annotation &a, QPainter &painter)
{
    if (!a.points.isEmpty())
        Ink::strokeLines(painter, {QPolygonF(a.points)}, a.color, a.lineWidth);
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
        Ink::fill(painter, Shapes::roundedRect(a.bounds(), radius, radius), a.color);
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
    Ink::fill(painter, path, outline ? QColor(Qt::white) : a.color);
    if (outline)
        Ink::stroke(painter, path, Ink::roundPen(a.color, std::max(a.lineWidth * 0.6, 2.0)),
                    Ink::Shadow::None);
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
    Ink::fill(painter, disc, a.color);
    const QColor color = brightnessComponentSafe(a.color) > 0.75 ? Qt::black : Qt::white;
    const TextBlock label(a.style == 1 ? letters(a.number) : QString::number(a.number), Fonts::Design::System,
                          d * 0.55, QFont::ExtraBold);
    label.paint(painter, centered(label.size(), a.start), color);
}

void drawBlur(const Annotation &a, const QImage &pixelated, const QSizeF &size, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (rect.isEmpty() || pixelated.isNull())
        return;
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.drawImage(QRectF(QPointF(), size), pixelated);
    painter.fillRect(rect, QColor::fromRgbF(0.45f, 0.45f, 0.45f, 0.12f)); // keeps it visible over a flat area
}

void drawMagnify(const Annotation &a, const QImage &base, QPainter &painter)
{
    const QRectF rect = a.rect();
    if (rect.isEmpty())
        return;
    QPainterPath ring;
    ring.addEllipse(rect);
    // A pixel q of the image lands at 2q − M, so the middle M stays where it is.
    const QPointF m = rect.center();
    const QRectF all(-m.x(), -m.y(), 2.0 * base.width(), 2.0 * base.height());
    const QRectF part = rect & all;
    if (!part.isEmpty()) {
        painter.save();
        painter.setClipPath(ring, Qt::IntersectClip);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(part, base, QRectF((part.topLeft() + m) / 2, part.size() / 2));
        painter.restore();
    }
    Ink::stroke(painter, ring, Ink::roundPen(a.color, a.lineWidth));
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
    Ink::fill(painter, path, Qt::white);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect, a.image);
}

void drawOfKind(const Annotation &a, const QImage &base, const QImage &pixelated, QPainter &painter)
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
        return drawBlur(a, pixelated, base.size(), painter);
    case ToolKind::Magnify:
        return drawMagnify(a, base, painter);
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

void drawObject(const Annotation &annotation, const QImage &base, const QImage &pixelated, QPainter &painter)
{
    const std::optional<Annotation> object = drawable(annotation);
    if (!object || !paintedRect(*object).intersects(visibleRect(painter)))
        return;
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawOfKind(*object, base, pixelated, painter);
    painter.restore();
}

} // namespace Renderer
