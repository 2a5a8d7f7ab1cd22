#pragma once

#include "capture/compared_picture.h"
#include "capture/scroll_step.h"

#include <optional>

// The second look at two pictures of a scrolling region, for those where something stands still or moves by
// itself beside what scrolls. Tiles that occur once vote for the shift at which they are found again.
class MovingPart {
public:
    // Both pictures have one size. `expected` is how far the content should have moved, as far as that is
    // known; it decides where several shifts fit. Nothing when no shift has evidence well above its rivals,
    // or when the content moved down.
    static std::optional<ScrollStep> find(const ComparedPicture &previous, const ComparedPicture &next,
                                          std::optional<double> expected);

    // Whether what `step` brought to `spot` looks otherwise there than before.
    static bool differsAround(const ComparedPicture &previous, const ComparedPicture &next,
                              const ScrollStep &step, QPoint spot);

    // What is to be seen stands where it stood, whatever may move by itself. Where `pane` tells what scrolled
    // before, a third of that is enough, since scrolling would have moved all of it.
    static bool isStill(const TileGrid &previous, const TileGrid &next,
                        const std::optional<ScrollStep> &pane);
};
