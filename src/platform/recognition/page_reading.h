#pragma once

#include "platform/recognition/line_finder.h"
#include "platform/text_engine.h"

#include <QImage>
#include <QString>

// One character as it was read.
struct Symbol {
    QString text;
    QRectF box; // pixels
    double confidence = 0;
    bool blankBefore = false;
    int cell = -1;        // the piece of ink that it was read from
    bool isAlone = false; // in that piece: no neighbour touches it
};

struct ReadLine {
    TextRegion region;
    std::vector<Symbol> symbols;
    std::vector<QRect> cells; // glyphs one beside the other: an i with its dot is one
    int baseline = 0;         // pixels
    int capHeight = 0;        // of letters with an upper part
    double pitch = 0;         // distance of the characters of a fixed-width font; 0 for others
};

// Mends what a reader takes wrong on screens, by looking at the page as a whole: the same character has the
// same shape wherever it stands in one font. Each shape gets the reading that most of its places have, where
// readings are of the kind that is easily confused (0 and O; 1, l and I). Blanks come from the gaps in the
// ink. Boxes become those of the ink.
void mend(const QImage &ink, std::vector<ReadLine> &lines);

// A line as the port gives it, with boxes as fractions of a picture of this size; `top` is the row of the
// picture at which the ink begins. Boxes are as high as a line of the font, whatever the height of their
// letters.
RecognizedLine recognizedLine(const ReadLine &line, QSize picture, int top = 0);
