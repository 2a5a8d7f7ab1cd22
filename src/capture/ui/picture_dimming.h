#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

class QPainter;

// Draws the part of the picture at its own place, under black at alpha 0.38. In pieces that stay in the
// processor's cache: a dimmed copy of a 4K picture would cost more time to fill than it saves, and 33 MB.
void drawDimmed(QPainter &painter, const QImage &picture, const QRect &part);
