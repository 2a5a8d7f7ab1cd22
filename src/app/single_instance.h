#pragma once

#include "base/result.h"

#include <QObject>
#include <QStringList>

class QLocalServer;

// One running program for a user and a display. A later start hands its arguments over and ends.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    // True if a running instance took the arguments. Blocks for a moment, before any window exists.
    bool handOver(const QStringList &arguments);
    // Becomes the running instance.
    Result<void> listen();

Q_SIGNALS:
    // Arguments of a later start: files and links, or none.
    void received(const QStringList &arguments);

private:
    void read();

    QString m_name;
    QLocalServer *m_server = nullptr;
};
