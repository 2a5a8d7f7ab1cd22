#pragma once

#include "base/async.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class ClaudeClient;
class Library;
class TextRecognizer;

// Fills in what search needs: the text of every image that has none yet, one file at a time, and, when asked,
// descriptions by the AI service. What is done is in the catalog, so an interrupted run goes on at the next
// call. Main thread only; the work is done on others.
class TextIndexing : public QObject {
    Q_OBJECT
public:
    // All outlive it.
    TextIndexing(Library &library, TextRecognizer &recognizer, QObject *parent = nullptr);

    // The edge in pixels at which the text of a large screen can still be read.
    static constexpr int kReadingEdge = 2400;
    static constexpr int kDescribingEdge = 1568;

    // Starts a run over all images without an entry and returns at once; workers look for those. One run
    // goes on at a time; files that come during one are looked for when it ends.
    void indexMissingText();
    bool isIndexing() const { return m_state != State::Idle; }
    // Between two files, a paused run waits: the user's own work comes first.
    void setPaused(bool paused);

    // Images, newest first, that have no text yet, and those that have no description.
    static QStringList withoutText(Library &library);
    static QStringList withoutDescription(Library &library);
    // The text of one file; an empty one when there is none, or when reading failed. An error when the file
    // is no picture (any more), which is no reason to remember anything.
    static QFuture<Result<QString>> textOf(TextRecognizer &recognizer, const QString &path);

    // Describes at most `limit` images without a description, one request at a time. `told` hears how many
    // are done, of how many; `ended` the number of those that worked, and why the first other one did not.
    // Ends early when it seems to be the service that fails, not a picture.
    using Ended = std::function<void(int, const std::optional<Error> &)>;
    void describeMissing(ClaudeClient &client, int limit, std::function<void(int, int)> told, Ended ended);
    // Whether to ask for more after so many failures one after the other, of which this was the last.
    static bool isWorthAsking(const Error &failure, int inARow);
    static QFuture<Result<QImage>> pictureOf(const QString &path);
    static QFuture<Result<QString>> descriptionOf(ClaudeClient &client, const QImage &image);

Q_SIGNALS:
    void finished();

private:
    enum class State { Idle, Looking, Running, Paused };

    void look();
    void begin(const QStringList &paths);
    void next();
    void finish();
    Task<> describe(ClaudeClient &client, QStringList paths, std::function<void(int, int)> told, Ended ended);

    Library &m_library;
    TextRecognizer &m_recognizer;
    State m_state = State::Idle;
    bool m_isPaused = false;
    bool m_callsAgain = false;
    QStringList m_paths;
    int m_done = 0;
};
