#include "document/effects.h"

#include "document/shapes.h"
#include "document/soft_shadow.h"
#include "document/texts.h"

#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kBorderWidth = 8;
constexpr double kCornerRadius = 24;
constexpr int kShadowMargin = 60;
constexpr double kShadowOffset = 12;
constexpr double kShadowBlur = 40;

QColor rgb(double r, double g, double b)
{
    return QColor::fromRgbF(static_cast<float>(r), static_cast<float>(g), static_cast<float>(b));
}

} // namespace

const QList<Effects::Backdrop> &Effects::backdrops()
{
    static const QList<Backdrop> list{
        {DocumentTexts::tr("Indigo"), rgb(0.34, 0.40, 0.98), rgb(0.66, 0.32, 0.96)},
        {DocumentTexts::tr("Sunset"), rgb(0.98, 0.45, 0.35), rgb(0.98, 0.76, 0.33)},
        {DocumentTexts::tr("Ocean"), rgb(0.10, 0.62, 0.85), rgb(0.22, 0.85, 0.70)},
        {DocumentTexts::tr("Mint"), rgb(0.62, 0.93, 0.75), rgb(0.85, 0.97, 0.65)},
        {DocumentTexts::tr("Graphite"), rgb(0.20, 0.20, 0.20), rgb(0.42, 0.42, 0.42)},
    };
    return list;
}

const Effects::Backdrop &Effects::backdropGradient(int style)
{
    return backdrops()[std::clamp(style, 0, static_cast<int>(backdrops().size()) - 1)];
}

QImage Effects::applied(const QImage &flattened) const
{
    if (isPlain() || flattened.isNull())
        return flattened;
    const double b = border ? kBorderWidth : 0;
    const double w = flattened.width() + 2 * b;
    const double h = flattened.height() + 2 * b;
    const double m = backdrop ? std::floor(std::max(w, h) * 0.08) : shadow ? kShadowMargin : 0;
    QImage canvas(static_cast<int>(w + 2 * m), static_cast<int>(h + 2 * m),
                  QImage::Format_ARGB32_Premultiplied);
    if (canvas.isNull())
        return flattened;

    const double r = rounded || backdrop ? kCornerRadius : 0;
    const QRectF frame(m, m, w, h);
    const QPainterPath framePath = Shapes::roundedRect(frame, r, r);
    const bool castsShadow = shadow || backdrop;
    const QColor frameColor = border ? borderColor : QColor(Qt::white);
    // What an opaque frame covers anyway needs no ground.
    const bool opaqueFrame = castsShadow && frameColor.alpha() == 255;
    const QRect covered = opaqueFrame ? frame.adjusted(r, r, -r, -r).toRect() & canvas.rect() : QRect();

    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setClipRegion(QRegion(canvas.rect()) - covered);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (backdrop) {
        const Backdrop &colors = backdropGradient(backdropStyle);
        QLinearGradient gradient(0, 0, canvas.width(), canvas.height());
        gradient.setColorAt(0, colors.first);
        gradient.setColorAt(1, colors.second);
        painter.fillRect(canvas.rect(), gradient);
    } else {
        painter.fillRect(canvas.rect(), Qt::transparent);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (castsShadow) {
        const SoftShadow cast{kShadowBlur, QColor::fromRgbF(0, 0, 0, 0.45f), {0, kShadowOffset}};
        cast.paintFrame(painter, frame, r,
                        opaqueFrame ? SoftShadow::Inside::LeftOut : SoftShadow::Inside::Painted);
    }
    painter.setClipping(false);
    if (castsShadow)
        painter.fillPath(framePath, frameColor);
    if (border && !opaqueFrame) // a second coat of an opaque colour only hardens its edge
        painter.fillPath(framePath, borderColor);

    const double inner = std::max(r - b, 0.0);
    const QRectF place = frame.adjusted(b, b, -b, -b);
    if (inner <= 0) {
        painter.drawImage(place.topLeft(), flattened);
    } else {
        QBrush picture(flattened);
        picture.setTransform(QTransform::fromTranslate(place.x(), place.y()));
        painter.fillPath(Shapes::roundedRect(place, inner, inner), picture);
    }
    painter.end();
    return canvas;
}
