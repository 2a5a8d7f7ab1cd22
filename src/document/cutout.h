#pragma once

#include <QImage>
#include <QRectF>
#include <optional>

// A band taken out of a picture: pixels `from` to `to` along the cut axis.
struct Cutout {
    QImage image; // the rest, joined with a torn edge
    int from = 0;
    int to = 0;

    // Nothing when the band is thinner than 4, or fewer than 8 rows (columns) would be left, or memory is
    // short.
    static std::optional<Cutout> make(const QImage &base, const QRectF &rect, bool columns);
};
