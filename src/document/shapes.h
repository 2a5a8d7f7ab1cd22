#pragma once

#include "document/annotation.h"

#include <QPainterPath>

// The outlines of objects as filled paths, in image pixels. Each is one area: parts that overlap count once,
// so that a translucent colour stays even.
namespace Shapes {

// Shaft and head of an arrow in its style; empty for one too short to be drawn.
QPainterPath arrow(const Annotation &annotation);

// Body and tail of a callout as one outline without an inner seam.
QPainterPath callout(const Annotation &annotation);

// A rounded rectangle whose corner radii never exceed half a side.
QPainterPath roundedRect(const QRectF &rect, double rx, double ry);

} // namespace Shapes
