#pragma once

// Makes the objects on a canvas children of it for assistive technology: each with its description and its
// place on the screen. Call once before the first canvas is shown.
void installCanvasAccessibility();
