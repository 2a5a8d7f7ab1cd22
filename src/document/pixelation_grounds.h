#pragma once

#include "document/pixelation_grid.h"

#include <QImage>
#include <optional>
#include <vector>

// The two most frequent colours of a part of a picture.
std::array<Shade, 2> shadesOf(const QImage &seen, const QRect &part, int stepX, int stepY);

// A flat ground and the way its ink goes: each channel from -1 to 1 and one of them 1, in quarters, so that
// soft edges don't show in it.
struct InkedGround {
    Shade ground;
    std::array<float, 3> direction{};
};

// For each block that stands near ink on a flat ground, that ground. Which one it is, and how far around the
// ink it reaches, depends on nothing narrower than a surface, as the strokes of letters of any usual size
// are: cells of many letters' width decide together. None where no ink is near, and where no ground is flat,
// as in photographs.
std::vector<std::optional<InkedGround>> groundsUnderInk(const std::vector<Block> &blocks, const Grid &grid);
