#include "editor/redaction.h"

#include "base/async.h"
#include "document/editor_document.h"
#include "services/text_recognizer.h"

namespace Redaction {

namespace {

int cover(EditorDocument &document, const QList<QRectF> &rects)
{
    if (rects.isEmpty())
        return 0;
    document.pushUndo();
    QList<Annotation> objects = document.annotations();
    for (const QRectF &rect : rects) {
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
    return static_cast<int>(rects.size());
}

} // namespace

void redact(EditorDocument &document, TextRecognizer &recognizer, Mode mode,
            const std::function<void(int)> &done)
{
    document.setBusy(true);
    whenDone(find(recognizer, document.base(), mode), &document,
             [&document, done](const Result<QList<QRectF>> &found) {
                 const int count = cover(document, found.value_or(QList<QRectF>{}));
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
