#include "editor/document_reading.h"

#include "base/notice.h"
#include "document/editor_document.h"
#include "library/library.h"
#include "platform/pasteboard.h"
#include "services/text_recognizer.h"

#include <QFileInfo>

namespace {

int nonEmptyLines(const QString &text)
{
    return static_cast<int>(text.split('\n', Qt::SkipEmptyParts).size());
}

} // namespace

void DocumentReading::grabText()
{
    m_desk.document.setBusy(true);
    m_desk.onWorker(
        this, [](const FinishedImage &finished) { return finished.flattened(); },
        [this](const QImage &image) {
            whenDone(m_desk.ports.recognizer.text(image), this, [this](const Result<QString> &text) {
                m_desk.document.setBusy(false);
                copyRecognized(text.value_or(QString()), false);
            });
        });
}

void DocumentReading::copyTextIn(const QRect &area)
{
    m_desk.onWorker(
        this, [area](const FinishedImage &finished) { return finished.flattened().copy(area); },
        [this](const QImage &image) {
            whenDone(m_desk.ports.recognizer.text(image), this,
                     [this](const Result<QString> &text) { copyRecognized(text.value_or(QString()), true); });
        });
}

void DocumentReading::copyRecognized(const QString &text, bool fromArea)
{
    if (text.isEmpty()) {
        m_desk.ports.notices.post(fromArea ? "No text found in that area" : "No text found",
                                  "text.magnifyingglass");
        return;
    }
    m_desk.ports.pasteboard.setText(text);
    // The whole picture always speaks of lines, a part of it counts.
    const bool single = fromArea && !text.contains('\n');
    const QString words =
        single ? QStringLiteral("Copied %1 line of text") : QStringLiteral("Copied %1 lines of text");
    m_desk.ports.notices.post(words.arg(nonEmptyLines(text)), "text.viewfinder");
}

void DocumentReading::redact(Redaction::Mode mode)
{
    Redaction::redact(m_desk.document, m_desk.ports.recognizer, mode, [this, mode](int count) {
        const Notice notice = Redaction::notice(mode, count);
        m_desk.ports.notices.post(notice.text, notice.symbol);
    });
}

void DocumentReading::runAI(ClaudeClient::Action action)
{
    m_desk.document.setBusy(true);
    m_desk.onWorker(
        this, [](const FinishedImage &finished) { return finished.flattened(); },
        [this, action](const QImage &image) {
            whenDone(m_desk.ports.claude.run(action, image), this,
                     [this, action](const Result<QString> &reply) {
                         m_desk.document.setBusy(false);
                         if (reply)
                             finishAI(action, *reply);
                         else
                             m_desk.showError(reply.error());
                     });
        });
}

void DocumentReading::finishAI(ClaudeClient::Action action, const QString &reply)
{
    if (action != ClaudeClient::Action::Name) {
        m_desk.document.setAIResult(AIResult{QUuid::createUuid(), ClaudeClient::title(action), reply});
        return;
    }
    if (m_desk.isInLibrary()) {
        if (const auto renamed =
                m_desk.ports.library.rename(m_desk.document.fileURL().toLocalFile(), reply)) {
            m_desk.document.setFileURL(QUrl::fromLocalFile(*renamed));
            m_desk.ports.notices.post(
                QStringLiteral("Renamed to “%1”").arg(QFileInfo(*renamed).completeBaseName()), "sparkles");
            return;
        }
    }
    m_desk.document.setAIResult(AIResult{QUuid::createUuid(), QStringLiteral("Suggested Name"), reply});
}
