#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QTransform>
#include <functional>

class QPainter;

// A shape's blurred shadow. `blur` is the distance over which it fades, in the painter's coordinates: twice
// the standard deviation of the Gaussian.
struct SoftShadow {
    double blur = 0;
    QColor color;
    QPointF offset;

    // Paints the shadow of what `shape` paints inside `bounds` (painter's coordinates). Only `shape`'s
    // opacity counts. Nothing beyond the painter's clip is computed.
    void paint(QPainter &painter, const QRectF &bounds, const std::function<void(QPainter &)> &shape) const;
    // The same for a shape that fills an empty mask (Format_Alpha8) itself; the transform leads from the
    // painter's coordinates to the mask's pixels.
    using MaskFiller = std::function<void(QImage &mask, const QTransform &toMask)>;
    void paintMask(QPainter &painter, const QRectF &bounds, const MaskFiller &shape) const;

    // The same for a rounded rectangle of `radius`, cheap for a large one: only corners and edges are
    // computed, and stretched between. `inside` says whether the part that the rectangle itself covers is
    // painted too.
    enum class Inside { Painted, LeftOut };
    void paintFrame(QPainter &painter, const QRectF &frame, double radius, Inside inside) const;

    // How far the shadow reaches beyond the shape, without the offset.
    double reach() const { return blur * 1.5 + 1; }
};

// Blurs an alpha mask (Format_Alpha8) in place by a Gaussian of `sigma` pixels; outside the mask nothing is
// covered.
void blurMask(QImage &mask, double sigma);

// The part of its plane that the painter can still change, in its own coordinates.
QRectF visibleRect(const QPainter &painter);
