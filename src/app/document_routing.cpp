#include "app/document_routing.h"

#include "app/delivery.h"
#include "app/singleton_windows.h"
#include "app/texts.h"
#include "base/async.h"
#include "base/notice.h"
#include "document/draft.h"
#include "document/image_files.h"
#include "editor/draft_offer.h"
#include "library/library.h"
#include "pins/pins.h"
#include "platform/workspace.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

const auto kWarningSymbol = QStringLiteral("exclamationmark.triangle.fill");

QString extension(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

QString standardized(const QString &path)
{
    return QDir::cleanPath(QDir(path).absolutePath());
}

} // namespace

DocumentRouting::DocumentRouting(EditorPorts ports, QObject *parent)
    : QObject(parent), m_ports(std::move(ports))
{
    m_ports.pins.openEditor = [this](const QImage &image) {
        openEditor(std::make_unique<EditorDocument>(image));
    };
}

DocumentRouting::~DocumentRouting() = default;

void DocumentRouting::openFile(const QString &path)
{
    const QString kind = extension(path);
    if (Library::videoExtensions().contains(kind) && kind != QLatin1String("gif"))
        return openFilm(path);
    if (standardized(QFileInfo(path).path()) == standardized(m_ports.settings.saveFolder()))
        return openLibraryFile(path);
    openForeign(path, true);
}

void DocumentRouting::openLibraryItem(const QString &path)
{
    const QString kind = extension(path);
    if (kind == QLatin1String("gif"))
        return openExternally(path);
    if (kind == QLatin1String("mov") || kind == QLatin1String("mp4"))
        return openFilm(path);
    openLibraryFile(path);
}

void DocumentRouting::openFilm(const QString &path)
{
    if (openVideoEditor)
        openVideoEditor(path);
    else
        openExternally(path);
}

void DocumentRouting::openExternally(const QString &path)
{
    if (const auto opened = m_ports.workspace.open(QUrl::fromLocalFile(path)); !opened)
        m_ports.notices.post(opened.error().message, kWarningSymbol);
}

void DocumentRouting::openLibraryFile(const QString &path)
{
    if (raiseEditor(path) || m_opening.contains(path))
        return;
    m_opening.insert(path);
    const QString project = m_ports.library.projectDirectory(path);
    whenDone(runInBackground([path, project] { return EditorDocument::load(path, project); }), this,
             [this, path](const EditorDocument::Source &source) {
                 m_opening.remove(path);
                 if (!source.base.isNull()) {
                     openEditor(std::make_unique<EditorDocument>(source));
                     if (source.isProjectSetAside)
                         m_ports.notices.post(
                             AppTexts::tr("%1 was changed elsewhere, so its earlier objects were set aside")
                                 .arg(QFileInfo(path).fileName()),
                             kWarningSymbol);
                     return;
                 }
                 // An editor of nothing would write over a file that something else may still read.
                 m_ports.notices.post(
                     AppTexts::tr("%1 can’t be read as a picture").arg(QFileInfo(path).fileName()),
                     kWarningSymbol);
             });
}

bool DocumentRouting::raiseEditor(const QString &path)
{
    for (const auto &editor : m_editors) {
        const QString open = editor->document().fileURL().toLocalFile();
        if (!open.isEmpty() && standardized(open) == standardized(path)) {
            editor->bringToFront();
            return true;
        }
    }
    return false;
}

void DocumentRouting::offerDrafts()
{
    whenDone(runInBackground([folder = m_ports.draftFolder] { return Draft::list(folder); }), this,
             [this](const QList<Draft::Entry> &drafts) {
                 if (drafts.isEmpty())
                     return;
                 auto *offer = new DraftOffer(drafts);
                 connect(offer, &DraftOffer::opened, this, [this, drafts] {
                     for (const Draft::Entry &draft : drafts)
                         openDraft(draft);
                 });
                 connect(offer, &DraftOffer::discarded, this, [this, drafts] {
                     m_ports.pending.keep(QStringLiteral("discarding drafts"), runInBackground([drafts] {
                                              for (const Draft::Entry &draft : drafts)
                                                  Draft::remove(draft.directory);
                                          }));
                 });
                 offer->show();
             });
}

void DocumentRouting::openDraft(const Draft::Entry &draft)
{
    whenDone(runInBackground([draft] { return Draft::open(draft); }), this,
             [this](const std::optional<EditorDocument::Source> &source) {
                 if (source)
                     openEditor(std::make_unique<EditorDocument>(*source));
                 else
                     m_ports.notices.post(AppTexts::tr("Unsaved edits can’t be read"), kWarningSymbol);
             });
}

void DocumentRouting::openForeign(const QString &path, bool reportsFailure)
{
    whenDone(runInBackground([path] { return ImageFiles::read(path); }), this,
             [this, path, reportsFailure](const Result<QImage> &image) {
                 if (image)
                     openEditor(std::make_unique<EditorDocument>(*image));
                 else if (reportsFailure)
                     m_ports.notices.post(AppTexts::tr("Couldn't open %1").arg(QFileInfo(path).fileName()),
                                          kWarningSymbol);
             });
}

void DocumentRouting::openImage()
{
    auto *dialog = new QFileDialog(nullptr, AppTexts::tr("Open Image"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAttribute(Qt::WA_QuitOnClose, false);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(
        AppTexts::tr("Images") +
        QStringLiteral(" (*.png *.jpg *.jpeg *.heic *.heif *.gif *.webp *.tif *.tiff *.bmp *.svg)"));
    dialog->setDirectory(m_ports.settings.saveFolder());
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString &path) { openForeign(path, false); });
    dialog->open();
    dialog->raise();
    dialog->activateWindow();
}

void DocumentRouting::openEditor(const DeliveredPicture &picture)
{
    auto document = std::make_unique<EditorDocument>(picture.image, QUrl::fromLocalFile(picture.path));
    if (picture.backdrop) {
        Effects effects = document->effects();
        effects.backdrop = true;
        document->setEffects(effects);
        document->setSaved(document->contents()); // nothing that the user made
    }
    openEditor(std::move(document));
}

EditorWindowController &DocumentRouting::openEditor(std::unique_ptr<EditorDocument> document)
{
    auto &editor =
        *m_editors.emplace_back(std::make_unique<EditorWindowController>(std::move(document), m_ports));
    editor.onClose = [this](EditorWindowController *closed) { remove(closed); };
    editor.show();
    editor.bringToFront();
    Q_EMIT editorsChanged();
    return editor;
}

void DocumentRouting::remove(EditorWindowController *editor)
{
    const auto found = std::find_if(m_editors.begin(), m_editors.end(),
                                    [editor](const auto &candidate) { return candidate.get() == editor; });
    if (found == m_editors.end())
        return;
    found->release()->deleteLater();
    m_editors.erase(found);
    Q_EMIT editorsChanged();
}

void DocumentRouting::pinLastCapture()
{
    const auto none = [this] {
        m_ports.notices.post(AppTexts::tr("No captures to pin yet"), QStringLiteral("pin.slash"));
    };
    const QStringList items = m_ports.library.items();
    const auto newest = std::find_if(items.begin(), items.end(), [](const QString &path) {
        return !Library::videoExtensions().contains(extension(path));
    });
    if (newest == items.end())
        return none();
    whenDone(runInBackground([path = *newest] { return ImageFiles::read(path); }), this,
             [this, none](const Result<QImage> &image) {
                 if (image)
                     m_ports.pins.pin(*image);
                 else
                     none();
             });
}
