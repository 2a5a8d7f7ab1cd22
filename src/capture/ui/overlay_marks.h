#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QRegion>
#include <QString>
#include <optional>

class QPainter;

// What the selection overlay shows over the picture of its display, and where. All lengths and places are
// points in the view, origin at the top left; `scale` is the picture's pixels for a point.
struct OverlayMarks {
    struct Loupe {
        QRectF circle;
        QImage crop; // 15 by 15 pixels around the pointer
        QRectF badge;
        QString text; // coordinates and colour of the pixel under the pointer
        bool operator==(const Loupe &) const = default;
    };
    struct Badge {
        QRectF rect;
        QString text;
        bool operator==(const Badge &) const = default;
    };

    std::optional<QRectF> hole; // what shows at full brightness
    std::optional<Badge> size;  // of the hole, in pixels
    std::optional<QPointF> crosshair;
    std::optional<Badge> hint;
    std::optional<Loupe> loupe;

    bool operator==(const OverlayMarks &) const = default;
};

// Lays the marks out in a view of `view` points over `picture`.
class OverlayLayout {
public:
    OverlayLayout(const QSizeF &view, const QImage &picture);

    double scale() const { return m_scale; }
    // Whole pixels of the picture under the rectangle, rounded outwards; may reach beyond the picture.
    QRect pixels(const QRectF &rect) const;
    // "W × H" of the hole: above its left corner, under it where there is no room, inside it where there is
    // none either.
    OverlayMarks::Badge sizeBadge(const QRectF &hole) const;
    OverlayMarks::Badge hint(const QString &text) const;
    // Below and right of the pointer, turned over at the right and the bottom edge. None within 7 pixels of
    // the picture's edges.
    std::optional<OverlayMarks::Loupe> loupe(const QPointF &pointer) const;

private:
    QRectF keptInside(const QRectF &rect) const;

    QSizeF m_view;
    const QImage &m_picture;
    double m_scale;
};

namespace OverlayDrawing {

// Lines of one device pixel and more are laid on whole device pixels, so that they stay sharp: `device` is
// the device's pixels for a point.
QRegion crosshairRegion(const QPointF &pointer, const QSize &view, double device);
// What must be painted anew when the marks change.
QRegion difference(const OverlayMarks &from, const OverlayMarks &to, const QSize &view, double device);

void drawHoleBorder(QPainter &painter, const QRectF &hole);
void drawBadge(QPainter &painter, const OverlayMarks::Badge &badge);
void drawHint(QPainter &painter, const OverlayMarks::Badge &hint);
// Only the dashes in the `visible` part.
void drawCrosshair(QPainter &painter, const QPointF &pointer, const QSize &view, double device,
                   const QRectF &visible);
void drawLoupe(QPainter &painter, const OverlayMarks::Loupe &loupe);

} // namespace OverlayDrawing
