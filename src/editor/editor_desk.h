#pragma once

#include "base/async.h"
#include "base/result.h"
#include "editor/finished_image.h"

#include <functional>
#include <utility>

class AppSettings;
class CanvasView;
class ClaudeClient;
class Clock;
class EditorDocument;
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
    std::function<void()> openSettings;
};

// What the parts of one editor share: the document with the window and the canvas that show it, the rest of
// the program, and the way to work on the document as it is now. All that it refers to outlives it.
struct EditorDesk {
    EditorDocument &document;
    QWidget &window;
    CanvasView &canvas;
    EditorPorts &ports;

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
    // Writes the finished picture to a temporary file, named after the window's title.
    void withTemporaryFile(QObject *owner, std::function<void(const QString &)> use) const;
};

// What the file system takes as one place.
bool isSamePath(const QString &one, const QString &other);
