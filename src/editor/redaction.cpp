#include "editor/redaction.h"

#include "base/async.h"
#include "document/editor_document.h"
#include "services/text_recognizer.h"

namespace Redaction {

namespace {

constexpr double growX = 4, growY = 3; // pixels on each side, so that no edge of a letter shows

QFuture<Result<QList<QRectF>>> boxes(TextRecognizer &recognizer, const QImage &image, Mode mode)
{
    switch (mode) {
    case Mode::AllText:
        return recognizer.boxes(image, TextRecognizer::Boxes::AllText);
    case Mode::Sensitive:
        return recognizer.boxes(image, TextRecognizer::Boxes::Sensitive);
    case Mode::Faces:
        return recognizer.faces(image);
    }
    Q_UNREACHABLE();
}

int cover(EditorDocument &document, const QList<QRectF> &found, const QSize &size)
{
    if (found.isEmpty())
        return 0;
    document.pushUndo();
    QList<Annotation> objects = document.annotations();
    for (const QRectF &box : found) {
        const QRectF rect = pixelRect(box, size);
        Annotation blur;
        blur.id = QUuid::createUuid();
        blur.kind = ToolKind::Blur;
        blur.start = rect.topLeft();
        blur.end = rect.bottomRight();
        blur.color = document.color();
        blur.lineWidth = document.lineWidth();
        objects.append(blur);
    }
    document.setAnnotations(objects);
    document.setSelectedID({});
    return static_cast<int>(found.size());
}

} // namespace

QRectF pixelRect(const QRectF &box, const QSize &image)
{
    const double w = image.width(), h = image.height();
    // QRectF's bottom is the upper edge of a box whose y grows upwards.
    const QRectF rect(box.left() * w, (1 - box.bottom()) * h, box.width() * w, box.height() * h);
    return rect.adjusted(-growX, -growY, growX, growY);
}

void redact(EditorDocument &document, TextRecognizer &recognizer, Mode mode,
            const std::function<void(int)> &done)
{
    document.setBusy(true);
    const QImage base = document.base();
    whenDone(boxes(recognizer, base, mode), &document,
             [&document, size = base.size(), done](const Result<QList<QRectF>> &found) {
                 const int count = cover(document, found.value_or(QList<QRectF>{}), size);
                 document.setBusy(false);
                 done(count);
             });
}

Notice notice(Mode mode, int count)
{
    if (count > 0)
        return {QStringLiteral("Redacted %1 area%2 — review them, ⌘Z to undo")
                    .arg(count)
                    .arg(count == 1 ? "" : "s"),
                QStringLiteral("eye.slash.fill")};
    if (mode == Mode::Faces)
        return {QStringLiteral("No faces found"), QStringLiteral("eye.slash")};
    return {QStringLiteral("Nothing to redact"), QStringLiteral("eye.slash")};
}

} // namespace Redaction
