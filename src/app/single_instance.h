#pragma once

#include "base/result.h"

#include <QObject>
#include <QStringList>

class QLocalServer;

// One running program for a user and a display. A later start hands its arguments over and ends. Which
// instance is the one is decided by a lock that the system lets go of when its holder has ended, however it
// ended: of two that start at the same moment one gets it, and nobody takes it from a living one.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    enum class Role { Running, HandedOver };

    // How long a start waits for a busy instance to answer, in milliseconds.
    static constexpr int kPatience = 10000;

    explicit SingleInstance(QObject *parent = nullptr);
    SingleInstance(const QString &socketPath, int patience, QObject *parent = nullptr);
    ~SingleInstance() override;

    // Hands the words to the instance that runs, without waiting for one that is just starting; false where
    // none takes them. Needs no application object, so that a key that a desktop bound to a command costs no
    // more than a shortcut.
    static bool handOverTo(const QString &socketPath, const QStringList &words, int patience);
    static bool handOverAtOnce(const QStringList &words);

    // Becomes the running instance, which listens to later starts, or hands the arguments to the one that
    // runs. Blocks for a moment, before any window exists. Fails when the running instance doesn't answer, or
    // when nothing can be kept in the user's runtime folder.
    Result<Role> start(const QStringList &arguments);

Q_SIGNALS:
    // Arguments of a later start: files and links, or none.
    void received(const QStringList &arguments);

private:
    enum class Lock { Taken, HeldElsewhere };

    Result<Lock> takeLock();
    Result<void> listen();
    void read();

    QString m_socketPath;
    int m_patience;
    int m_lock = -1; // an open file
    QLocalServer *m_server = nullptr;
};
