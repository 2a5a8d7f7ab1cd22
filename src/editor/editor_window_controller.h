#pragma once

#include "document/editor_document.h"
#include "editor/command_palette.h"
#include "editor/document_reading.h"
#include "editor/document_saving.h"
#include "editor/document_sharing.h"
#include "editor/draft_keeper.h"
#include "editor/editor_commands.h"
#include "editor/editor_desk.h"
#include "editor/editor_session.h"

#include <QObject>
#include <functional>
#include <memory>

class EditorView;

// One editor: a document, its window, and all that leaves the document (saving, sharing, recognition, the
// online services). Slow work runs on worker threads, with the document as it was when the work began; what
// the user will miss if it is lost belongs to the program and goes on when the window has closed.
class EditorWindowController : public QObject {
    Q_OBJECT
public:
    EditorWindowController(std::unique_ptr<EditorDocument> document, EditorPorts ports);
    ~EditorWindowController() override;

    // The window has closed; whoever keeps the controller lets go of it, at once or later.
    std::function<void(EditorWindowController *)> onClose;

    EditorDocument &document() { return *m_document; }
    EditorSession &session() { return m_session; }
    CanvasView &canvas();
    QWidget &window();
    void show();
    void bringToFront();

    void run(EditorCommand command);
    bool isEnabled(EditorCommand command) const;
    bool isChecked(EditorCommand command) const;
    void toggle(bool Effects::*effect);
    // Built anew each time the palette opens.
    QList<PaletteCommand> paletteCommands();

    // What leaves the document.
    DocumentSaving &saving() { return m_saving; }
    DocumentSharing &sharing() { return m_sharing; }
    DocumentReading &reading() { return m_reading; }
    void promptSavePreset();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showTitle();
    void followRename(const QString &oldPath, const QString &newPath);
    void follow(EditorDocument::Field field);
    void openPalette();
    void tellOfDraft();
    void tellOfUnshownPictures();

    std::unique_ptr<EditorDocument> m_document;
    EditorSession m_session;
    EditorPorts m_ports;
    std::unique_ptr<EditorView> m_view;
    EditorDesk m_desk;
    DocumentSaving m_saving;
    DocumentSharing m_sharing;
    DocumentReading m_reading;
    DraftKeeper m_drafts;
    bool m_isClosed = false;
};
