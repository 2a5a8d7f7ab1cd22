#include "editor/document_saving.h"

#include "base/atomic_file.h"
#include "base/clock.h"
#include "base/file_tree.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/read_file.h"
#include "document/draft.h"
#include "document/image_files.h"
#include "document/project_save.h"
#include "editor/draft_keeper.h"
#include "editor/editor_session.h"
#include "editor/editor_sheets.h"
#include "editor/texts.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "settings/app_settings.h"
#include "ui/sheet.h"

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

// Where a picture was written, and the digest of the file, by which a later draft knows its picture.
struct SavedFile {
    QString path;
    QByteArray digest;
};

QString savedNotice(const SavedFile &saved, const QString &wanted)
{
    const QString name = QFileInfo(saved.path).fileName();
    if (saved.path == wanted)
        return EditorTexts::tr("Saved %1").arg(name);
    return EditorTexts::tr("Saved as %1: %2 files can’t hold a picture of this size")
        .arg(name, QFileInfo(wanted).suffix().toUpper());
}

QString savedSymbol(const SavedFile &saved, const QString &wanted)
{
    return saved.path == wanted ? kDoneSymbol : kWarningSymbol;
}

// A new file beside the one that can't hold the picture.
Result<SavedFile> writeAsPng(const QImage &image, const QString &wanted)
{
    const QFileInfo info(wanted);
    const QByteArray bytes = ImageFiles::encode(image, ImageFiles::Type::Png);
    if (bytes.isEmpty())
        return fail(EditorTexts::tr("%1 can’t be saved.").arg(info.fileName()));
    const auto path =
        AtomicFile::writeNew(info.path(), info.completeBaseName(), QStringLiteral("png"), bytes);
    if (!path)
        return std::unexpected(path.error());
    return SavedFile{*path, ReadFile::digest(*path)};
}

} // namespace

// The saves of one document into its file, one after the other: of those that wait only the last counts.
// Follows the file when it is renamed meanwhile. Belongs to the program, and goes when all is done.
class SaveRun : public QObject {
public:
    struct Order {
        FinishedImage finished;
        QString path;
        bool isInLibrary = false;
    };
    using Saved = Result<SavedFile>;
    using Done = std::function<void(const Order &, const Saved &)>;

    SaveRun(EditorPorts &ports)
        : QObject(&ports.pending),
          m_library(ports.library),
          m_notices(ports.notices),
          m_pending(ports.pending),
          m_clock(ports.clock)
    {
        connect(&m_library, &Library::renamed, this, &SaveRun::followRename);
    }

    // Told of each save while there is a window; without one, failures become notices.
    Done done;
    std::function<void()> ended;

    void save(Order order)
    {
        if (m_current)
            m_next = std::move(order);
        else
            write(std::move(order));
    }

    // The window has closed: of its edits a draft was kept that names the file as it was before this.
    void letGo(const DraftPlace &draft, const EditorDocument::Contents &contents)
    {
        done = {};
        ended = {};
        m_draft = draft;
        m_lastContents = contents;
    }

private:
    // `stray` is what an earlier run wrote under a name that the file no longer has.
    struct Stray {
        QString path;
        QString project;
        QByteArray digest;
    };

    void followRename(const QString &oldPath, const QString &newPath)
    {
        if (m_current && isSamePath(m_current->path, oldPath))
            m_renamedTo = newPath;
        if (m_next && isSamePath(m_next->path, oldPath))
            m_next->path = newPath;
    }

    void write(Order order, const std::optional<Stray> &stray = {})
    {
        m_renamedTo.clear();
        m_current = order;
        std::optional<FileHistory> history;
        if (order.isInLibrary)
            history.emplace(m_library, order.path);
        const auto written = runInBackground([order, history, stray, now = m_clock.now()]() -> Saved {
            const QImage image = order.finished.exported();
            if (ImageFiles::pathThatHolds(order.path, image.size()) != order.path)
                return writeAsPng(image, order.path);
            const auto saved = history
                                   ? history->save(image, order.finished.base, order.finished.project(), now)
                                   : ImageFiles::write(image, order.path);
            if (!saved)
                return std::unexpected(saved.error());
            if (stray && ReadFile::digest(stray->path) == stray->digest) {
                QFile::remove(stray->path);
                if (ProjectSave::owner(stray->project) == QFileInfo(stray->path).fileName())
                    FileTree::remove(stray->project);
            }
            return SavedFile{order.path, ReadFile::digest(order.path)};
        });
        m_pending.keep(QStringLiteral("saving ") + QFileInfo(order.path).fileName(), written);
        whenDone(written, this, [this](const Saved &saved) { follow(saved); });
    }

