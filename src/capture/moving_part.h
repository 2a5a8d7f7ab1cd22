#pragma once

#include "capture/scroll_step.h"
#include "capture/tile_grid.h"

#include <QImage>
#include <optional>

// The second look at two pictures of a scrolling region, for those where something stands still or moves by
// itself beside what scrolls. Tiles that occur once vote for the shift at which they are found again.
class MovingPart {
public:
    struct View {
        const QImage &pixels; // as RowSignatures::comparable gives them
        const TileGrid &tiles;
    };
    // Both views have one size. `expected` is how far the content should have moved, as far as that is known;
    // it decides where several shifts fit. Nothing when no shift has evidence well above its rivals, or when
    // the content moved down.
    static std::optional<ScrollStep> find(const View &previous, const View &next,
                                          std::optional<double> expected);

    // What is to be seen stands where it stood, whatever may move by itself. Where `pane` tells what scrolled
    // before, a third of that is enough, since scrolling would have moved all of it.
    static bool isStill(const TileGrid &previous, const TileGrid &next,
                        const std::optional<ScrollStep> &pane);
};
