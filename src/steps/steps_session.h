#pragma once

#include "base/result.h"
#include "steps/guide_step.h"

#include <QDateTime>
#include <QMutex>
#include <QString>
#include <QThreadPool>
#include <memory>
#include <optional>

class QLockFile;

// Where a guide lies on disk from its first click until it is given up: a folder with a picture a step and a
// description, readable for the user alone. A program that is killed leaves it behind for the next start.
// Writing happens on a thread of its own; the calls from the main thread return at once.
class StepsSession {
public:
    struct Unfinished {
        QString folder;
        QString title;
        qsizetype count = 0; // of steps
        QDateTime date;      // of the last change
    };

    // A new folder below `root`.
    static Result<std::shared_ptr<StepsSession>> create(const QString &root);
    // What earlier sessions left, newest first: those that no program works on and that have steps. Folders
    // without any are removed.
    static QList<Unfinished> unfinished(const QString &root);
    // Error::Kind::Unavailable while another program works on it.
    static Result<std::shared_ptr<StepsSession>> resume(const QString &folder);
    // Waits for what is being written.
    ~StepsSession();

    QString folder() const { return m_folder; }
    Result<Guide> read() const;
    // Writes the pictures that lie in memory alone, then the description. Several in a row may be one.
    void save(const Guide &guide);
    // The first failure since the last call, such as a full disk. The guide stays in memory then.
    std::optional<Error> takeFailure();
    // Waits until all that was given to save() is on disk: for threads that may wait.
    Result<void> flush();
    // Removes the folder once nothing writes to it any more.
    void discard();

private:
    StepsSession(QString folder, std::unique_ptr<QLockFile> lock);
    void writeLatest();
    Result<void> write(const Guide &guide);
    Result<void> keep(const StepPicture &picture, const QString &name);

    QString m_folder;
    std::unique_ptr<QLockFile> m_lock;
    QMutex m_mutex;
    std::optional<Guide> m_latest; // to be written
    std::optional<Error> m_failure;
    bool m_isDiscarded = false;
    QThreadPool m_writer;
};
