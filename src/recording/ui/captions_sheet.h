#pragma once

#include "recording/captions.h"
#include "recording/external_speech.h"
#include "recording/video_editor_model.h"
#include "ui/sheet.h"

class NoticeBoard;
class Pasteboard;
class PendingWork;
class QLabel;
class QProgressBar;
class QTableWidget;
class QThreadPool;

// The subtitles of a film, with what the user has mended in them.
struct CaptionsText {
    QList<CaptionCue> cues; // when they are whole
    bool isWhole = false;
    QMap<double, QString>
        mended; // words by the start of their row, also of rows that are still to be made again
};

// Makes subtitles of what is spoken in a film, lets them be mended, and saves or copies them. Rows come as
// the words are understood; what the user has mended stays. Closing ends the work.
class CaptionsSheet : public Sheet {
    Q_OBJECT
public:
    struct Ports {
        Movies &movies;
        SpeechEngine &speech;
        ExternalSpeech::Choice external; // comes first where it is chosen
        Pasteboard &pasteboard;
        NoticeBoard &notices;
        PendingWork &pending;
        QThreadPool &threads;
    };

    // What is saved are the words of that part, with its times; of the whole film without one. `text`
    // outlives the sheet: when it is whole already, nothing is done again.
    CaptionsSheet(QWidget *over, const Ports &ports, const QString &movie, CaptionsText &text,
                  const std::optional<VideoEditorModel::Part> &part);
    ~CaptionsSheet() override;

    // As they are saved.
    QList<CaptionCue> cues() const;

Q_SIGNALS:
    // The words of a row are to be heard, in seconds of the film.
    void heard(double from, double to);

private:
    struct Work;

    void addTable();
    void addFoot();
    void run();
    void take(const QList<CaptionCue> &cues);
    void ended(const Result<QList<CaptionCue>> &result);
    void copyText();
    void save();
    void write(const QString &path);
    void hear(int row);
    void finish();
    QList<CaptionCue> mended() const;

    Ports m_ports;
    QString m_movie;
    std::optional<VideoEditorModel::Part> m_part;
    QList<CaptionCue> m_cues; // as they were understood
    CaptionsText &m_text;
    QTableWidget *m_table;
    QLabel *m_status;
    QProgressBar *m_bar;
    QPushButton *m_copy;
    QPushButton *m_save;
    std::shared_ptr<Work> m_work;
};
