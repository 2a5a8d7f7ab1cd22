#pragma once

#include <QImage>
#include <QtGlobal>
#include <vector>

// A picture as tiles of one row and a few columns, so that what moves is found beside what stands still.
// The columns of the scroll bar are left out, as in RowSignatures.
struct TileGrid {
    static constexpr int kTileColumns = 32; // wide enough for four letters, narrow enough for a rail of icons

    int bands = 0; // columns of tiles
    int rows = 0;
    std::vector<quint64> hashes; // band by band, in each from the top
    std::vector<quint8> uniform; // 1 where a tile has one colour

    // `pixels` as RowSignatures::comparable gives them.
    static TileGrid of(const QImage &pixels);

    size_t at(int band, int row) const { return size_t(band) * size_t(rows) + size_t(row); }
};
