#pragma once

#include "platform/recognition/read_line.h"
#include "platform/text_engine.h"

#include <QImage>

// Mends what a reader takes wrong on screens, by looking at the page as a whole: readings are held against
// the shapes of the ink, blanks come from its gaps, and boxes become those of the ink.
void mend(const QImage &ink, std::vector<ReadLine> &lines);

// Whether what was read is rather an icon: one or two signs of which the reader wasn't sure.
bool isIcon(const ReadLine &line);

// A line as the port gives it, with boxes as fractions of a picture of this size; the ink's corner lies at
// `offset` in it. Boxes are as high as a line of the font, whatever the height of their letters.
RecognizedLine recognizedLine(const ReadLine &line, QSize picture, QPoint offset = {});
