#pragma once

#include "library/library.h"
#include "library/model/library_choices.h"
#include "library/ui/film_player.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <functional>

class AppSettings;
class LibraryModel;
class LibraryWork;
class Movies;
class NoticeBoard;
class Pasteboard;
class Pins;
class QMenu;
class QWidget;
class Workspace;

// What the Library window reaches beyond itself. All outlive it.
struct LibraryPorts {
    LibraryModel &model;
    Pasteboard &pasteboard;
    Workspace &workspace;
    NoticeBoard &notices;
    Pins &pins;
    Movies &movies;
    AppSettings &settings;
    LibraryWork &work;
    QString hashFile; // where the hashes of pictures are kept
    std::function<void(const QString &path)> openItem;
    FilmPlayer::PlaySound playSound = {}; // of a film that is previewed
};

// What can be done with captures, for menus, keys and buttons alike. Tells what it did as notices.
class LibraryActions : public QObject {
    Q_OBJECT
public:
    // Sheets stand over `over`.
    LibraryActions(LibraryPorts ports, QWidget *over);

    // Whether the video editor opens it.
    static bool isFilm(const QString &path);

    void open(const QStringList &paths);
    void setFavorite(const QStringList &paths, bool on);
    void pin(const QString &path);
    // A picture as a picture, a film as its file.
    void copy(const QString &path);
    void copyText(const QString &path);
    // For who says so itself.
    void copyTextSilently(const QString &path);
    void copyFile(const QString &path);
    void rename(const QString &path);
    void addToCollection(const QStringList &paths, const QUuid &id);
    // Makes one, and puts these files into it.
    void newCollection(const QStringList &paths);
    void renameCollection(const QUuid &id);
    void reveal(const QString &path);
    // Offers the ways in which a file can go to other programs, at this point of the screen.
    void share(const QString &path, const QPoint &at);
    // Opens a sheet about these captures.
    void openSheet(LibrarySheet::Kind kind, const QStringList &paths);
    void openFolder();
    void trash(const QStringList &paths);
    // The same for who wants to know when it has been done.
    QFuture<QList<Library::Outcome>> trashTelling(const QStringList &paths);
    // Has back what was last moved to the Trash from this window.
    void undoTrash();
    void importFiles(const QStringList &paths);
    void chooseFilesToImport();

    // The menu of these captures; it deletes itself when it closes.
    QMenu *makeMenu(const QStringList &paths);
    // The collections, and what else can be done with these captures there.
    void fillCollectionMenu(QMenu *menu, const QStringList &paths);

private:
    void askName(const QString &title, const QString &button, const QString &name,
                 std::function<void(const QString &)> done);
    void complain(const QString &text);

    LibraryPorts m_ports;
    QWidget *m_over;
    QStringList m_trashed; // by their paths in the Trash
};
