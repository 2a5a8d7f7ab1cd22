#pragma once

#include "base/async.h"
#include "base/pending_work.h"
#include "base/result.h"
#include "editor/finished_image.h"

#include <functional>
#include <utility>

class AppSettings;
class CanvasView;
class ClaudeClient;
class Clock;
class EditorDocument;
class EditorSession;
class Library;
class NoticeBoard;
class Pasteboard;
class Pins;
class PresetStore;
class QObject;
class QWidget;
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
    // Owns what goes on when the window has closed.
    PendingWork &pending;
    std::function<void()> openSettings;
    // Where drafts of pictures without a file are kept; without one they aren't.
    QString draftFolder = {};
};

// What the parts of one editor share: the document and the session with the window and the canvas that show
// them, the rest of the program, and the way to work on the document as it is now. All that it refers to
// outlives it.
struct EditorDesk {
    EditorDocument &document;
    EditorSession &session;
    QWidget &window;
    CanvasView &canvas;
    EditorPorts &ports;

    // What the window is called, without the mark of unsaved changes.
    QString title() const;
    // What is being typed belongs to the picture.
    void commitText() const;
    // The document's file lies in the save folder.
    bool isInLibrary() const;
    bool isInLibrary(const QString &path) const;
    // Offers the settings where a credential is missing. A cancellation shows nothing.
    void showError(const Error &error) const;

    // Runs `work` on a worker thread with what the document is now; `done` is called while `owner` lives.
    template <typename Work, typename Done>
    void onWorker(QObject *owner, Work work, Done done) const
    {
        commitText();
        whenDone(runInBackground(
                     [finished = FinishedImage(document), work = std::move(work)] { return work(finished); }),
                 owner, std::move(done));
    }
    // The same for what is wanted whatever becomes of the window: `done` must not refer to it. `what` names
    // the work for those who wait for it.
    template <typename Work, typename Done>
    void onWorkerForGood(const QString &what, Work work, Done done) const
    {
        commitText();
        const auto future = runInBackground(
            [finished = FinishedImage(document), work = std::move(work)] { return work(finished); });
        ports.pending.keep(what, future);
        whenDone(future, &ports.pending, std::move(done));
    }
    // Writes the finished picture to a temporary file, named after the window's title.
    void withTemporaryFile(QObject *owner, std::function<void(const QString &)> use) const;
};

// What the file system takes as one place.
bool isSamePath(const QString &one, const QString &other);
