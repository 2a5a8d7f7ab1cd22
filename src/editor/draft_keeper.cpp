#include "editor/draft_keeper.h"

#include "base/log.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "base/read_file.h"
#include "document/draft.h"
#include "document/editor_document.h"
#include "editor/texts.h"
#include "library/library.h"

#include <QThreadPool>
#include <chrono>

namespace {

// With the time to write it, well within two seconds.
constexpr std::chrono::milliseconds kSoon{1000};

// All drafts are written by one thread, one after the other.
QThreadPool &writer()
{
    static QThreadPool pool;
    pool.setMaxThreadCount(1);
    return pool;
}

} // namespace

DraftKeeper::DraftKeeper(const EditorDesk &desk) : m_desk(desk), m_directory(desk.document.draftDirectory())
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(kSoon);
    connect(&m_soon, &QTimer::timeout, this, [this] {
        if (m_writing.isRunning())
            m_soon.start();
        else
            keepNow();
    });
    connect(&m_desk.document, &EditorDocument::changed, this, &DraftKeeper::follow);
    if (m_desk.document.isFromDraft())
        m_writtenTo = directory();
    const QString file = m_desk.document.fileURL().toLocalFile();
    if (!file.isEmpty() && m_desk.document.fileDigest().isEmpty())
        whenDone(runInBackground([file] { return ReadFile::digest(file); }), this,
                 [this](const QByteArray &digest) {
                     if (m_desk.document.fileDigest().isEmpty())
                         m_desk.document.setFileDigest(digest);
                 });
}

DraftKeeper::~DraftKeeper()
{
    if (m_isDirty)
        keepNow();
}

void DraftKeeper::finishAll()
{
    writer().waitForDone();
}

DraftPlace DraftKeeper::place() const
{
    return {m_writtenTo, m_desk.title()};
}

void DraftKeeper::settle(const DraftPlace &draft, const EditorDocument::Contents &kept,
                         const EditorDocument::Contents &saved, const QByteArray &digest)
{
    (void)QtConcurrent::run(&writer(), [=] {
        if (kept == saved)
            return Draft::remove(draft.directory);
        if (const auto written = Draft::write(draft.directory, kept, {digest, draft.title}); !written)
            Log::error(QStringLiteral("Unsaved edits could not be kept in ") + draft.directory,
                       written.error());
    });
}

void DraftKeeper::follow(EditorDocument::Field field)
{
    switch (field) {
    case EditorDocument::Field::Base:
    case EditorDocument::Field::Annotations:
    case EditorDocument::Field::Effects:
        m_isDirty = true;
        if (!m_soon.isActive())
            m_soon.start();
        break;
    case EditorDocument::Field::Saved:
        keepNow(); // the file is another one now, to which an older draft doesn't belong
        break;
    case EditorDocument::Field::Selection:
    case EditorDocument::Field::Tool:
    case EditorDocument::Field::Style:
    case EditorDocument::Field::File:
    case EditorDocument::Field::History:
        break;
    }
}

QString DraftKeeper::directory()
{
    const QString file = m_desk.document.fileURL().toLocalFile();
    if (m_desk.isInLibrary(file))
        return Draft::directoryOf(file, m_desk.ports.library.projectDirectory(file));
    if (m_directory.isEmpty() && !m_desk.ports.draftFolder.isEmpty())
        m_directory = Draft::newDirectory(m_desk.ports.draftFolder);
    return m_directory;
}

void DraftKeeper::keepNow()
{
    m_soon.stop();
    m_isDirty = false;
    const QString to = directory();
    EditorDocument &document = m_desk.document;
    if (to.isEmpty())
        return;
    if (!document.hasUnsavedChanges()) {
        m_writtenBase = 0;
        if (!std::exchange(m_writtenTo, QString()).isEmpty())
            m_writing = QtConcurrent::run(&writer(), [to]() -> Result<void> {
                Draft::remove(to);
                return {};
            });
        return;
    }
    const qint64 base = document.base().cacheKey();
    const bool keepsBase = std::exchange(m_writtenBase, base) == base && m_writtenTo == to;
    m_writtenTo = to;
    const bool isOfFile = m_desk.isInLibrary();
    const Draft::Origin origin{isOfFile ? document.fileDigest() : QByteArray(), m_desk.title()};
    m_writing = QtConcurrent::run(&writer(), [to, contents = document.contents(), origin, keepsBase, isOfFile,
                                              file = document.fileURL()] {
        Draft::Origin known = origin;
        if (isOfFile && known.picture.isEmpty())
            known.picture = ReadFile::digest(file.toLocalFile());
        return Draft::write(to, contents, known, keepsBase);
    });
    m_desk.ports.pending.keep(QStringLiteral("keeping the unsaved edits of ") + origin.title, m_writing);
    whenDone(m_writing, this, [this, to](const Result<void> &written) { report(to, written); });
}

void DraftKeeper::report(const QString &directory, const Result<void> &written)
{
    if (written)
        return;
    Log::error(QStringLiteral("Unsaved edits could not be kept in ") + directory, written.error());
    m_writtenBase = 0;
    if (!std::exchange(m_hasComplained, true))
        m_desk.ports.notices.post(
            EditorTexts::tr("Unsaved edits can’t be kept: %1").arg(written.error().message),
            QStringLiteral("exclamationmark.triangle.fill"));
}
