#include "capture/blank_areas.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>
#include <vector>

namespace {

// A box of another colour than the ground: as high and as wide as a small picture.
constexpr int kLeastBoxRows = 48;
constexpr int kLeastBoxBands = 3;
constexpr int kEdge = 2; // rows that the corners of a box may be round
// Rows that show the ground alone: more than any heading leaves free.
constexpr int kLeastBlankRows = 100;
constexpr double kBlankShare = 0.9; // of the columns that scroll

// A stretch of one colour in a band of tiles.
struct Run {
    int top = 0;
    int end = 0;
    quint64 colour = 0;
};

struct Pane {
    int firstBand;
    int endBand;
    int top;
    int end;
    int newRow; // the first that the step brought
};

Pane paneOf(const TileGrid &tiles, const ScrollStep &step)
{
    const int end = tiles.rows - step.footer;
    return {(step.left + TileGrid::kTileColumns - 1) / TileGrid::kTileColumns,
            tiles.bands - step.right / TileGrid::kTileColumns, step.header, end, end - step.shift};
}

quint64 groundOf(const TileGrid &tiles, const Pane &pane)
{
    std::unordered_map<quint64, int> counts;
    std::pair<int, quint64> most;
    for (int band = pane.firstBand; band < pane.endBand; ++band) {
        for (int y = pane.top; y < pane.end; y += 4) { // a sample
            const size_t tile = tiles.at(band, y);
            if (tiles.uniform[tile])
                most = std::max(most, {++counts[tiles.hashes[tile]], tiles.hashes[tile]});
        }
    }
    return most.second;
}

std::vector<Run> boxRuns(const TileGrid &tiles, const Pane &pane, int band, quint64 ground)
{
    std::vector<Run> runs;
    for (int y = pane.top; y < pane.end;) {
        const quint64 colour = tiles.hashes[tiles.at(band, y)];
        int end = y + 1;
        while (end < pane.end && tiles.hashes[tiles.at(band, end)] == colour)
            ++end;
        const bool isWholePane = y == pane.top && end == pane.end;
        if (tiles.uniform[tiles.at(band, y)] && colour != ground && end - y >= kLeastBoxRows &&
            end > pane.newRow && !isWholePane)
            runs.push_back({y, end, colour});
        y = end;
    }
    return runs;
}

bool hasBox(const TileGrid &tiles, const Pane &pane, quint64 ground)
{
    std::vector<std::pair<Run, int>> before; // with the bands that they reach over
    for (int band = pane.firstBand; band < pane.endBand; ++band) {
        std::vector<std::pair<Run, int>> here;
        for (const Run &run : boxRuns(tiles, pane, band, ground)) {
            int bands = 1;
            for (const auto &[left, reach] : before) {
                if (left.colour == run.colour && std::abs(left.top - run.top) <= kEdge &&
                    std::abs(left.end - run.end) <= kEdge)
                    bands = reach + 1;
            }
            if (bands >= kLeastBoxBands)
                return true;
            here.emplace_back(run, bands);
        }
        before = std::move(here);
    }
    return false;
}

bool hasBlankRows(const TileGrid &tiles, const Pane &pane, quint64 ground)
{
    const double needed = kBlankShare * (pane.endBand - pane.firstBand);
    int run = 0;
    for (int y = pane.top; y < pane.end; ++y) {
        int blank = 0;
        for (int band = pane.firstBand; band < pane.endBand; ++band)
            blank += tiles.hashes[tiles.at(band, y)] == ground;
        run = blank >= needed ? run + 1 : 0;
        if (run >= kLeastBlankRows && y >= pane.newRow)
            return true;
    }
    return false;
}

} // namespace

bool BlankAreas::areIn(const TileGrid &tiles, const ScrollStep &step)
{
    const Pane pane = paneOf(tiles, step);
    const quint64 ground = groundOf(tiles, pane);
    return hasBox(tiles, pane, ground) || hasBlankRows(tiles, pane, ground);
}
