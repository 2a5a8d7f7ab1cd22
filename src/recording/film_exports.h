#pragma once

#include "base/result.h"
#include "recording/movie_export.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

class NoticeBoard;
class PendingWork;
class QThreadPool;

// One export on its way. Main thread.
class FilmExport : public QObject {
    Q_OBJECT
public:
    enum class Kind { Mp4, Gif };

    Kind kind() const { return m_kind; }
    double done() const { return m_progress->done; } // 0 to 1
    // Seconds, once it can be told.
    std::optional<double> left() const;
    void cancel() { m_progress->isCancelled = true; }

Q_SIGNALS:
    void progressed();
    // Error::Kind::Cancelled when it was; the file at the target is the old one then, as after any failure.
    void finished(const Result<void> &result);

private:
    friend class FilmExports;
    explicit FilmExport(Kind kind);

    Kind m_kind;
    std::shared_ptr<WorkProgress> m_progress = std::make_shared<WorkProgress>();
    QElapsedTimer m_since;
    QTimer m_ticks;
};

// Films and GIFs that are made of films. They belong to the program and go on when the window that asked has
// closed; a notice tells of each that is done. What is still under way when this goes is cancelled.
class FilmExports : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Movies &movies;
        NoticeBoard &notices;
        PendingWork &pending;
        QThreadPool &threads;
    };

    explicit FilmExports(const Parts &parts, QObject *parent = nullptr);
    ~FilmExports() override;

    // A name beside the film that isn't the film's own.
    static QString suggestedTarget(const QString &movie, FilmExport::Kind kind);

    // Nobody but `asker` tells of a failure; once that has gone, a notice does. The export goes by itself
    // when it is over.
    FilmExport *start(FilmExport::Kind kind, const QString &movie, const QString &target,
                      const MoviePart &part, QObject *asker);

private:
    Parts m_parts;
    QList<FilmExport *> m_underWay;
};
