#pragma once

#include "document/tool_kind.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>
#include <utility>

// The faces of text objects, with the numbers that projects store.
enum class TextFont { System = 0, Rounded = 1, Serif = 2, Mono = 3, Marker = 4 };

enum class AnnotationHandle {
    Start,
    End,
    Tail,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight,
    Top,
    Bottom,
    Left,
    Right,
};

// How a `text` object is written.
struct TextAttributes {
    TextFont font = TextFont::System;
    double size = 14; // pixels
    QColor color;
    // The soft halo that keeps plain text readable: no offset; none when `glow` is invalid.
    QColor glow;
    double glowBlur = 0; // pixels
};

// One object on a picture, whichever tool made it: a plain value. Coordinates are image pixels, origin top
// left, y down. What `start`, `end`, `points`, `text`, `number` and `style` mean depends on `kind`.
struct Annotation {
    QUuid id; // survives edits; selection and replacement go by it
    ToolKind kind = ToolKind::Arrow;
    QPointF start;         // first corner, start of a line, or the anchor of `text` and `step`
    QPointF end;           // opposite corner or end of a line; equals `start` for `text` and `step`
    QList<QPointF> points; // the stroke of `pen`; the aimed tip of a `callout`'s tail, at most one
    QColor color;
    double lineWidth = 6; // also sets the size of text
    QString
        text; // of `text` and `callout`; the value of a `stamp`: "sym:", "emoji:" or "key:" and what follows
    int number = 0; // of `step`
    int style = 0;  // index into Tools::styles(kind)
    int font = 0;   // number of a TextFont; kept as it was loaded
    QImage image;   // of `image`; null otherwise
    // Of an `image` whose picture is too large to be shown, or damaged: the file as it came, for the next
    // save. Empty otherwise.
    QByteArray unshownImage = {};

    bool operator==(const Annotation &) const = default;

    // The face that `font` names; System for a number that names none.
    TextFont textFont() const;
    // The size of text in `text` and `callout`.
    double textSize() const;
    TextAttributes textAttributes() const;
    // The normalised rectangle of `start` and `end`.
    QRectF rect() const;
    // The tip of a callout's tail.
    QPointF tailPoint() const;
    // The control point of a curved arrow.
    QPointF curveControl() const;
    // The diameter of a step's disc.
    double stepDiameter() const;

    // What selection and hit testing go by. Text is measured anew.
    QRectF bounds() const;
    bool isHit(const QPointF &point, double tolerance) const;
    // Drag handles and where they lie, in the order in which they are tested.
    QList<std::pair<AnnotationHandle, QPointF>> handles() const;
    // Where one of them lies; nothing when the object has no such handle.
    std::optional<QPointF> handlePoint(AnnotationHandle wanted) const;
    // Drags a handle to a point. A box stays normalised, and flips when an edge passes the opposite one.
    // Stamps and images keep their aspect.
    void move(AnnotationHandle handle, const QPointF &point);
    void offset(double dx, double dy);
    // Whether a freshly drawn object is worth keeping.
    bool isMeaningful() const;
};

// Stamp values, prefixed with the way they are drawn.
namespace StampLibrary {
const QStringList &symbols();
const QStringList &emoji();
const QStringList &keys();
} // namespace StampLibrary

// The colours of the platform's palette that the rules name.
namespace SystemColors {
inline QColor red()
{
    return QColor(255, 59, 48);
}
inline QColor yellow()
{
    return QColor(255, 204, 0);
}
} // namespace SystemColors
