#pragma once

#include "platform/movies.h"
#include "recording/video_editor_model.h"

#include <QImage>
#include <QWidget>

class BarButton;
class FilmCanvas;
class FilmTimeline;
class NumberLabel;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QStackedLayout;

// The window of a film: its picture, the line of time, and one bar, which holds what can be done with the
// film, the fields of a trim, or how far an export is.
class VideoEditorView : public QWidget {
    Q_OBJECT
public:
    explicit VideoEditorView(VideoEditorModel &model);

    FilmCanvas &canvas() { return *m_canvas; }
    FilmTimeline &timeline() { return *m_timeline; }

    void showPicture(const QImage &picture, double position);
    void showPlaying(bool isPlaying);
    // In place of the picture.
    void showUnplayable(const QString &reason);
    // Of what is under way; `left` in seconds, when it is known.
    void showProgress(double done, std::optional<double> left);

Q_SIGNALS:
    void playToggled();
    void trimClicked();
    void trimConfirmed();
    void trimCancelled();
    void edgeTyped(VideoEditorModel::Edge edge, double seconds);
    void revealClicked();
    void copyClicked();
    void captionsClicked();
    void gifClicked();
    void mp4Clicked();
    void cancelClicked();
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    enum Page { Actions, Trimming, Progress };

    QWidget *makeTransport();
    QWidget *makeActions();
    QWidget *makeTrimming();
    QWidget *makeProgress();
    QLineEdit *makeTimeField(VideoEditorModel::Edge edge, const QString &name);
    void follow();
    void followTrim();
    void fitActions();

    VideoEditorModel &m_model;
    QStackedLayout *m_stage;
    FilmCanvas *m_canvas;
    FilmTimeline *m_timeline;
    BarButton *m_play;
    NumberLabel *m_time;
    double m_position = 0;
    QStackedLayout *m_pages;
    BarButton *m_trim;
    QLabel *m_trimNote;
    QList<BarButton *> m_quiet; // beside the trimming
    BarButton *m_captions;
    QPushButton *m_gif;
    QPushButton *m_mp4;
    QLineEdit *m_from;
    QLineEdit *m_to;
    NumberLabel *m_length;
    QProgressBar *m_bar;
    NumberLabel *m_progress;
};
