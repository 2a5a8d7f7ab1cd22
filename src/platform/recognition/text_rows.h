#pragma once

#include "platform/recognition/glyphs.h"

// Glyphs that stand on one line of text.
struct TextRow {
    std::vector<size_t> glyphs;
    QRect box;
    int top = 0;      // of its tall letters
    int baseline = 0; // the row under its letters
    int usual = 0;    // height of its letters
    int height() const { return baseline - top; }
};

// Puts glyphs into rows: letters of alike size on one level first, words of one line across gaps, then the
// marks that stand by them. Letters that touch the row above or below are cut apart, which adds glyphs. A row
// ends at upright rules and at wide gaps.
std::vector<TextRow> rowsOf(Components &ink);
