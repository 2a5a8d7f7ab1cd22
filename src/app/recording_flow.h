#pragma once

#include "app/activity.h"
#include "app/delivery.h"
#include "recording/screen_recorder.h"

#include <QObject>
#include <memory>

class AppSettings;
class Cameras;
class InputMonitors;
class NoticeBoard;
class LiveExtras;
class PendingWork;
class RecordingChrome;
class Workspace;

// One recording from the part of the screen that was selected for it to its delivery, with the panel that
// stands beside it. Quitting waits until the film is whole.
class RecordingFlow : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Activity &activity;
        Delivery &delivery;
        Library &library;
        AppSettings &prefs;
        NoticeBoard &notices;
        PendingWork &pending;
        ScreenFilms &films;
        SoundSources &sounds;
        Movies &movies;
        const Permissions &permissions;
        InputMonitors &inputs;
        Cameras &cameras;
        Workspace &workspace;
        QString notes; // RecordingPlace::notesIn the state folder
    };

    explicit RecordingFlow(const Parts &parts, QObject *parent = nullptr);
    ~RecordingFlow() override;

    // Takes over a run in the state Recording, and ends it. `rect` in points from the screen's top left.
    void start(Activity::Run run, const Screen &screen, const QRectF &rect, const Delivery::Order &order);
    // Nothing happens when there is no recording.
    void stop();
    // Makes films whole that broke off with an earlier process, and tells of them.
    void recover();

    // What stands on the screen while it records; null otherwise.
    RecordingChrome *chrome() const;

Q_SIGNALS:
    // What is to stand beside the program's name: " ● 1:05", or nothing.
    void titleChanged(const QString &title);
    // The film didn't come about, or ended before its time.
    void failed(const Error &error);

private:
    struct Film;

    void addExtras(const QRectF &region, const CaptureOptions &options);
    void setDrawing(bool isDrawing);
    void follow(ScreenRecorder::State state);
    void ticked(double elapsed);
    void finished(const std::optional<QString> &path, const std::optional<Error> &error);
    std::shared_ptr<QPromise<void>> hold(const QString &what);

    Parts m_parts;
    std::unique_ptr<Film> m_film;
    ScreenRecorder m_recorder;
};
