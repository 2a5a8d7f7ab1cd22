#include "capture/tile_grid.h"

#include "capture/row_signatures.h"

TileGrid TileGrid::of(const QImage &pixels)
{
    constexpr quint64 kSeed = 0xcbf29ce484222325;
    constexpr quint64 kMultiplier = 0x9e3779b97f4a7c15;
    constexpr quint32 kColors = 0x00ffffff;
    const int columns = RowSignatures::comparedColumns(pixels.width());
    TileGrid grid;
    grid.bands = (columns + kTileColumns - 1) / kTileColumns;
    grid.rows = pixels.height();
    grid.hashes.resize(size_t(grid.bands) * size_t(grid.rows));
    grid.uniform.resize(grid.hashes.size());
    for (int y = 0; y < grid.rows; ++y) {
        const auto *row = reinterpret_cast<const quint32 *>(pixels.constScanLine(y));
        for (int band = 0; band < grid.bands; ++band) {
            const int from = band * kTileColumns;
            const int to = std::min(columns, from + kTileColumns);
            quint64 state = kSeed;
            quint32 differing = 0;
            for (int x = from; x < to; ++x) {
                differing |= row[x] ^ row[from];
                state = (state ^ (row[x] & kColors)) * kMultiplier;
                state ^= state >> 32;
            }
            grid.hashes[grid.at(band, y)] = state;
            grid.uniform[grid.at(band, y)] = (differing & kColors) == 0;
        }
    }
    return grid;
}
