#include "steps/caption_writer.h"

#include "base/async.h"
#include "base/log.h"
#include "services/claude_client.h"
#include "steps/steps_export.h"

namespace {

// Replies in a row that fail for one reason, such as a network that is gone, say that the others would too.
constexpr int kConcernsAll = 3;

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
    m_failure.reset();
    m_lastReason.clear();
    writeNext();
}

void CaptionWriter::writeNext()
{
    Q_EMIT progressed();
    if (!isAtWork()) {
        if (const auto failure = std::exchange(m_failure, std::nullopt))
            Q_EMIT failed(*failure);
        return;
    }
    const GuideStep step = m_guide.steps[m_next];
    const QString prompt = promptFor(number(), step.click.has_value(), m_captions[m_next]);
    whenDone(runInBackground([step, number = number(), marks = m_guide.markClicks, redact = m_guide.redact] {
                 return StepsExport::annotated(step, int(number), marks, redact);
             }),
             this, [this, id = step.id, prompt](const QImage &image) {
                 whenDone(m_claude.ask(prompt, image, QStringLiteral("low")), this,
                          [this, id](const Result<QString> &reply) { replied(id, reply); });
             });
}

void CaptionWriter::replied(const QUuid &step, const Result<QString> &reply)
{
    const QString reason = reply ? QString() : reply.error().message;
    m_sameReason = !reply && reason == m_lastReason ? m_sameReason + 1 : 1;
    m_lastReason = reason;
    ++m_next;
    if (reply) {
        if (const QString caption = stripped(*reply); !caption.isEmpty())
            Q_EMIT written(step, caption);
    } else {
        Log::error(QStringLiteral("Steps: a caption stays as it was"), reply.error());
        if (!m_failure)
            m_failure = reply.error();
        if (reply.error().kind == Error::Kind::Denied || m_sameReason >= kConcernsAll)
            m_next = m_guide.steps.size();
    }
    writeNext();
}
