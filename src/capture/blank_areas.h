#pragma once

#include "capture/scroll_step.h"
#include "capture/tile_grid.h"

// What is blank in the part of a picture that scrolls, and may be waiting to be filled: the place of a
// picture that is still loading, or rows that are not there yet.
namespace BlankAreas {

// Whether any reaches into the rows that `step` brought.
bool areIn(const TileGrid &tiles, const ScrollStep &step);

} // namespace BlankAreas
