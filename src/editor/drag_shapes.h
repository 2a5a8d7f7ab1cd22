#pragma once

#include "document/annotation.h"

#include <QSize>
#include <optional>

// What a drag with a tool makes of an object.

// The Shift rule for a drag from `a` to `b`: lines keep their length and snap to 45 degrees, a pen is free,
// all others become square.
QPointF constrained(const QPointF &a, const QPointF &b, ToolKind kind);

// An object of a usual size for a picture of which `visible` is seen, around `center`, for who draws without
// a pointer.
Annotation placed(Annotation draft, const QPointF &center, const QSizeF &visible);

// The object at the drag's end: a callout or stamp that was clicked instead of drawn takes its usual size,
// for a picture of `image` pixels. Nothing for what is too small to have been meant.
std::optional<Annotation> drawn(Annotation draft, const QSize &image);
