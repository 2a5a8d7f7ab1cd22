#pragma once

#include <QRegion>
#include <QSize>

// What of a film has to be painted anew when `region` changed: as halved colours are made of squares of two by
// two pixels, all edges are even; more rectangles than are worth handling one by one become their whole.
QRegion filmRegion(const QRegion &region, QSize film);
