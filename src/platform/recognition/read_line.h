#pragma once

#include "platform/recognition/line_finder.h"

#include <QString>

// One character as it was read.
struct ReadSign {
    QString text;
    QRectF box; // pixels
    double confidence = 0;
    bool blankBefore = false;
    int cell = -1;        // the piece of ink that it was read from
    bool isAlone = false; // in that piece: no neighbour touches it
};

// A reader as sure as this of a sign has seen it: currency and section signs, accents and the like that stand
// there are read with .976 and more, those that are read for letters of keys with .94 and less.
inline constexpr double kSureOfSign = 0.96;

struct ReadLine {
    TextRegion region;
    std::vector<ReadSign> signs;
    std::vector<QRect> cells; // glyphs one beside the other: an i with its dot is one
    int baseline = 0;         // pixels
    int capHeight = 0;        // of letters with an upper part
    double pitch = 0;         // distance of the characters of a fixed-width font; 0 for others
};

inline double center(const QRectF &box)
{
    return box.x() + box.width() / 2;
}
inline double center(const QRect &box)
{
    return box.x() + box.width() / 2.0;
}

// A run of letters and digits among the signs of a line.
struct Run {
    size_t from;
    size_t to; // one past its last sign
    int letters = 0;
    int digits = 0;
    int turns = 0; // from letters to digits and back, and from small letters to capitals
    // A word or a number, which is read as a whole with the sense of the language.
    bool isPlain() const { return turns == 0 && to - from >= 2; }
};

std::vector<Run> runsOf(const std::vector<ReadSign> &signs);

// Cells, baseline and heights of each line, and the pitch of those in a fixed-width font.
void measure(std::vector<ReadLine> &lines);
