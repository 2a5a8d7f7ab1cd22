#pragma once

#include "recording/gif_palette.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <functional>
#include <optional>

// Writes an animated GIF frame by frame (GIF89a), endless. Each frame holds what changed since the one
// before, with colours of its own unless the first frame's serve.
class GifWriter {
public:
    // `write` gets the file's bytes in order; false from it ends the work.
    GifWriter(QSize size, std::function<bool(const QByteArray &)> write);

    // `picture` has the writer's size (Format_RGB32); it is shown for so many hundredths of a second. False
    // when writing failed.
    bool add(const QImage &picture, int hundredths);
    bool finish();

private:
    // What a frame stores: the pixels of `rect` that are new, row by row.
    struct Change {
        QRect rect;
        std::vector<std::uint8_t> isNew; // of each pixel of `rect`
        std::vector<QRgb> colors;        // of the new ones
    };

    QRect changedRect(const QImage &picture, int noise) const;
    Change changeTo(const QImage &picture, int noise);
    bool serves(const GifPalette &palette, const Change &change, int most) const;
    // Indices of a frame's pixels; 0 leaves what is there.
    std::vector<std::uint8_t> draw(const Change &change, const GifPalette &palette, int run);

    QSize m_size;
    std::function<bool(const QByteArray &)> m_write;
    QImage m_stored;                   // each pixel as it was wanted when it was last written
    QImage m_shown;                    // and as it is seen
    std::optional<GifPalette> m_first; // colours of the first frame, for all that have none of their own
};
