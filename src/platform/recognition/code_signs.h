#pragma once

#include "platform/recognition/read_line.h"

#include <QImage>

// Signs of programs in fixed-width fonts that readers don't know: two that touch, as in "&&", and ligatures,
// as the crossed-out "=" for "!=". Before blanks are placed.
void mendCodeSigns(const QImage &ink, ReadLine &line);

// "<=" and ">=" as one sign between two columns, "|" that was read for a bracket, and "0x".
void mendCodeWords(const QImage &ink, ReadLine &line);

// Whether a bracket that stands alone belongs to a program around it rather than being an icon.
bool isLoneBracket(const ReadLine &line, const std::vector<ReadLine> &page);
