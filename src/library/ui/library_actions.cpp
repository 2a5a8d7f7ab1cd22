#include "library/ui/library_actions.h"

#include "base/notice.h"
#include "document/image_files.h"
#include "library/clipboard.h"
#include "library/model/library_model.h"
#include "library/ui/texts.h"
#include "pins/pins.h"
#include "platform/workspace.h"
#include "ui/sheet.h"
#include "ui/symbol.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QUrl>
#include <QUrlQuery>
#include <QVBoxLayout>

namespace {

const QString kWarning = QStringLiteral("exclamationmark.triangle.fill");

QStringList placesOf(const QList<Library::Outcome> &outcomes)
{
    QStringList places;
    for (const Library::Outcome &outcome : outcomes) {
        if (outcome.result)
            places.append(*outcome.result);
    }
    return places;
}

// Both live as long as the program.
void putBack(Library &library, NoticeBoard &notices, const QStringList &trashed,
             const std::function<void(const QStringList &)> &keep = {})
{
    if (trashed.isEmpty())
        return;
    whenDone(library.putBackInBackground(trashed), &notices,
             [&notices, keep](const QList<Library::Outcome> &outcomes) {
                 if (const auto failure = Library::Outcome::firstFailure(outcomes))
                     notices.post(failure->message, kWarning);
                 if (const int back = Library::Outcome::countOf(outcomes); back > 0)
                     notices.post(LibraryUiTexts::tr("Put %n item(s) back", nullptr, back),
                                  QStringLiteral("arrow.uturn.backward"));
                 QStringList failed;
                 for (const Library::Outcome &outcome : outcomes) {
                     if (!outcome.result && outcome.result.error().kind != Error::Kind::NotFound)
                         failed.append(outcome.path);
                 }
                 if (keep && !failed.isEmpty())
                     keep(failed);
             });
}

} // namespace

LibraryActions::LibraryActions(LibraryPorts ports, QWidget *over)
    : QObject(over), m_ports(std::move(ports)), m_over(over)
{}

bool LibraryActions::isFilm(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    return extension == QLatin1String("mov") || extension == QLatin1String("mp4");
}

void LibraryActions::complain(const QString &text)
{
    m_ports.notices.post(text, kWarning);
}

void LibraryActions::open(const QStringList &paths)
{
    for (const QString &path : paths)
        m_ports.openItem(path);
}

void LibraryActions::setFavorite(const QStringList &paths, bool on)
{
    for (const QString &path : paths)
        m_ports.model.library().catalog().setFavorite(QFileInfo(path).fileName(), on);
}

void LibraryActions::pin(const QString &path)
{
    // The pins outlive this window.
    whenDone(runInBackground([path] { return ImageFiles::read(path); }), &m_ports.pins,
             [pins = &m_ports.pins, notices = &m_ports.notices](const Result<QImage> &image) {
                 if (image)
                     pins->pin(*image);
                 else
                     notices->post(image.error().message, kWarning);
             });
}

void LibraryActions::copy(const QString &path)
{
    if (Library::isVideo(path))
        return copyFile(path);
    NoticeBoard *notices = &m_ports.notices;
    const auto copied = Clipboard::copy(
        m_ports.pasteboard, [path] { return ImageFiles::read(path).value_or(QImage()); }, notices);
    whenDone(copied, notices, [notices](const Result<void> &done) {
        if (done)
            notices->post(LibraryUiTexts::tr("Copied"), QStringLiteral("doc.on.doc"));
        else if (done.error().kind != Error::Kind::Cancelled)
            notices->post(done.error().message, kWarning);
    });
}

void LibraryActions::copyTextSilently(const QString &path)
{
    m_ports.pasteboard.setText(
        m_ports.model.library().catalog().data().texts.value(QFileInfo(path).fileName()));
}

void LibraryActions::copyText(const QString &path)
{
    copyTextSilently(path);
    m_ports.notices.post(LibraryUiTexts::tr("Copied"), QStringLiteral("doc.on.doc"));
}

void LibraryActions::copyFile(const QString &path)
{
    Clipboard::copyFile(m_ports.pasteboard, path);
    m_ports.notices.post(LibraryUiTexts::tr("Copied"), QStringLiteral("doc.on.doc"));
}

