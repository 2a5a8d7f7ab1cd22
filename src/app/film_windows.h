#pragma once

#include "recording/film_exports.h"

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <vector>

class AppSettings;
class Library;
class Pasteboard;
class SoundOutput;
class SpeechEngine;
class VideoEditorWindowController;
class Workspace;

// The sound of a film for who plays its pictures, from a second of it on until what is returned is gone;
// nothing when it has none. To be called on a worker, while both are there.
std::function<std::shared_ptr<void>(const QString &film, double from)> playSound(Movies &movies,
                                                                                SoundOutput &output);

// The windows of films that are open, one a film, and the exports that were started from them.
class FilmWindows : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Movies &movies;
        SoundOutput &output;
        SpeechEngine &speech;
        AppSettings &prefs;
        Library &library;
        Pasteboard &pasteboard;
        Workspace &workspace;
        NoticeBoard &notices;
        PendingWork &pending;
    };

    explicit FilmWindows(const Parts &parts, QObject *parent = nullptr);
    ~FilmWindows() override;

    // Opens a window for the film, or brings its open one to the front.
    void open(const QString &path);

private:
    void remove(VideoEditorWindowController *window);

    Parts m_parts;
    // Players and exports have threads of their own, which the program's other work never waits for.
    QThreadPool m_threads;
    FilmExports m_exports;
    std::vector<std::unique_ptr<VideoEditorWindowController>> m_windows;
};
