#pragma once

#include "capture/scroll_step.h"

#include <QImage>
#include <QList>
#include <QRect>

// What stands over the content while it scrolls below, away from the edges of the region.
namespace FloatingParts {

// Rectangles of a frame, with what they shade around them, among the columns from `left` to `end`.
QList<QRect> find(const QList<QImage> &frames, const QList<ScrollStep> &steps, int left, int end);

// Whether one hides rows that are in neither the frame before nor, after a step as long, the next one.
bool hideRows(const QImage &a, const QImage &b, const ScrollStep &step);

} // namespace FloatingParts
