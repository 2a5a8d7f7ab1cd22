#pragma once

#include "capture/row_signatures.h"
#include "capture/tile_grid.h"

#include <QImage>
#include <optional>

// A picture in the forms in which it is compared with others.
class ComparedPicture {
public:
    // Nothing when the picture can't be brought into them.
    static std::optional<ComparedPicture> of(const QImage &image)
    {
        ComparedPicture compared;
        std::optional<RowSignatures> rows = RowSignatures::of(image);
        compared.m_pixels = RowSignatures::comparable(image);
        if (!rows || (compared.m_pixels.isNull() && !image.isNull()))
            return {};
        compared.m_rows = std::move(*rows);
        return compared;
    }

    const QImage &pixels() const { return m_pixels; }
    const RowSignatures &rows() const { return m_rows; }
    // Made when first asked for: most pages scroll as a whole.
    const TileGrid &tiles() const
    {
        if (!m_tiles)
            m_tiles = TileGrid::of(m_pixels);
        return *m_tiles;
    }
    // A frame that others followed needs them no more.
    void dropTiles() { m_tiles.reset(); }

private:
    QImage m_pixels;
    RowSignatures m_rows;
    mutable std::optional<TileGrid> m_tiles;
};
