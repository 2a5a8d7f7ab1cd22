#include "editor/document_saving.h"

#include "base/clock.h"
#include "base/log.h"
#include "base/notice.h"
#include "document/editor_document.h"
#include "document/image_files.h"
#include "editor/editor_sheets.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "settings/app_settings.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace {

constexpr auto doneSymbol = "checkmark.circle.fill";

} // namespace

void DocumentSaving::save()
{
    m_desk.commitText();
    if (m_desk.document.saveHandler) {
        m_desk.document.saveHandler(m_desk.document);
        m_desk.ports.notices.post("Step updated in your guide", "list.number");
        return;
    }
    if (m_desk.document.fileURL().isEmpty())
        return saveAs();
    if (m_isSaving) {
        m_saveAgain = true;
        return;
    }
    m_isSaving = true;
    const QString path = m_desk.document.fileURL().toLocalFile();
    std::optional<FileHistory> history;
    if (m_desk.isInLibrary())
        history.emplace(m_desk.ports.library, path);
    const auto saved = runInBackground([finished = FinishedImage(m_desk.document), path, history,
                                        now = m_desk.ports.clock.now()]() -> Result<void> {
        if (history)
            return history->save(finished.exported(), finished.base, finished.project(), now);
        return ImageFiles::write(finished.exported(), path);
    });
    // The Library outlives the window: a save that is under way ends in order although its window has been
    // closed.
    Library *library = &m_desk.ports.library;
    NoticeBoard *notices = &m_desk.ports.notices;
    whenDone(saved, library, [self = QPointer(this), library, notices, path](const Result<void> &result) {
        if (result) {
            library->postChanged();
            notices->post("Saved " + QFileInfo(path).fileName(), doneSymbol);
        } else if (!self) {
            Log::error("Saving failed after the window was closed", result.error());
            notices->post(result.error().message, "exclamationmark.triangle.fill");
        }
        if (self)
            self->finishSave(result);
    });
}

void DocumentSaving::finishSave(const Result<void> &result)
{
    m_isSaving = false;
    if (!result) {
        m_saveAgain = false;
        EditorSheets::showAlert(m_desk.window, result.error());
    }
    if (std::exchange(m_saveAgain, false))
        return save();
    Q_EMIT ended();
}

void DocumentSaving::saveAs()
{
    m_desk.commitText();
    const QString path = m_desk.document.fileURL().toLocalFile();
    const QString stem = path.isEmpty() ? QStringLiteral("Capture") : QFileInfo(path).completeBaseName();
    auto *dialog = new QFileDialog(&m_desk.window, "Save As");
    dialog->setObjectName("saveAs");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters({"PNG image (*.png)", "JPEG image (*.jpg *.jpeg)", "HEIC image (*.heic)"});
    dialog->setDefaultSuffix("png");
    dialog->setDirectory(path.isEmpty() ? m_desk.ports.settings.saveFolder() : QFileInfo(path).path());
    dialog->selectFile(stem + ".png");
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString &filter) {
        dialog->setDefaultSuffix(filter.startsWith("JPEG")   ? "jpg"
                                 : filter.startsWith("HEIC") ? "heic"
                                                             : "png");
    });
    connect(dialog, &QFileDialog::fileSelected, this, &DocumentSaving::saveCopy);
    dialog->open();
}

void DocumentSaving::saveCopy(const QString &path)
{
    m_desk.onWorker(
        this, [path](const FinishedImage &finished) { return ImageFiles::write(finished.exported(), path); },
        [this, path](const Result<void> &written) {
            if (!written)
                return EditorSheets::showAlert(m_desk.window, written.error());
            if (m_desk.isInLibrary(path))
                m_desk.ports.library.postChanged();
            m_desk.ports.notices.post("Saved " + QFileInfo(path).fileName(), doneSymbol);
        });
}
