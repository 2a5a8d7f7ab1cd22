#include "steps/steps_export.h"

#include "base/colors.h"
#include "document/renderer.h"
#include "services/further_kinds.h"
#include "services/redacted_areas.h"
#include "services/sensitive_text.h"
#include "steps/texts.h"

namespace StepsExport {

namespace {

Annotation mark(ToolKind kind, QPointF start, QPointF end, double lineWidth)
{
    Annotation annotation;
    annotation.id = QUuid::createUuid();
    annotation.kind = kind;
    annotation.start = start;
    annotation.end = end;
    annotation.color = brandColor();
    annotation.lineWidth = lineWidth;
    return annotation;
}

bool hidesAnything(const QList<Annotation> &annotations)
{
    return std::ranges::any_of(annotations,
                               [](const Annotation &each) { return each.kind == ToolKind::Blur; });
}

QImage painted(const QImage &base, const QList<Annotation> &annotations)
{
    const QImage pixelated = hidesAnything(annotations) ? Renderer::pixelated(base) : QImage();
    return Renderer::flattened(base, pixelated, annotations);
}

QString escaped(QString text)
{
    return text.replace('&', QLatin1String("&amp;"))
        .replace('<', QLatin1String("&lt;"))
        .replace('>', QLatin1String("&gt;"));
}

QString stepName(qsizetype index)
{
    return StepsTexts::tr("Step %1").arg(index + 1);
}

const QString &pageOpening()
{
    static const QString s_text = QStringLiteral(
        R"(<!doctype html><html lang="en"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1">
<title>)");
    return s_text;
}

const QString &pageStyle()
{
    static const QString s_text = QStringLiteral(R"(</title>
<style>
body{margin:0;font:17px/1.6 -apple-system,BlinkMacSystemFont,'Segoe UI',sans-serif;color:#15151f;background:#f6f6fb}
header{background:linear-gradient(120deg,#5766fa,#a852f5);color:#fff;padding:48px 24px}
header h1{max-width:900px;margin:0 auto;font-size:38px}
main{max-width:900px;margin:0 auto;padding:24px}
section{background:#fff;border-radius:16px;padding:24px;margin:24px 0;box-shadow:0 10px 30px -18px rgba(40,30,120,.35)}
h2{display:flex;gap:14px;align-items:center;font-size:20px;margin:0 0 16px}
h2 span{flex:none;width:36px;height:36px;border-radius:50%;background:#6b5cf6;color:#fff;display:grid;place-items:center;font-size:17px}
img{max-width:100%;border-radius:10px;border:1px solid #e4e4ef}
footer{text-align:center;color:#8a8aa0;font-size:13px;padding:24px}
</style></head><body>
<header><h1>)");
    return s_text;
}

} // namespace

double ringRadius(QSize picture)
{
    return std::max(std::min(picture.width(), picture.height()) * 0.045, 30.0);
}

AutoAnnotations autoAnnotations(const GuideStep &step, int number, bool markClicks, bool redact)
{
    AutoAnnotations marks;
    const QSize size = step.image.size();
    if (redact) {
        for (const QRectF &rect : Redaction::pixelRects(step.redactions, size))
            marks.annotations.append(mark(ToolKind::Blur, rect.topLeft(), rect.bottomRight(), 6));
    }
    if (!markClicks || !step.click)
        return marks;
    const QPointF at = *step.click;
    const double R = ringRadius(size);
    Annotation ring =
        mark(ToolKind::Ellipse, at - QPointF(R, R), at + QPointF(R, R), std::max(R * 0.16, 5.0));
    ring.style = 1;
    marks.annotations.append(ring);
    // Up and to the right of the ring, and inside the picture at those edges.
    const QPointF place(std::min(at.x() + R * 1.15, size.width() - R), std::max(at.y() - R * 1.15, R));
    Annotation badge = mark(ToolKind::Step, place, QPointF(), std::max(R * 0.18, 5.0));
    badge.number = number;
    marks.badgeID = badge.id;
    marks.annotations.append(badge);
    return marks;
}

QImage annotated(const GuideStep &step, int number, bool markClicks, bool redact)
{
    if (!step.edited) {
        const QImage picture = step.image.image();
        return picture.isNull()
                   ? picture
                   : painted(picture, autoAnnotations(step, number, markClicks, redact).annotations);
    }
    const QImage base = step.edited->base.image();
    if (base.isNull())
        return base;
    QList<Annotation> annotations = step.edited->annotations;
    for (Annotation &annotation : annotations) {
        if (annotation.id == step.edited->badgeID)
            annotation.number = number;
    }
    return step.edited->effects.applied(painted(base, annotations));
}

QString withoutSecrets(const QString &text)
{
    QString clean;
    qsizetype from = 0;
    using namespace SensitiveText;
    const auto further = furtherMatches(text, kAllFurtherKinds, Form::Exact);
    for (const Match &match : merged(SensitiveText::matches(text) + further)) {
        clean += text.mid(from, match.start - from) + QStringLiteral("•••");
        from = match.end();
    }
    return clean + text.mid(from);
}

QString html(const QString &title, const QStringList &captions, const QStringList &imageNames)
{
    QStringList sections;
    for (qsizetype i = 0; i < captions.size(); ++i) {
        const QString heading = captions[i].isEmpty() ? stepName(i) : captions[i];
        sections.append(QStringLiteral("<section><h2><span>") + QString::number(i + 1) +
                        QStringLiteral("</span>") + escaped(heading) + QStringLiteral("</h2><img src=\"") +
                        imageNames.value(i) + QStringLiteral("\" alt=\"") + stepName(i) +
                        QStringLiteral("\"></section>"));
    }
    return pageOpening() + escaped(title) + pageStyle() + escaped(title) +
           QStringLiteral("</h1></header>\n<main>\n") + sections.join('\n') +
           QStringLiteral("\n</main>\n<footer>Made with Lumenpost</footer>\n</body></html>");
}

QString markdown(const QString &title, const QStringList &captions, const QStringList &imageNames)
{
    QString text = QStringLiteral("# ") + title + QStringLiteral("\n\n");
    for (qsizetype i = 0; i < captions.size(); ++i) {
        text += QStringLiteral("## ") + stepName(i) + QStringLiteral("\n\n");
        // Markdown takes tags as they are; a caption's are text.
        if (!captions[i].isEmpty())
            text += QString(captions[i]).replace('<', QLatin1String("\\<")) + QStringLiteral("\n\n");
        text += QStringLiteral("![") + stepName(i) + QStringLiteral("](") + imageNames.value(i) +
                QStringLiteral(")\n\n");
    }
    return text;
}

} // namespace StepsExport
