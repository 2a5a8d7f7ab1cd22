#include "steps/caption_writer.h"

#include "base/async.h"
#include "base/log.h"
#include "services/claude_client.h"
#include "steps/steps_export.h"

namespace {

QString stripped(QString reply)
{
    const auto isQuote = [](QChar sign) {
        return sign == '"' || sign == QChar(0x201c) || sign == QChar(0x201d) || sign == ' ';
    };
    while (!reply.isEmpty() && isQuote(reply.front()))
        reply.remove(0, 1);
    while (!reply.isEmpty() && isQuote(reply.back()))
        reply.chop(1);
    return reply;
}

QString promptFor(qsizetype number, bool hasClick, const QString &caption)
{
    // untranslated: to the service
    return QStringLiteral("This screenshot is step %1 of a how-to guide.").arg(number) +
           (hasClick ? QStringLiteral(" A purple circle marks where the user clicked.") : QString()) +
           QStringLiteral("\nThe current instruction is: \"") + caption +
           QStringLiteral(
               "\".\nWrite one clear imperative instruction for this step (at most 15 words), e.g. "
               "\"Click Save changes to publish\". Name the exact button, menu or field. Reply with "
               "the instruction only.");
}

} // namespace

CaptionWriter::CaptionWriter(ClaudeClient &claude, QObject *parent) : QObject(parent), m_claude(claude) {}

void CaptionWriter::write(const Guide &guide, const QStringList &captions)
{
    if (isAtWork())
        return;
    m_guide = guide;
    m_captions = captions;
    m_next = 0;
    writeNext();
}

void CaptionWriter::writeNext()
{
    Q_EMIT progressed();
    if (!isAtWork())
        return;
    const GuideStep step = m_guide.steps[m_next];
    const QString prompt = promptFor(number(), step.click.has_value(), m_captions[m_next]);
    whenDone(runInBackground([step, number = number(), marks = m_guide.markClicks, redact = m_guide.redact] {
                 return StepsExport::annotated(step, int(number), marks, redact);
             }),
             this, [this, id = step.id, prompt](const QImage &image) {
                 whenDone(m_claude.ask(prompt, image, QStringLiteral("low")), this,
                          [this, id](const Result<QString> &reply) {
                              if (!reply)
                                  Log::error(QStringLiteral("Steps: a caption stays as it was"),
                                             reply.error());
                              else if (const QString caption = stripped(*reply); !caption.isEmpty())
                                  Q_EMIT written(id, caption);
                              ++m_next;
                              writeNext();
                          });
             });
}
