#include "editor/document_sharing.h"

#include "base/log.h"
#include "base/notice.h"
#include "document/editor_document.h"
#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/editor_session.h"
#include "editor/object_clipboard.h"
#include "editor/texts.h"
#include "pins/pins.h"
#include "platform/pasteboard.h"
#include "platform/workspace.h"
#include "services/uploader.h"
#include "ui/symbol.h"

#include <QDrag>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QUrlQuery>

namespace {

const QString kDoneSymbol = QStringLiteral("checkmark.circle.fill");
const QString kWarningSymbol = QStringLiteral("exclamationmark.triangle.fill");

} // namespace

void DocumentSharing::copyImage()
{
    m_desk.onWorkerForGood(
        QStringLiteral("copying an image"),
        [](const FinishedImage &finished) {
            return ImageFiles::encode(finished.exported(), ImageFiles::Type::Png);
        },
        [&pasteboard = m_desk.ports.pasteboard, &notices = m_desk.ports.notices,
         turn = m_desk.ports.pasteboard.takeTurn()](const QByteArray &png) {
            if (png.isEmpty())
                return notices.post(EditorTexts::tr("The image could not be copied."), kWarningSymbol);
            if (pasteboard.placeFlavors({{QStringLiteral("image/png"), png}}, turn))
                notices.post(EditorTexts::tr("Image copied to clipboard"), kDoneSymbol);
            else
                Log::info(QStringLiteral("Something newer was copied; a copied image is dropped"));
        });
}

void DocumentSharing::copySelection()
{
    m_desk.commitText();
    if (!m_desk.document.selectedID())
        return copyImage();
    const auto copied =
        ObjectClipboard::copy(m_desk.document, m_desk.ports.pasteboard, &m_desk.ports.pending);
    m_desk.ports.pending.keep(QStringLiteral("copying an object"), copied);
}

void DocumentSharing::cutSelection()
{
    if (!m_desk.document.selectedID())
        return;
    copySelection();
    m_desk.document.deleteSelected();
}

void DocumentSharing::copyFile()
{
    m_desk.withTemporaryFile(this, [this, turn = m_desk.ports.pasteboard.takeTurn()](const QString &path) {
        if (m_desk.ports.pasteboard.placeFile(QUrl::fromLocalFile(path), turn))
            tellFileCopied();
        else
            Log::info(QStringLiteral("Something newer was copied; a copied file is dropped"));
    });
}

void DocumentSharing::tellFileCopied()
{
    m_desk.ports.notices.post(EditorTexts::tr("Image file copied to clipboard"), kDoneSymbol);
}

void DocumentSharing::pin()
{
    m_desk.onWorkerForGood(
        QStringLiteral("pinning an image"), [](const FinishedImage &finished) { return finished.exported(); },
        [&pins = m_desk.ports.pins](const QImage &image) { pins.pin(image); });
}

void DocumentSharing::goToPin()
{
    m_desk.ports.pins.goToNext();
}

// The desktop has no picker of programs to share with; these are the ways it has.
void DocumentSharing::share()
{
    m_desk.withTemporaryFile(this, [this](const QString &path) {
        auto *menu = new QMenu(&m_desk.window);
        menu->setObjectName("shareMenu");
        menu->setAttribute(Qt::WA_DeleteOnClose);
        const QUrl file = QUrl::fromLocalFile(path);
        const auto report = [this](const Result<void> &result) {
            if (!result)
                m_desk.showError(result.error());
        };
        menu->addAction(symbolIcon("doc.on.doc"), EditorTexts::tr("Copy File"), this, [this, file] {
            m_desk.ports.pasteboard.setFile(file);
            tellFileCopied();
        });
        menu->addAction(symbolIcon("paperplane"), EditorTexts::tr("Send by Email…"), this,
                        [this, file, report] {
                            QUrl mail("mailto:");
                            QUrlQuery query;
                            query.addQueryItem("subject", m_desk.title());
                            query.addQueryItem("attach", file.toLocalFile());
                            mail.setQuery(query);
                            report(m_desk.ports.workspace.open(mail));
                        });
        menu->addAction(symbolIcon("photo"), EditorTexts::tr("Open in Another Program"), this,
                        [this, file, report] { report(m_desk.ports.workspace.open(file)); });
        menu->addAction(symbolIcon("folder"), EditorTexts::tr("Show in File Manager"), this,
                        [this, path, report] { report(m_desk.ports.workspace.reveal(path)); });
        const QSize size = menu->sizeHint();
        menu->popup(m_desk.canvas.mapToGlobal(QPoint(m_desk.canvas.width() - size.width() - 8, 8)));
    });
}

void DocumentSharing::prepareDrag()
{
    m_dragFile.clear();
    m_wantsDrag = false;
    m_desk.withTemporaryFile(this, [this](const QString &path) {
        m_dragFile = path;
        if (m_wantsDrag)
            startDrag();
    });
}

void DocumentSharing::startDrag()
{
    m_wantsDrag = true;
    if (m_dragFile.isEmpty() || !(QGuiApplication::mouseButtons() & Qt::LeftButton))
        return;
    m_wantsDrag = false;
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(m_dragFile)});
    auto *drag = new QDrag(&m_desk.window);
    drag->setMimeData(data);
    const QImage preview =
        m_desk.document.base().scaled(160, 160, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    drag->setPixmap(QPixmap::fromImage(preview));
    drag->exec(Qt::CopyAction); // the toolkit knows no other way of dragging
}

void DocumentSharing::upload()
{
    Uploader &uploader = m_desk.ports.uploader;
    PendingWork &pending = m_desk.ports.pending;
    const auto told = [desk = m_desk, sharing = QPointer(this), &pasteboard = m_desk.ports.pasteboard,
                       &notices = m_desk.ports.notices,
                       turn = m_desk.ports.pasteboard.takeTurn()](const Result<QUrl> &link) {
        if (!link) {
            // Told where the window is, if it still is.
            if (sharing)
                return desk.showError(link.error());
            return notices.post(link.error().message, kWarningSymbol);
        }
        if (!pasteboard.placeText(link->toString(), turn)) {
            // What the user copied meanwhile stays; the link must not be lost either.
            Log::info(QStringLiteral("Something newer was copied than the link ") + link->toString());
            return notices.post(EditorTexts::tr("Uploaded: %1").arg(link->toString()),
                                QStringLiteral("link"));
        }
        const QString host = link->host().isEmpty() ? QStringLiteral("i.imgur.com") : link->host();
        notices.post(EditorTexts::tr("Link copied: %1").arg(host), QStringLiteral("link"));
    };
    m_desk.onWorkerForGood(
        QStringLiteral("uploading an image"),
        [](const FinishedImage &finished) { return finished.exported(); },
        [&uploader, &pending, told, work = m_desk.session.beginWork()](const QImage &image) mutable {
            const auto link = uploader.imgur(image);
            pending.keep(QStringLiteral("uploading an image"), link);
            whenDone(link, &pending, [told, work = std::move(work)](const Result<QUrl> &result) mutable {
                work.reset();
                told(result);
            });
        });
}
