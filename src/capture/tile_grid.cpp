#include "capture/tile_grid.h"

#include "capture/pixel_rows.h"
#include "capture/row_signatures.h"

TileGrid TileGrid::of(const QImage &pixels)
{
    using PixelRows::kColors;
    const int columns = RowSignatures::comparedColumns(pixels.width());
    TileGrid grid;
    grid.bands = (columns + kTileColumns - 1) / kTileColumns;
    grid.rows = pixels.height();
    grid.hashes.resize(size_t(grid.bands) * size_t(grid.rows));
    grid.uniform.resize(grid.hashes.size());
    for (int y = 0; y < grid.rows; ++y) {
        const quint32 *row = PixelRows::row(pixels, y);
        for (int band = 0; band < grid.bands; ++band) {
            const int from = band * kTileColumns;
            const int to = std::min(columns, from + kTileColumns);
            quint64 state = PixelRows::kSeed;
            quint32 differing = 0;
            for (int x = from; x < to; ++x) {
                differing |= row[x] ^ row[from];
                state = PixelRows::mixed(state, row[x] & kColors);
            }
            const bool isUniform = (differing & kColors) == 0;
            grid.uniform[grid.at(band, y)] = isUniform;
            // One colour looks the same in a narrower tile.
            grid.hashes[grid.at(band, y)] =
                isUniform ? PixelRows::mixed(~PixelRows::kSeed, row[from] & kColors) : state;
        }
    }
    return grid;
}
