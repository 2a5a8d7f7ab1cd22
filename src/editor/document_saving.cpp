#include "editor/document_saving.h"

#include "base/clock.h"
#include "base/log.h"
#include "base/notice.h"
#include "document/draft.h"
#include "document/image_files.h"
#include "editor/editor_session.h"
#include "editor/editor_sheets.h"
#include "editor/texts.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

const QString kDoneSymbol = QStringLiteral("checkmark.circle.fill");
const QString kWarningSymbol = QStringLiteral("exclamationmark.triangle.fill");

// The kinds of files that are written as what their names say.
bool isWritable(const QString &path)
{
    static const QStringList suffixes{QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                      QStringLiteral("heic")};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

QString savedNotice(const QString &path)
{
    return EditorTexts::tr("Saved %1").arg(QFileInfo(path).fileName());
}

} // namespace

// The saves of one document into its file, one after the other: of those that wait only the last counts.
// Belongs to the program, and goes when all is done.
class SaveRun : public QObject {
public:
    using Done = std::function<void(const FinishedImage &, const QString &path, const Result<QByteArray> &)>;

    struct Order {
        FinishedImage finished;
        QString path;
        std::optional<FileHistory> history; // of a file of the Library
    };

    SaveRun(EditorPorts &ports)
        : QObject(&ports.pending),
          m_library(ports.library),
          m_notices(ports.notices),
          m_pending(ports.pending),
          m_clock(ports.clock)
    {}

    // Told of each save while there is a window; without one, failures become notices.
    Done done;
    std::function<void()> ended;

    void save(Order order)
    {
        if (std::exchange(m_isWriting, true))
            m_next = std::move(order);
        else
            write(std::move(order));
    }

private:
    void write(Order order)
    {
        // The digest of what was written, by which a later draft knows its picture.
        const auto written = runInBackground([order, now = m_clock.now()]() -> Result<QByteArray> {
            const QImage image = order.finished.exported();
            const auto saved =
                order.history ? order.history->save(image, order.finished.base, order.finished.project(), now)
                              : ImageFiles::write(image, order.path);
            if (!saved)
                return std::unexpected(saved.error());
            return Draft::digestOf(order.path);
        });
        m_pending.keep(QStringLiteral("saving ") + QFileInfo(order.path).fileName(), written);
        whenDone(written, this, [this, order](const Result<QByteArray> &digest) { finish(order, digest); });
    }

    void finish(const Order &order, const Result<QByteArray> &digest)
    {
        if (digest) {
            m_library.postChanged();
            m_notices.post(savedNotice(order.path), kDoneSymbol);
        } else if (!done) {
            Log::error(QStringLiteral("Saving failed after the window was closed"), digest.error());
            m_notices.post(digest.error().message, kWarningSymbol);
        }
        if (done)
            done(order.finished, order.path, digest);
        if (auto next = std::exchange(m_next, std::nullopt); next && digest)
            return write(*std::move(next));
        deleteLater();
        if (ended)
            ended();
    }

    Library &m_library;
    NoticeBoard &m_notices;
    PendingWork &m_pending;
    const Clock &m_clock;
    bool m_isWriting = false;
    std::optional<Order> m_next;
};

DocumentSaving::~DocumentSaving()
{
    if (!m_run)
        return;
    m_run->done = {};
    m_run->ended = {};
}

bool DocumentSaving::isSaving() const
{
    return m_run;
}

void DocumentSaving::save()
{
    m_desk.commitText();
    if (m_desk.session.saveHandler) {
        m_desk.session.saveHandler(m_desk.document);
        m_desk.document.setSaved(m_desk.document.contents());
        m_desk.ports.notices.post(EditorTexts::tr("Step updated in your guide"),
                                  QStringLiteral("list.number"));
        return;
    }
    const QString path = m_desk.document.fileURL().toLocalFile();
    if (path.isEmpty() || !isWritable(path))
        return saveAs();
    if (!m_run) {
        m_run = new SaveRun(m_desk.ports);
        m_run->done = [this](const FinishedImage &finished, const QString &written,
                             const Result<QByteArray> &digest) { finish(finished, written, digest); };
        m_run->ended = [this] {
            m_run.clear();
            Q_EMIT ended();
        };
    }
    std::optional<FileHistory> history;
    if (m_desk.isInLibrary())
        history.emplace(m_desk.ports.library, path);
    m_run->save({FinishedImage(m_desk.document), path, history});
}

