#include "services/redacted_areas.h"

#include "document/annotation.h"
#include "document/pixelation.h"
#include "document/renderer.h"
#include "services/text_recognizer.h"

namespace {

constexpr double kGrowX = 4;
constexpr double kGrowY = 3;

QFuture<Result<QList<QRectF>>> boxes(TextRecognizer &recognizer, const QImage &image, Redaction::Mode mode)
{
    switch (mode) {
    case Redaction::Mode::AllText:
        return recognizer.boxes(image, TextRecognizer::Boxes::AllText);
    case Redaction::Mode::Sensitive:
        return recognizer.boxes(image, TextRecognizer::Boxes::Sensitive);
    case Redaction::Mode::Faces:
        return recognizer.faces(image);
    }
    Q_UNREACHABLE();
}

} // namespace

QList<QRectF> Redaction::pixelRects(const QList<QRectF> &normalized, QSize imageSize)
{
    const double width = imageSize.width();
    const double height = imageSize.height();
    QList<QRectF> rects;
    for (const QRectF &box : normalized) {
        const QRectF pixels(box.left() * width, (1 - box.bottom()) * height, box.width() * width,
                            box.height() * height);
        rects.append(pixels.adjusted(-kGrowX, -kGrowY, kGrowX, kGrowY));
    }
    return rects;
}

QFuture<Result<QList<QRectF>>> Redaction::find(TextRecognizer &recognizer, const QImage &image, Mode mode)
{
    return boxes(recognizer, image, mode)
        .then(QtFuture::Launch::Sync,
              [size = image.size()](const Result<QList<QRectF>> &found) -> Result<QList<QRectF>> {
                  if (!found)
                      return std::unexpected(found.error());
                  return pixelRects(*found, size);
              });
}

QImage Redaction::hidden(const QImage &image, const QList<QRectF> &rects)
{
    if (rects.isEmpty())
        return image;
    QList<Annotation> blurs;
    for (const QRectF &rect : rects) {
        const QRectF covered = pixelatedPixels(rect, image.size());
        if (covered.isEmpty())
            continue;
        Annotation blur;
        blur.kind = ToolKind::Blur;
        blur.start = covered.topLeft();
        blur.end = covered.bottomRight();
        blurs.append(blur);
    }
    return Renderer::flattened(image, Renderer::pixelated(image), blurs);
}