void LibraryActions::askName(const QString &title, const QString &button, const QString &name,
                             std::function<void(const QString &)> done)
{
    auto *sheet = new Sheet(m_over, QString(), title);
    sheet->setCardWidth(360);
    auto *field = new QLineEdit(name);
    field->setPlaceholderText(LibraryUiTexts::tr("Name"));
    field->setAccessibleName(LibraryUiTexts::tr("Name"));
    sheet->content()->addWidget(field);
    sheet->addCancelButton(LibraryUiTexts::tr("Cancel"));
    QPushButton *primary = sheet->addPrimaryButton(button);
    primary->setEnabled(!name.trimmed().isEmpty());
    connect(field, &QLineEdit::textChanged, primary,
            [primary](const QString &text) { primary->setEnabled(!text.trimmed().isEmpty()); });
    connect(primary, &QPushButton::clicked, this,
            [field, done = std::move(done)] { done(field->text().trimmed()); });
    sheet->open();
    field->setFocus();
    field->selectAll();
}

void LibraryActions::rename(const QString &path)
{
    const QString name = QFileInfo(path).completeBaseName();
    askName(LibraryUiTexts::tr("Rename"), LibraryUiTexts::tr("Rename"), name,
            [this, path, name](const QString &wanted) {
                if (wanted == name)
                    return;
                if (const auto renamed = m_ports.model.library().rename(path, wanted); !renamed)
                    complain(renamed.error().message);
            });
}

void LibraryActions::addToCollection(const QStringList &paths, const QUuid &id)
{
    LibraryCatalog &catalog = m_ports.model.library().catalog();
    QStringList names;
    for (const QString &path : paths)
        names.append(QFileInfo(path).fileName());
    catalog.add(names, id);
    LibraryMeta meta = catalog.meta();
    if (const LibraryCollection *collection = meta.collection(id))
        m_ports.notices.post(LibraryUiTexts::tr("Added to %1").arg(collection->name),
                             QStringLiteral("folder.badge.plus"));
}

void LibraryActions::newCollection(const QStringList &paths)
{
    askName(LibraryUiTexts::tr("New Collection"), LibraryUiTexts::tr("Create"), {},
            [this, paths](const QString &name) {
                const QUuid id = m_ports.model.library().catalog().createCollection(name);
                if (!paths.isEmpty())
                    addToCollection(paths, id);
            });
}

void LibraryActions::renameCollection(const QUuid &id)
{
    LibraryMeta meta = m_ports.model.library().catalog().meta();
    const LibraryCollection *collection = meta.collection(id);
    if (!collection)
        return;
    askName(
        LibraryUiTexts::tr("Rename Collection"), LibraryUiTexts::tr("Rename"), collection->name,
        [this, id](const QString &name) { m_ports.model.library().catalog().renameCollection(id, name); });
}

void LibraryActions::reveal(const QString &path)
{
    if (const auto shown = m_ports.workspace.reveal(path); !shown)
        complain(shown.error().message);
}

void LibraryActions::share(const QString &path, const QPoint &at)
{
    auto *menu = new QMenu(m_over);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto open = [this](const QUrl &url) {
        if (const auto opened = m_ports.workspace.open(url); !opened)
            complain(opened.error().message);
    };
    menu->addAction(symbolIcon(QStringLiteral("doc.on.doc")), LibraryUiTexts::tr("Copy File"), this,
                    [this, path] { copyFile(path); });
    menu->addAction(symbolIcon(QStringLiteral("paperplane")), LibraryUiTexts::tr("Send by Email…"), this,
                    [open, path] {
                        QUrlQuery query;
                        query.addQueryItem(QStringLiteral("subject"), QFileInfo(path).completeBaseName());
                        query.addQueryItem(QStringLiteral("attach"), path);
                        QUrl mail(QStringLiteral("mailto:"));
                        mail.setQuery(query);
                        open(mail);
                    });
    menu->addAction(symbolIcon(QStringLiteral("photo")), LibraryUiTexts::tr("Open in Another Program"), this,
                    [open, path] { open(QUrl::fromLocalFile(path)); });
    menu->popup(at);
}