void DocumentSaving::finish(const FinishedImage &finished, const QString &path,
                            const Result<QByteArray> &digest)
{
    if (!digest)
        return EditorSheets::showAlert(m_desk.window, digest.error());
    if (isSamePath(path, m_desk.document.fileURL().toLocalFile()))
        m_desk.document.setFileDigest(*digest);
    m_desk.document.setSaved(finished.contents());
}

void DocumentSaving::saveAs()
{
    m_desk.commitText();
    const QString path = m_desk.document.fileURL().toLocalFile();
    const QString stem = path.isEmpty() ? EditorTexts::tr("Capture") : QFileInfo(path).completeBaseName();
    auto *dialog = new QFileDialog(&m_desk.window, EditorTexts::tr("Save As"));
    dialog->setObjectName(QStringLiteral("saveAs"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    const QString jpeg = EditorTexts::tr("JPEG image (*.jpg *.jpeg)");
    const QString heic = EditorTexts::tr("HEIC image (*.heic)");
    dialog->setNameFilters({EditorTexts::tr("PNG image (*.png)"), jpeg, heic});
    dialog->setDefaultSuffix(QStringLiteral("png"));
    dialog->setDirectory(path.isEmpty() ? m_desk.ports.settings.saveFolder() : QFileInfo(path).path());
    dialog->selectFile(stem + QStringLiteral(".png"));
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog, jpeg, heic](const QString &filter) {
        dialog->setDefaultSuffix(filter == jpeg   ? QStringLiteral("jpg")
                                 : filter == heic ? QStringLiteral("heic")
                                                  : QStringLiteral("png"));
    });
    connect(dialog, &QFileDialog::fileSelected, this, &DocumentSaving::saveInto);
    dialog->open();
}

void DocumentSaving::saveInto(const QString &path)
{
    if (!isWritable(path)) {
        const QString kinds = EditorTexts::tr("Pictures are saved as PNG, JPEG or HEIC.");
        return EditorSheets::showAlert(
            m_desk.window, {Error::Kind::Invalid,
                            EditorTexts::tr("%1 can’t be saved.").arg(QFileInfo(path).fileName()), kinds});
    }
    if (isSamePath(path, m_desk.document.fileURL().toLocalFile()))
        return save();
    Library &library = m_desk.ports.library;
    const bool isInLibrary = m_desk.isInLibrary(path);
    std::optional<FileHistory> replaced;
    if (isInLibrary && QFileInfo::exists(path))
        replaced.emplace(library, path);
    const QString project = replaced ? library.projectDirectory(path) : QString();
    m_desk.onWorkerForGood(
        QStringLiteral("saving ") + QFileInfo(path).fileName(),
        [path, replaced, project, now = m_desk.ports.clock.now()](
            const FinishedImage &finished) -> std::pair<Result<void>, EditorDocument::Contents> {
            if (replaced)
                replaced->saveVersion(now);
            auto written = ImageFiles::write(finished.exported(), path);
            if (written && !project.isEmpty())
                QDir(project).removeRecursively();
            return {std::move(written), finished.contents()};
        },
        [window = QPointer(&m_desk.window), saving = QPointer(this), &library, path, isInLibrary,
         &notices = m_desk.ports.notices](const std::pair<Result<void>, EditorDocument::Contents> &outcome) {
            const auto &[written, contents] = outcome;
            if (!written) {
                if (window)
                    return EditorSheets::showAlert(*window, written.error());
                return notices.post(written.error().message, kWarningSymbol);
            }
            if (isInLibrary)
                library.postChanged();
            notices.post(savedNotice(path), kDoneSymbol);
            // A picture that has no file of its own is safe now.
            if (saving && saving->m_desk.document.fileURL().isEmpty())
                saving->m_desk.document.setSaved(contents);
        });
}
