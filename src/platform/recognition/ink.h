#pragma once

#include <QImage>

// How far each pixel of a picture stands out from what lies behind it: 0 for the background, up to 255 for
// ink of the strongest contrast, whichever of the two is the lighter. Format_Grayscale8, the size of the
// picture.
//
// The background is the median colour of the surroundings. Near an edge between two backgrounds either of
// them counts as background, so that panels and fields leave no outline of their own. Shapes that are filled
// with a colour, such as buttons and badges, become a background to the text in them.
QImage inkOf(const QImage &picture);
