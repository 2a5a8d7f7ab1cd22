#pragma once

#include "editor/canvas_painter.h"

class QPainter;

// What lies over the picture while it is worked on.
namespace CanvasChrome {

// The area that is being chosen, with its size or what will happen to it.
void drawBand(const CanvasPainter::Scene &scene, QPainter &painter);
// Outline and handles of the selected object.
void drawSelection(const CanvasPainter::Scene &scene, QPainter &painter);

// The point that keys pick a colour from, with that colour, and what it covers of the view.
void drawAim(const CanvasPainter::Scene &scene, QPainter &painter);
QRectF aimRect(const CanvasPainter::Scene &scene);

} // namespace CanvasChrome
