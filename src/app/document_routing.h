#pragma once

#include "base/result.h"
#include "document/draft.h"
#include "editor/editor_window_controller.h"

#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

struct DeliveredPicture;

// How files, captures and pictures reach an editor, and the editors that are open. Files are read on worker
// threads; an editor opens when its picture is there.
class DocumentRouting : public QObject {
    Q_OBJECT
public:
    explicit DocumentRouting(EditorPorts ports, QObject *parent = nullptr);
    ~DocumentRouting() override;

    // Opens a film for trimming. Without it films go to the desktop's own program.
    std::function<void(const QString &path)> openVideoEditor;

    // Films go to the video editor; a file of the Library opens with its objects; any other picture opens as
    // a copy that never touches its file.
    void openFile(const QString &path);
    // The same for a file that is known to be of the Library; an animation goes to the desktop's own program.
    void openLibraryItem(const QString &path);
    // Asks for a picture.
    void openImage();
    EditorWindowController &openEditor(std::unique_ptr<EditorDocument> document);
    void openEditor(const DeliveredPicture &picture);
    // Shows what earlier sessions left unsaved, if there is any. Once, at the start.
    void offerDrafts();
    // Goes on with a picture that was never saved.
    void openDraft(const Draft::Entry &draft);
    // The newest capture that is a picture.
    void pinLastCapture();

    const std::vector<std::unique_ptr<EditorWindowController>> &editors() const { return m_editors; }

Q_SIGNALS:
    // An editor was opened or closed.
    void editorsChanged();

private:
    void openLibraryFile(const QString &path);
    // Brings the window of a file to the front, if it has one.
    bool raiseEditor(const QString &path);
    void openForeign(const QString &path, bool reportsFailure);
    void openFilm(const QString &path);
    void openExternally(const QString &path);
    void remove(EditorWindowController *editor);

    EditorPorts m_ports;
    std::vector<std::unique_ptr<EditorWindowController>> m_editors;
    QSet<QString> m_opening; // files that a worker reads for a window
};
