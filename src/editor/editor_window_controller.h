#pragma once

#include "base/result.h"
#include "document/editor_document.h"
#include "editor/command_palette.h"
#include "editor/editor_commands.h"
#include "editor/redaction.h"
#include "services/claude_client.h"

#include <QObject>
#include <functional>
#include <memory>

class AppSettings;
class CanvasView;
class Clock;
class EditorView;
class Library;
class NoticeBoard;
class Pasteboard;
class Pins;
class PresetStore;
class QMenu;
class TextRecognizer;
class Uploader;
class Workspace;

// What an editor needs of the rest of the program. All outlive it.
struct EditorPorts {
    Library &library;
    AppSettings &settings;
    Pasteboard &pasteboard;
    NoticeBoard &notices;
    Workspace &workspace;
    TextRecognizer &recognizer;
    ClaudeClient &claude;
    Uploader &uploader;
    PresetStore &presets;
    Pins &pins;
    const Clock &clock;
    std::function<void()> openSettings;
};

// One editor: a document, its window, and all that leaves the document (saving, sharing, recognition, the
// online services). Slow work runs on worker threads, with the document as it was when the work began.
class EditorWindowController : public QObject {
    Q_OBJECT
public:
    EditorWindowController(std::unique_ptr<EditorDocument> document, EditorPorts ports);
    ~EditorWindowController() override;

    // The window has closed; whoever keeps the controller lets go of it, at once or later.
    std::function<void(EditorWindowController *)> onClose;

    EditorDocument &document() { return *m_document; }
    CanvasView &canvas();
    QWidget &window();
    void show();
    void bringToFront();

    void run(EditorCommand command);
    bool isEnabled(EditorCommand command) const;
    bool isChecked(EditorCommand command) const;
    // Built anew each time the palette opens.
    QList<PaletteCommand> paletteCommands();

    void save();
    void saveAs();
    // The file dialog's answer.
    void saveCopy(const QString &path);
    void share();
    void upload();
    void copyImage();
    void grabText();
    void redact(Redaction::Mode mode);
    void runAI(ClaudeClient::Action action);
    void pin();
    // Makes the file that is dragged out of the window; drags it once it is there, if the button is still
    // down.
    void prepareDrag();
    void startDrag();
    // For those who can't drag: the file goes to the clipboard.
    void copyFile();
    void promptSavePreset();
    void showError(const Error &error);

    bool isSaving() const { return m_isSaving; }

Q_SIGNALS:
    // Every save that was asked for has ended.
    void savingEnded();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString title() const;
    bool isInLibrary() const;
    void followRename(const QString &oldPath, const QString &newPath);
    void onChanged(EditorDocument::Field field);
    void openPalette();
    void showAIResult();
    void showAlert(const Error &error);
    void copyTextIn(const QRect &area);
    void copyRecognized(const QString &text, bool fromArea);
    void finishAI(ClaudeClient::Action action, const QString &reply);
    void finishSave(const Result<void> &result);
    template <typename Work, typename Done>
    void onWorker(Work work, Done done);
    void withTemporaryFile(const std::function<void(const QString &)> &use);

    std::unique_ptr<EditorDocument> m_document;
    EditorPorts m_ports;
    std::unique_ptr<EditorView> m_view;
    QString m_dragFile;
    bool m_wantsDrag = false;
    bool m_isSaving = false;
    bool m_saveAgain = false;
    bool m_isClosed = false;
};