void LibraryActions::openSheet(LibrarySheet::Kind kind, const QStringList &paths)
{
    using Kind = LibrarySheet::Kind;
    QStringList concerned = paths;
    if (kind == Kind::Pdf || kind == Kind::Combine || kind == Kind::Guide) {
        concerned.removeIf([](const QString &path) { return !Library::isImage(path); });
        if (concerned.isEmpty())
            return complain(LibraryUiTexts::tr("There is no picture among these."));
    }
    m_ports.model.setSheet(LibrarySheet{kind, concerned, {}});
}

void LibraryActions::openFolder()
{
    Library &library = m_ports.model.library();
    library.ensureDirectory();
    if (const auto opened = m_ports.workspace.open(QUrl::fromLocalFile(library.folder())); !opened)
        complain(opened.error().message);
}

void LibraryActions::trash(const QStringList &paths)
{
    std::ignore = trashTelling(paths);
}

QFuture<QList<Library::Outcome>> LibraryActions::trashTelling(const QStringList &paths)
{
    if (paths.isEmpty())
        return readyFuture(QList<Library::Outcome>());
    // What is told outlives this window.
    NoticeBoard *notices = &m_ports.notices;
    const auto removing = m_ports.model.library().removeInBackground(paths);
    Library *library = &m_ports.model.library();
    auto *watcher = new QFutureWatcher<QList<Library::Outcome>>(notices);
    connect(watcher, &QFutureWatcherBase::finished, notices,
            [notices, library, watcher, alive = QPointer<LibraryActions>(this)] {
                watcher->deleteLater();
                if (watcher->future().resultCount() == 0)
                    return; // the Library has gone
                const QList<Library::Outcome> outcomes = watcher->result();
                if (const auto failure = Library::Outcome::firstFailure(outcomes))
                    notices->post(failure->message, kWarning);
                const QStringList trashed = placesOf(outcomes);
                if (trashed.isEmpty())
                    return;
                if (alive)
                    alive->m_trashed = trashed;
                Notice notice{LibraryUiTexts::tr("Moved %n item(s) to the Trash", nullptr,
                                                 static_cast<int>(trashed.size())),
                              QStringLiteral("trash")};
                notice.actions.append(
                    {LibraryUiTexts::tr("Undo"), QStringLiteral("arrow.uturn.backward"),
                     [library, notices, trashed] { putBack(*library, *notices, trashed); }});
                notices->post(notice);
            });
    watcher->setFuture(removing);
    return removing;
}

void LibraryActions::undoTrash()
{
    // What stays in the Trash can be tried again.
    const auto keep = [alive = QPointer<LibraryActions>(this)](const QStringList &failed) {
        if (alive && alive->m_trashed.isEmpty())
            alive->m_trashed = failed;
    };
    putBack(m_ports.model.library(), m_ports.notices, std::exchange(m_trashed, {}), keep);
}

void LibraryActions::importFiles(const QStringList &paths)
{
    NoticeBoard *notices = &m_ports.notices;
    whenDone(m_ports.model.library().importInBackground(paths), notices,
             [notices](const QList<Library::Outcome> &outcomes) {
                 const int count = Library::Outcome::countOf(outcomes);
                 const auto failure = Library::Outcome::firstFailure(outcomes);
                 if (failure && failure->kind != Error::Kind::Invalid)
                     notices->post(failure->message, kWarning);
                 else if (failure && count == 0)
                     notices->post(LibraryUiTexts::tr("None of these is a picture or a video"), kWarning);
                 if (count > 0)
                     notices->post(LibraryUiTexts::tr("Imported %n item(s)", nullptr, count),
                                   QStringLiteral("tray.and.arrow.down.fill"));
             });
}

