#pragma once

#include <QImage>
#include <QList>
#include <QPolygonF>
#include <QTransform>

// Covers in `mask` (Format_Alpha8) what a round pen of `width` touches on its way along each of `lines`,
// joins and ends round. `toMask` leads from the lines' coordinates to the mask's pixels and scales evenly. A
// point that several strokes touch counts once.
//
// The time grows with the outlines' length inside the mask, however often the lines cross, and wherever they
// go outside.
void strokeMask(QImage &mask, const QTransform &toMask, const QList<QPolygonF> &lines, double width);
