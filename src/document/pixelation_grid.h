#pragma once

#include "document/pixelation.h"

#include <QSize>
#include <algorithm>
#include <array>
#include <cmath>

// The neighbourhood reaches this many pixels at least, some letters of small text.
constexpr double kNeighbourhoodPixels = 44;
// Of the histogram that tells a block's ground.
constexpr int kBins = 16;

// One of the colours of a block, and how many of its samples have it.
struct Shade {
    std::array<float, 3> color{}; // b, g, r
    float share = 0;
};

// What one block holds: sums over its samples.
struct Block {
    std::array<double, 3> mean{};         // b, g, r
    std::array<double, 3> spread{};       // covariance of each colour with the brightness
    double variance = 0;                  // of the brightness
    std::array<float, kBins> histogram{}; // shares of brightness
    int darkest = 255;
    int brightest = 0;
    int faintest = 255; // opacity
    int strongest = 0;
    std::array<Shade, 2> shades{}; // the most frequent colours
};

struct Grid {
    double side;
    int columns;
    int rows; // from the bottom
    int width;
    int height;
    int reach; // of a neighbourhood, in blocks

    explicit Grid(const QSize &size)
        : side(pixelationBlock(size)),
          columns(std::max(1, static_cast<int>(std::ceil(size.width() / side - 1e-9)))),
          rows(std::max(1, static_cast<int>(std::ceil(size.height() / side - 1e-9)))),
          width(size.width()),
          height(size.height()),
          reach(std::max(2, static_cast<int>(std::ceil(kNeighbourhoodPixels / side))))
    {}
    // First pixel whose middle lies in a column.
    int left(int column) const { return edge(column, width); }
    // The pixel rows of a block row, counted from the top.
    int top(int row) const { return height - edge(row + 1, height); }
    int bottom(int row) const { return height - edge(row, height); }

private:
    int edge(int index, int limit) const
    {
        return std::clamp(static_cast<int>(std::ceil(index * side - 0.5 - 1e-9)), 0, limit);
    }
};
