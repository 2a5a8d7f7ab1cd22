#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>

// Where a picture stands in a view: zoom, pan and the two coordinate spaces. A plain value; the rules of
// zooming and panning live here alone.
//
// View coordinates are points; image coordinates are pixels; both have their origin at the top left, y down.
// `zoom` is in device pixels for an image pixel, so 1 means 100 percent; without one the picture fits the
// view.
struct CanvasViewport {
    QSizeF view;
    QSizeF image;
    double backing = 2;    // device pixels for a point
    bool backdrop = false; // leaves room for the backdrop around the picture when fitting
    std::optional<double> zoom;
    QPointF pan; // of the picture's origin, away from the centred one, in points

    static constexpr double kLeastZoom = 0.05;
    static constexpr double kMostZoom = 8;

    // Points for an image pixel.
    double fitScale() const;
    double scale() const { return zoom ? *zoom / backing : fitScale(); }
    // The zoom in force, whether asked for or fitted.
    double displayZoom() const { return scale() * backing; }

    QPointF centeredOrigin(double scale) const;
    // Keeps at least a 40-point margin of the view in reach of the picture; one that fits stays centred.
    QPointF clampedOrigin(const QPointF &origin, double scale) const;
    // Where the picture's top left stands.
    QPointF origin() const;

    QPointF toView(const QPointF &point) const { return point * scale() + origin(); }
    QRectF toView(const QRectF &rect) const { return {toView(rect.topLeft()), rect.size() * scale()}; }
    QPointF toImage(const QPointF &point) const { return (point - origin()) / scale(); }
    QRectF toImage(const QRectF &rect) const { return {toImage(rect.topLeft()), rect.size() / scale()}; }

    // Clamps the zoom and keeps the image point under `around` where it is; nothing fits the picture.
    void setZoom(std::optional<double> newZoom, const QPointF &around);
    // Fits; a picture that would be more than three views high at the view's width starts there, at its top.
    void showFromStart();
    // Moves the picture's origin, as far as it may go. Does nothing while fitting.
    void panTo(const QPointF &origin);
    void panBy(const QPointF &delta) { panTo(origin() + delta); }
};