    void follow(const Saved &saved)
    {
        Order order = *m_current;
        if (!m_renamedTo.isEmpty()) {
            std::optional<Stray> stray;
            if (saved)
                stray = {order.path, m_library.projectDirectory(order.path), saved->digest};
            order.path = m_renamedTo;
            return write(std::move(order), stray);
        }
        if (!saved || saved->path == order.path || !order.isInLibrary)
            return finish(saved);
        // A new file of the Library: the objects go with it.
        const FileHistory history(m_library, saved->path);
        const auto kept = runInBackground([order, history, saved]() -> Saved {
            const auto project = history.saveProject(order.finished.base, order.finished.project());
            return project ? saved : std::unexpected(project.error());
        });
        m_pending.keep(QStringLiteral("saving ") + QFileInfo(saved->path).fileName(), kept);
        whenDone(kept, this, [this](const Saved &result) { finish(result); });
    }

    void finish(const Saved &saved)
    {
        const Order order = *std::exchange(m_current, std::nullopt);
        if (saved) {
            m_library.postChanged();
            m_notices.post(savedNotice(*saved, order.path), savedSymbol(*saved, order.path));
            if (!m_draft.directory.isEmpty() && !m_next)
                DraftKeeper::settle(m_draft, m_lastContents, order.finished.contents(), saved->digest);
        } else if (!done) {
            Log::error(QStringLiteral("Saving failed after the window was closed"), saved.error());
            m_notices.post(saved.error().message, kWarningSymbol);
        }
        if (done)
            done(order, saved);
        if (auto next = std::exchange(m_next, std::nullopt); next && saved) {
            if (next->path == order.path)
                next->path = saved->path;
            return write(*std::move(next));
        }
        deleteLater();
        if (ended)
            ended();
    }

    Library &m_library;
    NoticeBoard &m_notices;
    PendingWork &m_pending;
    const Clock &m_clock;
    std::optional<Order> m_current;
    std::optional<Order> m_next;
    QString m_renamedTo; // the file of the current order
    DraftPlace m_draft;
    EditorDocument::Contents m_lastContents;
};

DocumentSaving::~DocumentSaving()
{
    if (m_run)
        m_run->letGo(m_draft, m_desk.document.contents());
}

void DocumentSaving::setDraft(const DraftPlace &draft)
{
    m_draft = draft;
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
        m_run->done = [this](const SaveRun::Order &order, const SaveRun::Saved &saved) {
            if (!saved)
                return Sheet::alert(m_desk.window, saved.error());
            finish(order.finished, order.path, saved->path, saved->digest);
        };
        m_run->ended = [this] {
            m_run.clear();
            Q_EMIT ended();
        };
    }
    m_run->save({FinishedImage(m_desk.document), path, m_desk.isInLibrary()});
}

void DocumentSaving::finish(const FinishedImage &finished, const QString &wanted, const QString &path,
                            const QByteArray &digest)
{
    const bool isOwn = isSamePath(wanted, m_desk.document.fileURL().toLocalFile());
    if (isOwn)
        m_desk.document.setFileDigest(digest);
    // Ends the draft that lies beside the old file.
    m_desk.document.setSaved(finished.contents());
    if (isOwn && path != wanted)
        m_desk.document.setFileURL(QUrl::fromLocalFile(path));
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
        return Sheet::alert(m_desk.window,
                            {Error::Kind::Invalid,
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
            const FinishedImage &finished) -> std::pair<Result<SavedFile>, EditorDocument::Contents> {
            const QImage image = finished.exported();
            if (ImageFiles::pathThatHolds(path, image.size()) != path)
                return {writeAsPng(image, path), finished.contents()};
            if (replaced)
                replaced->saveVersion(now);
            const auto written = ImageFiles::write(image, path);
            if (!written)
                return {std::unexpected(written.error()), finished.contents()};
            if (!project.isEmpty())
                FileTree::remove(project);
            return {SavedFile{path, {}}, finished.contents()};
        },
        [window = QPointer(&m_desk.window), saving = QPointer(this), &library, path, isInLibrary,
         &notices =
             m_desk.ports.notices](const std::pair<Result<SavedFile>, EditorDocument::Contents> &outcome) {
            const auto &[written, contents] = outcome;
            if (!written) {
                if (window)
                    return Sheet::alert(*window, written.error());
                return notices.post(written.error().message, kWarningSymbol);
            }
            if (isInLibrary)
                library.postChanged();
            notices.post(savedNotice(*written, path), savedSymbol(*written, path));
            // A picture that has no file of its own is safe now.
            if (saving && saving->m_desk.document.fileURL().isEmpty())
                saving->m_desk.document.setSaved(contents);
        });
}
