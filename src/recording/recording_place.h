#pragma once

#include "base/result.h"
#include "platform/movies.h"

#include <QList>
#include <QString>
#include <memory>

// Where a film grows, and that it does, written down so that the next start finds a film that broke off.
// While it lives, the note is locked: what isn't locked has no owner any more.
class RecordingPlace {
public:
    // Whether a file that has the name already is replaced.
    enum class Existing { Kept, Replaced };

    // For a film that becomes `target`; notes lie in `notes`.
    static Result<std::unique_ptr<RecordingPlace>> reserve(const QString &target, Existing existing,
                                                           const QString &notes);
    // Those that were left by processes that have ended.
    static QList<std::shared_ptr<RecordingPlace>> abandoned(const QString &notes);
    // Folder of the notes among the program's state.
    static QString notesIn(const QString &state);

    ~RecordingPlace();
    RecordingPlace(const RecordingPlace &) = delete;
    RecordingPlace &operator=(const RecordingPlace &) = delete;

    // A hidden file beside the target.
    const QString &growing() const { return m_growing; }
    const QString &target() const { return m_target; }
    // Makes the ordinary film of it, and forgets the note. The path that it got: another one when the
    // target's name was taken meanwhile. Blocks.
    Result<QString> finish(Movies &movies, std::optional<std::chrono::microseconds> end);
    // Nothing was filmed: forgets the note and the file.
    void drop();

private:
    RecordingPlace() = default;
    void forget();

    QString m_note;
    int m_lock = -1; // open and locked
    QString m_growing;
    QString m_target;
    Existing m_existing = Existing::Kept;
};
