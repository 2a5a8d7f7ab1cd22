#include "editor/redaction.h"

#include "base/async.h"
#include "document/editor_document.h"
#include "editor/editor_session.h"
#include "editor/texts.h"
#include "services/text_recognizer.h"

namespace Redaction {

namespace {

int cover(EditorDocument &document, const QList<QRectF> &rects)
{
    if (rects.isEmpty())
        return 0;
    document.pushUndo();
    QList<Annotation> objects;
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
    // Whatever the user has drawn stays in sight.
    document.setAnnotations(objects + document.annotations());
    document.setSelectedID({});
    return static_cast<int>(rects.size());
}

} // namespace

namespace {

void search(EditorDocument &document, TextRecognizer &recognizer, Mode mode, EditorSession::WorkToken work,
            const std::function<void(int)> &done)
{
    const QImage base = document.base();
    whenDone(find(recognizer, base, mode), &document,
             [&document, &recognizer, mode, work = std::move(work), done,
              searched = base.cacheKey()](const Result<QList<QRectF>> &found) mutable {
                 if (document.base().cacheKey() != searched)
                     return search(document, recognizer, mode, std::move(work), done);
                 const int count = cover(document, found.value_or(QList<QRectF>{}));
                 work.reset();
                 done(count);
             });
}

} // namespace

void redact(EditorDocument &document, EditorSession &session, TextRecognizer &recognizer, Mode mode,
            const std::function<void(int)> &done)
{
    search(document, recognizer, mode, session.beginWork(), done);
}

Notice notice(Mode mode, int count)
{
    if (count > 0)
        return {EditorTexts::tr("Redacted %n area(s) — review them, ⌘Z to undo", nullptr, count),
                QStringLiteral("eye.slash.fill")};
    if (mode == Mode::Faces)
        return {EditorTexts::tr("No faces found"), QStringLiteral("eye.slash")};
    return {EditorTexts::tr("Nothing to redact"), QStringLiteral("eye.slash")};
}

} // namespace Redaction
