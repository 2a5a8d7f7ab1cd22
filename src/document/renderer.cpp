#include "document/renderer.h"

#include "document/drawable.h"
#include "document/pixelation.h"
#include "document/shapes.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace Renderer {

namespace {

// Below this scale a picture is averaged rather than interpolated.
constexpr double kSmallestInterpolated = 0.75;

} // namespace

void draw(const QImage &base, const QImage &pixelated, const QList<Annotation> &annotations,
          QPainter &painter)
{
    drawBase(base, painter);
    drawSpotlights(base.size(), annotations, painter);
    for (const Annotation &annotation : annotations)
        drawObject(annotation, base, pixelated, annotations, painter);
}

void drawBase(const QImage &base, QPainter &painter)
{
    painter.save();
    const QTransform device = painter.deviceTransform();
    const QRectF whole(QPointF(), QSizeF(base.size()));
    if (device.type() <= QTransform::TxScale &&
        std::max(device.m11(), device.m22()) < kSmallestInterpolated) {
        // Interpolation between neighbours alone would skip rows; every pixel has its share in a smaller
        // picture.
        const QRect target = device.mapRect(whole).toAlignedRect();
        painter.setWorldTransform(device.inverted() * painter.worldTransform());
        painter.drawImage(target.topLeft(),
                          base.scaled(target.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    } else {
        // From the double on, the pixels themselves are what one wants to see.
        painter.setRenderHint(QPainter::SmoothPixmapTransform, device.m11() < 2 || device.m22() < 2);
        painter.drawImage(whole, base);
    }
    painter.restore();
}

void drawSpotlights(const QSizeF &imageSize, const QList<Annotation> &annotations, QPainter &painter)
{
    const QRectF whole(QPointF(), imageSize);
    QPainterPath path;
    path.addRect(whole);
    bool any = false;
    for (const Annotation &annotation : annotations) {
        if (annotation.kind != ToolKind::Spotlight)
            continue;
        if (const auto spotlight = drawable(annotation)) {
            any = true;
            path.addPath(Shapes::roundedRect(spotlight->rect(), 16, 16));
        }
    }
    if (!any)
        return;
    path.setFillRule(Qt::OddEvenFill);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(whole, Qt::IntersectClip);
    painter.fillPath(path, QColor::fromRgbF(0, 0, 0, 0.6f));
    painter.restore();
}

QImage flattened(const QImage &base, const QImage &pixelated, const QList<Annotation> &annotations)
{
    QImage result = base.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.detach();
    if (result.isNull())
        return base;
    QPainter painter(&result);
    drawSpotlights(base.size(), annotations, painter);
    for (const Annotation &annotation : annotations)
        drawObject(annotation, base, pixelated, annotations, painter);
    return result;
}

QImage pixelated(const QImage &base)
{
    return ::pixelated(base);
}

QPainterPath calloutPath(const Annotation &annotation)
{
    const auto object = drawable(annotation);
    return object ? Shapes::callout(*object) : QPainterPath();
}

QString letters(int number)
{
    QString result;
    int n = std::max(number, 1);
    while (n > 0) {
        --n;
        result.prepend(QChar('A' + n % 26));
        n /= 26;
    }
    return result;
}

QString measureLabel(const Annotation &annotation)
{
    const double dx = std::abs(annotation.end.x() - annotation.start.x());
    const double dy = std::abs(annotation.end.y() - annotation.start.y());
    const auto whole = [](double value) { return QString::number(std::round(value), 'f', 0); };
    const QString distance = whole(std::hypot(dx, dy)) + " px";
    if (dx > 2 && dy > 2)
        return distance + QString::fromUtf8("  (%1 × %2)").arg(whole(dx), whole(dy));
    return distance;
}

} // namespace Renderer
