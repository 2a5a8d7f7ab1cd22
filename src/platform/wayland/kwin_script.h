#pragma once

#include <QJsonValue>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QThread>
#include <QWaitCondition>
#include <memory>
#include <optional>
#include <vector>

class QTemporaryFile;

// What KWin tells of its windows: it runs a script that answers over the session bus. Callable from any
// thread; one script at a time.
class KWinScript {
public:
    KWinScript();
    ~KWinScript();
    // Runs `body`, the body of a function whose result comes back. Nothing when KWin doesn't answer.
    std::optional<QJsonValue> run(const QString &body);
    // A file that becomes readable each time that another window is active; -1 when KWin doesn't answer.
    // Whoever asks closes it.
    int watchActivations();

    // Runs a script that connects itself to what happens, until this ends. False when KWin doesn't answer.
    bool keep(const QString &source);

private:
    class Answers;

    void open();
    // Starts a script, whose file KWin reads some time later; null when it doesn't.
    std::unique_ptr<QTemporaryFile> load(const QString &source);
    void unload(const QString &name);

    QMutex m_running;
    QThread m_thread; // hears the answers, whoever waits for them
    std::unique_ptr<Answers> m_answers;
    int m_count = 0;
    std::vector<std::unique_ptr<QTemporaryFile>> m_kept; // scripts that stay
    bool m_isWatching = false;
};
