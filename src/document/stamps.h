#pragma once

#include "document/annotation.h"

class QPainter;

// Draws a stamp by the prefix of its value: a symbol, an emoji or a key-cap. Any other value paints nothing.
void drawStamp(const Annotation &annotation, QPainter &painter);

// Everything a stamp paints, without shadows: letters may be wider than the stamp.
QRectF stampInk(const Annotation &annotation);
