#include "editor/canvas_chrome.h"

#include "base/colors.h"
#include "base/geometry.h"
#include "editor/texts.h"
#include "ui/theme.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace {

constexpr double kSelectionOutset = 4;
constexpr double kHandleSide = 9;
constexpr double kChromeWidth = 1.5;
constexpr double kAimRadius = 12, kAimReach = 20;
constexpr double kAimLabel = 80; // room for its words
const QColor kSystemBlue(0, 122, 255);
const QColor kSystemRed(255, 59, 48);

QPen dashed(const QColor &color, double width, double on, double off)
{
    QPen pen(color, width);
    pen.setDashPattern({on / width, off / width});
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

QString bandLabel(const CanvasPainter::Scene &scene)
{
    const auto pixels = [](double value) { return QString::number(qRound(value)); };
    switch (scene.bandKind) {
    case CanvasInteraction::BandKind::TextArea:
        return EditorTexts::tr("Copy text in this area");
    case CanvasInteraction::BandKind::Crop:
        return QStringLiteral("%1 × %2").arg(pixels(scene.band->width()), pixels(scene.band->height()));
    case CanvasInteraction::BandKind::Cutout:
        return EditorTexts::tr("Remove %1 px")
            .arg(pixels(scene.cutsColumns ? scene.band->width() : scene.band->height()));
    }
    return {};
}

void drawLabel(QPainter &painter, const QSizeF &view, const QPointF &topLeft, const QString &text)
{
    const QFont font = Theme::font(Theme::Type::Caption, QFont::DemiBold);
    const QFontMetricsF metrics(font);
    QRectF pill(topLeft, QSizeF(Theme::tabularWidth(font, text) + 10, metrics.height() + 4));
    // Under a band that reaches the lower edge there is no room.
    pill.moveTop(std::min(pill.top(), view.height() - pill.height() - 4));
    pill.moveLeft(std::clamp(pill.left(), 4.0, std::max(4.0, view.width() - pill.width() - 4)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.75f));
    painter.drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
    painter.setPen(Qt::white);
    painter.setFont(font);
    Theme::drawTabular(painter, pill.adjusted(5, 2, -5, -2), Qt::AlignLeft, text);
}

void drawBandOutline(const CanvasPainter::Scene &scene, QPainter &painter)
{
    const QRectF band = scene.imageToView().mapRect(*scene.band);
    const bool crop = scene.bandKind == CanvasInteraction::BandKind::Crop;
    painter.setPen(crop ? QPen(Qt::white, kChromeWidth) : dashed(kSystemRed, kChromeWidth, 6, 4));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(band);
    drawLabel(painter, scene.viewport.view, {band.left() + 4, band.bottom() + 6}, bandLabel(scene));
}

} // namespace

void CanvasChrome::drawBand(const CanvasPainter::Scene &scene, QPainter &painter)
{
    const QRectF band = scene.imageToView().mapRect(*scene.band);
    switch (scene.bandKind) {
    case CanvasInteraction::BandKind::TextArea: {
        QColor fill = kSystemBlue;
        fill.setAlphaF(0.2f);
        painter.fillRect(band, fill);
        break;
    }
    case CanvasInteraction::BandKind::Crop: {
        QPainterPath outside;
        outside.setFillRule(Qt::OddEvenFill);
        outside.addRect(scene.imageToView().mapRect(QRectF(scene.base.rect())));
        outside.addRect(band);
        painter.fillPath(outside, QColor::fromRgbF(0, 0, 0, 0.55f));
        break;
    }
    case CanvasInteraction::BandKind::Cutout: {
        QColor fill = kSystemRed;
        fill.setAlphaF(0.3f);
        painter.fillRect(band, fill);
        break;
    }
    }
    drawBandOutline(scene, painter);
}

void CanvasChrome::drawSelection(const CanvasPainter::Scene &scene, QPainter &painter)
{
    const QTransform toView = scene.imageToView();
    const QColor accent = brandColor();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(dashed(accent, kChromeWidth, 4, 3));
    painter.drawRect(outset(toView.mapRect(scene.selected->bounds()), kSelectionOutset));
    painter.setPen(QPen(accent, kChromeWidth));
    for (const auto &[handle, point] : scene.selected->handles()) {
        QRectF knob(0, 0, kHandleSide, kHandleSide);
        knob.moveCenter(toView.map(point));
        painter.setBrush(handle == AnnotationHandle::Tail ? accent : QColor(Qt::white));
        const bool round = handle == AnnotationHandle::Start || handle == AnnotationHandle::End ||
                           handle == AnnotationHandle::Tail;
        if (round)
            painter.drawEllipse(knob);
        else
            painter.drawRect(knob);
    }
}

QRectF CanvasChrome::aimRect(const CanvasPainter::Scene &scene)
{
    const QPointF at = scene.imageToView().map(*scene.aim);
    return QRectF(at, QSizeF(0.01, 0.01)).adjusted(-kAimReach, -kAimReach, kAimReach + kAimLabel, kAimReach);
}

void CanvasChrome::drawAim(const CanvasPainter::Scene &scene, QPainter &painter)
{
    const QPointF at = scene.imageToView().map(*scene.aim);
    painter.setRenderHint(QPainter::Antialiasing);
    // The ring shows the colour; its edges read on any other.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 8));
    painter.drawEllipse(at, kAimRadius, kAimRadius);
    painter.setPen(QPen(Qt::white, 6));
    painter.drawEllipse(at, kAimRadius, kAimRadius);
    painter.setPen(QPen(scene.aimedColor, 4));
    painter.drawEllipse(at, kAimRadius, kAimRadius);
    drawLabel(painter, scene.viewport.view, at + QPointF(kAimReach, -8), scene.aimedColor.name().toUpper());
}
