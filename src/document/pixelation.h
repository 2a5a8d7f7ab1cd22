#pragma once

#include <QImage>
#include <QRect>
#include <QRectF>

// The pixelated copy of a picture: blocks of max(longer side / 90, 8) pixels on a grid anchored at the bottom
// left, each of one colour.
//
// A mosaic of plain averages can be undone: guess a text, pixelate the guess, compare. Here a block near ink
// on an even ground has the colour of that ground, moved towards the ink's hue by noise alone: how much ink
// lies under it, and where, tells nothing, however large the letters are and however many such pictures there
// are. On grounds that are nowhere even, as in photographs, a block is the mean of a neighbourhood several
// letters wide, of those parts that share its ground, so that the edges of large areas stay; and it is moved
// along the neighbourhood's own range of colours by noise that nobody can repeat: its key is made when the
// program starts, mixed with the whole picture, and never leaves the process. Half of that noise is as smooth
// as the means are, so that no filter parts the two. Where nothing but one colour is near, there is nothing
// to hide, and it stays exact. All other blocks are opaque, whatever the picture is: through a translucent
// one, the picture under it would show.
//
// The same picture gives the same copy within one run of the program, so undo and redo don't flicker.
QImage pixelated(const QImage &image);

// The side of a block, unrounded.
double pixelationBlock(const QSize &size);

// The whole pixels of a picture that a mosaic over the rectangle covers: rounded outwards, as an edge that is
// half covered shows half of what it hides.
QRect pixelatedPixels(const QRectF &rect, const QSize &imageSize);
