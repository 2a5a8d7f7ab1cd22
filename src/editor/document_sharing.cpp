#include "editor/document_sharing.h"

#include "base/notice.h"
#include "document/editor_document.h"
#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/pins.h"
#include "platform/pasteboard.h"
#include "platform/workspace.h"
#include "services/uploader.h"
#include "ui/symbol.h"

#include <QDrag>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QUrlQuery>

namespace {

constexpr auto doneSymbol = "checkmark.circle.fill";

} // namespace

void DocumentSharing::copyImage()
{
    m_desk.onWorker(
        this,
        [](const FinishedImage &finished) {
            return ImageFiles::encode(finished.exported(), ImageFiles::Type::Png);
        },
        [this](const QByteArray &png) {
            m_desk.ports.pasteboard.setFlavors({{"image/png", png}});
            m_desk.ports.notices.post("Image copied to clipboard", doneSymbol);
        });
}

void DocumentSharing::copyFile()
{
    m_desk.withTemporaryFile(this, [this](const QString &path) {
        m_desk.ports.pasteboard.setFile(QUrl::fromLocalFile(path));
        m_desk.ports.notices.post("Image file copied to clipboard", doneSymbol);
    });
}

void DocumentSharing::pin()
{
    m_desk.onWorker(
        this, [](const FinishedImage &finished) { return finished.exported(); },
        [this](const QImage &image) { m_desk.ports.pins.pin(image); });
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
        menu->addAction(symbolIcon("doc.on.doc"), "Copy File", this, [this, file] {
            m_desk.ports.pasteboard.setFile(file);
            m_desk.ports.notices.post("Image file copied to clipboard", doneSymbol);
        });
        menu->addAction(symbolIcon("paperplane"), "Send by Email…", this, [this, file, report] {
            QUrl mail("mailto:");
            QUrlQuery query;
            query.addQueryItem("subject", m_desk.window.windowTitle());
            query.addQueryItem("attach", file.toLocalFile());
            mail.setQuery(query);
            report(m_desk.ports.workspace.open(mail));
        });
        menu->addAction(symbolIcon("photo"), "Open in Another Program", this,
                        [this, file, report] { report(m_desk.ports.workspace.open(file)); });
        menu->addAction(symbolIcon("folder"), "Show in File Manager", this,
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
    m_desk.document.setBusy(true);
    m_desk.onWorker(
        this, [](const FinishedImage &finished) { return finished.exported(); },
        [this](const QImage &image) {
            whenDone(m_desk.ports.uploader.imgur(image), this, [this](const Result<QUrl> &link) {
                m_desk.document.setBusy(false);
                if (!link)
                    return m_desk.showError(link.error());
                m_desk.ports.pasteboard.setText(link->toString());
                const QString host = link->host().isEmpty() ? QStringLiteral("i.imgur.com") : link->host();
                m_desk.ports.notices.post("Link copied: " + host, "link");
            });
        });
}
