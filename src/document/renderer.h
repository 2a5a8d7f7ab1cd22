#pragma once

#include "document/annotation.h"

#include <QImage>
#include <QList>
#include <QPainterPath>
#include <QRectF>
#include <QString>

class QPainter;

// Paints a picture and its objects. The live canvas and flat pictures go through the same code, so what is
// seen is what is exported. Stateless; callable from any thread.
//
// The painter's plane is the image: pixels, origin top left, y down. Any scale may lie under it.
namespace Renderer {

// The picture, the dimming around spotlights, then all other objects, bottom first. `pixelated` is the
// pixelated copy of `base`; it may be null when no object is a `blur`. Without it what a blur covers is grey.
void draw(const QImage &base, const QImage &pixelated, const QList<Annotation> &annotations,
          QPainter &painter);

// The steps of `draw`, for a canvas that keeps its layers apart.
void drawBase(const QImage &base, QPainter &painter);
// One layer of dimming with a hole for every spotlight among the objects; nothing without one.
void drawSpotlights(const QSizeF &imageSize, const QList<Annotation> &annotations, QPainter &painter);
// Any object but a spotlight, which paints nothing here. `all` are the picture's objects, bottom first: what
// their blurs hide stays hidden in a magnifier too, wherever in the order they are.
void drawObject(const Annotation &annotation, const QImage &base, const QImage &pixelated,
                const QList<Annotation> &all, QPainter &painter);

// Everything that an object paints, shadows included, lies in this rectangle. Empty for what paints nothing.
QRectF paintedRect(const Annotation &annotation);

// The picture with its objects as a new bitmap (ARGB32_Premultiplied) of the base's size; the base itself
// when there is no memory for it.
QImage flattened(const QImage &base, const QImage &pixelated, const QList<Annotation> &annotations);

QImage pixelated(const QImage &base);

// The outline of a callout, body and tail in one.
QPainterPath calloutPath(const Annotation &annotation);
// The letters of a step's number: A to Z, then AA, AB and so on. Below 2 all are "A".
QString letters(int number);
// The text of a measurement: "100 px", or "50 px  (30 × 40)" when it is slanted.
QString measureLabel(const Annotation &annotation);

} // namespace Renderer
