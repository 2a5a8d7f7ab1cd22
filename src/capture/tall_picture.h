#pragma once

#include "capture/scroll_step.h"

#include <QImage>
#include <QList>
#include <optional>

// Draws the frames of a scrolling region as one tall picture: its height is that of a frame and all shifts.
//
// One frame follows the other at a seam, where both show the same: low enough to be below what sticks to the
// top, and otherwise as high as possible, since what has been in sight for longer has settled. So what floats
// near an edge is drawn once, and what moves by itself is taken whole from one frame. Columns that stand
// beside what scrolls are drawn once, and their ground goes on below.
class TallPicture {
public:
    // `steps[i]` leads from `frames[i]` to `frames[i + 1]`. Nothing when the picture would not fit in memory.
    static std::optional<QImage> compose(const QList<QImage> &frames, const QList<ScrollStep> &steps);
};