void LibraryActions::chooseFilesToImport()
{
    QStringList patterns;
    for (const QString &extension : Library::imageExtensions() + Library::videoExtensions())
        patterns.append(QStringLiteral("*.") + extension);
    patterns.sort();
    auto *dialog = new QFileDialog(m_over, LibraryUiTexts::tr("Import"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilter(LibraryUiTexts::tr("Images and videos") +
                          QStringLiteral(" (%1)").arg(patterns.join(QLatin1Char(' '))));
    connect(dialog, &QFileDialog::filesSelected, this, &LibraryActions::importFiles);
    dialog->open();
}

void LibraryActions::fillCollectionMenu(QMenu *menu, const QStringList &paths)
{
    LibraryCatalog &catalog = m_ports.model.library().catalog();
    for (const LibraryCollection &collection : catalog.meta().collections) {
        QString title = collection.name;
        menu->addAction(symbolIcon(QStringLiteral("folder")),
                        title.replace(QLatin1Char('&'), QLatin1String("&&")), this,
                        [this, paths, id = collection.id] { addToCollection(paths, id); });
    }
    if (!menu->isEmpty())
        menu->addSeparator();
    menu->addAction(symbolIcon(QStringLiteral("folder.badge.plus")), LibraryUiTexts::tr("New Collection…"),
                    this, [this, paths] { newCollection(paths); });
    const SidebarItem sidebar = m_ports.model.sidebar();
    if (const auto *row = std::get_if<CollectionRow>(&sidebar)) {
        menu->addAction(symbolIcon(QStringLiteral("xmark.circle")),
                        LibraryUiTexts::tr("Remove from This Collection"), this, [this, paths, id = row->id] {
                            QStringList names;
                            for (const QString &path : paths)
                                names.append(QFileInfo(path).fileName());
                            m_ports.model.library().catalog().removeFrom(names, id);
                        });
    }
}

QMenu *LibraryActions::makeMenu(const QStringList &paths)
{
    auto *menu = new QMenu(m_over);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (paths.isEmpty())
        return menu;
    const auto add = [this, menu](const char *symbol, const QString &text, auto action) {
        return menu->addAction(symbolIcon(QLatin1String(symbol)), text, this, action);
    };
    const bool isOne = paths.size() == 1;
    const QString path = paths.first();
    LibraryCatalog &catalog = m_ports.model.library().catalog();
    const bool isFavorite = std::all_of(paths.begin(), paths.end(), [&catalog](const QString &each) {
        return catalog.isFavorite(QFileInfo(each).fileName());
    });

    add("square.and.pencil",
        isFilm(path) ? LibraryUiTexts::tr("Open in Video Editor") : LibraryUiTexts::tr("Open in Editor"),
        [this, paths] { open(paths); });
    add(isFavorite ? "star.fill" : "star",
        isFavorite ? LibraryUiTexts::tr("Remove from Favorites") : LibraryUiTexts::tr("Add to Favorites"),
        [this, paths, isFavorite] { setFavorite(paths, !isFavorite); });
    if (isOne) {
        menu->addSeparator();
        if (Library::isImage(path)) {
            add("pin", LibraryUiTexts::tr("Pin to Screen"), [this, path] { pin(path); });
            add("doc.on.doc", LibraryUiTexts::tr("Copy"), [this, path] { copy(path); });
        }
        if (!catalog.data().texts.value(QFileInfo(path).fileName()).isEmpty())
            add("text.viewfinder", LibraryUiTexts::tr("Copy Text"), [this, path] { copyText(path); });
        add("doc", LibraryUiTexts::tr("Copy File"), [this, path] { copyFile(path); });
    }
    menu->addSeparator();
    add("square.and.arrow.up.on.square", LibraryUiTexts::tr("Export…"),
        [this, paths] { openSheet(LibrarySheet::Kind::Export, paths); });
    if (isOne) {
        add("rectangle.and.pencil.and.ellipsis", LibraryUiTexts::tr("Rename…"),
            [this, path] { rename(path); });
    } else {
        add("character.cursor.ibeam",
            LibraryUiTexts::tr("Rename %n Items…", nullptr, static_cast<int>(paths.size())),
            [this, paths] { openSheet(LibrarySheet::Kind::Rename, paths); });
        add("rectangle.split.2x1", LibraryUiTexts::tr("Combine into One Image…"),
            [this, paths] { openSheet(LibrarySheet::Kind::Combine, paths); });
    }
    QMenu *collections = menu->addMenu(symbolIcon(QStringLiteral("folder.badge.plus")),
                                       LibraryUiTexts::tr("Add to Collection"));
    fillCollectionMenu(collections, paths);
    if (isOne)
        add("folder", LibraryUiTexts::tr("Show in Finder"), [this, path] { reveal(path); });
    menu->addSeparator();
    add("trash",
        isOne ? LibraryUiTexts::tr("Move to Trash")
              : LibraryUiTexts::tr("Move %n Items to Trash", nullptr, static_cast<int>(paths.size())),
        [this, paths] { trash(paths); });
    return menu;
}
