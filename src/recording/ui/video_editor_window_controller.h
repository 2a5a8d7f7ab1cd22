#pragma once

#include "recording/film_exports.h"
#include "recording/film_strip.h"
#include "recording/movie_player.h"
#include "recording/ui/captions_sheet.h"
#include "recording/video_editor_model.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class VideoEditorView;
class Workspace;

// One film in a window of its own: played, trimmed, exported, copied, captioned. The film's file is never
// changed.
class VideoEditorWindowController : public QObject {
    Q_OBJECT
public:
    struct Ports {
        Movies &movies;
        SoundOutput &output;
        SpeechEngine &speech;
        std::function<ExternalSpeech::Choice()> externalSpeech; // as it is set now
        FilmExports &exports;
        Pasteboard &pasteboard;
        Workspace &workspace;
        NoticeBoard &notices;
        PendingWork &pending;
        QThreadPool &threads;
    };

    VideoEditorWindowController(const QString &path, const Ports &ports);
    ~VideoEditorWindowController() override;

    // The window has closed; whoever keeps the controller lets go of it.
    std::function<void(VideoEditorWindowController *)> onClose;

    const QString &path() const { return m_path; }
    // The film has another name now.
    void setPath(const QString &path);
    VideoEditorView &window() { return *m_view; }
    VideoEditorModel &model() { return m_model; }
    MoviePlayer &player() { return m_player; }
    void show();

    void trim();
    void exportMP4() { askAndExport(FilmExport::Kind::Mp4); }
    void exportGIF() { askAndExport(FilmExport::Kind::Gif); }
    void runExport(FilmExport::Kind kind, const QString &target);
    void showCaptions();

private:
    void joinPlayer();
    void joinTimeline();
    void joinActions();
    void opened();
    void togglePlaying();
    void moveEdge(VideoEditorModel::Edge edge, double seconds);
    void askAndExport(FilmExport::Kind kind);
    void exported(const Result<void> &result);
    void copy();
    void reveal();
    void makeStrip();

    QString m_path;
    Ports m_ports;
    VideoEditorModel m_model;
    CaptionsText m_captions;
    std::unique_ptr<VideoEditorView> m_view;
    MoviePlayer m_player;
    FilmStrip m_strip;
    QPointer<FilmExport> m_export;
    std::optional<VideoEditorModel::Edge> m_steppedEdge; // that is to follow the picture
};
