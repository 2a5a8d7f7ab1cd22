#include "editor/document_reading.h"

#include "base/notice.h"
#include "document/editor_document.h"
#include "editor/editor_session.h"
#include "editor/texts.h"
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
    m_desk.onWorker(
        this, [](const FinishedImage &finished) { return finished.flattened(); },
        [this, work = m_desk.session.beginWork()](const QImage &image) mutable {
            whenDone(m_desk.ports.recognizer.text(image), this,
                     [this, work = std::move(work)](const Result<QString> &text) mutable {
                         work.reset();
                         copyRecognized(text.value_or(QString()), Extent::Whole);
                     });
        });
}

void DocumentReading::copyTextIn(const QRect &area)
{
    m_desk.onWorker(
        this, [area](const FinishedImage &finished) { return finished.flattened().copy(area); },
        [this](const QImage &image) {
            whenDone(m_desk.ports.recognizer.text(image), this, [this](const Result<QString> &text) {
                copyRecognized(text.value_or(QString()), Extent::Area);
            });
        });
}

void DocumentReading::copyRecognized(const QString &text, Extent extent)
{
    if (text.isEmpty()) {
        m_desk.ports.notices.post(extent == Extent::Area ? EditorTexts::tr("No text found in that area")
                                                         : EditorTexts::tr("No text found"),
                                  QStringLiteral("text.magnifyingglass"));
        return;
    }
    m_desk.ports.pasteboard.setText(text);
    const int lines = nonEmptyLines(text);
    // The whole picture always speaks of lines, a part of it counts.
    const bool isSingle = extent == Extent::Area && !text.contains('\n');
    m_desk.ports.notices.post(
        (isSingle ? EditorTexts::tr("Copied %1 line of text") : EditorTexts::tr("Copied %1 lines of text"))
            .arg(lines),
        QStringLiteral("text.viewfinder"));
}

void DocumentReading::redact(Redaction::Mode mode)
{
    Redaction::redact(m_desk.document, m_desk.session, m_desk.ports.recognizer, mode,
                      [this, mode](int count) {
                          const Notice notice = Redaction::notice(mode, count);
                          m_desk.ports.notices.post(notice.text, notice.symbol);
                      });
}

void DocumentReading::runAI(ClaudeClient::Action action)
{
    m_desk.onWorker(
        this, [](const FinishedImage &finished) { return finished.flattened(); },
        [this, action, work = m_desk.session.beginWork()](const QImage &image) mutable {
            whenDone(m_desk.ports.claude.run(action, image), this,
                     [this, action, work = std::move(work)](const Result<QString> &reply) mutable {
                         work.reset();
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
        m_desk.session.showResult({QUuid::createUuid(), ClaudeClient::title(action), reply});
        return;
    }
    if (m_desk.isInLibrary()) {
        if (const auto renamed =
                m_desk.ports.library.rename(m_desk.document.fileURL().toLocalFile(), reply)) {
            m_desk.document.setFileURL(QUrl::fromLocalFile(*renamed));
            m_desk.ports.notices.post(
                EditorTexts::tr("Renamed to “%1”").arg(QFileInfo(*renamed).completeBaseName()),
                QStringLiteral("sparkles"));
            return;
        }
    }
    m_desk.session.showResult({QUuid::createUuid(), EditorTexts::tr("Suggested Name"), reply});
}
