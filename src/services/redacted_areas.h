#pragma once

#include "base/result.h"

#include <QFuture>
#include <QImage>
#include <QList>
#include <QRect>
#include <QRectF>

class TextRecognizer;

// Finding what is to be hidden in a picture, and hiding it for good.
namespace Redaction {

enum class Mode { AllText, Sensitive, Faces };

// Boxes as recognisers give them (fractions, origin at the lower left) as pixels of a picture, origin at the
// top left, grown by 4 pixels to the left and right and 3 up and down. They may reach beyond the picture.
QList<QRectF> pixelRects(const QList<QRectF> &boxes, QSize imageSize);

// The rectangles to hide, in pixels.
QFuture<Result<QList<QRectF>>> find(TextRecognizer &recognizer, const QImage &image, Mode mode);

// A copy without what stood in the rectangles; each is cut to the picture and pixelated.
QImage hidden(const QImage &image, const QList<QRectF> &rects);

} // namespace Redaction
