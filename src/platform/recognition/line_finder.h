#pragma once

#include <QImage>
#include <QList>
#include <QRect>
#include <vector>

// A stretch of text that stands on one line.
struct TextRegion {
    QRect box;                 // in pixels, tight around the ink
    int glyphHeight = 0;       // the usual height of its letters
    int strongest = 255;       // ink of its letters
    std::vector<QRect> glyphs; // boxes of its connected pieces of ink, from left to right
};

// Finds lines of text in a picture's ink: glyphs are its connected components, neighbours of alike size on
// one level make a line. Rules, frames and pictures are left out; wide gaps and upright rules end a line, so
// that the cells of a table stay apart. In reading order: by blocks from the top, left to right.
QList<TextRegion> findLines(const QImage &ink);
