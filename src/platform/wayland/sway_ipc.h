#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

// The socket by which sway, and what speaks as it does, is asked for its windows. Callable from any thread.
class SwayIpc {
public:
    enum class Ask : quint32 { RunCommand = 0, Workspaces = 1, Subscribe = 2, Outputs = 3, Tree = 4 };

    // Whether the session names such a socket.
    static bool isOffered();
    static Result<QJsonDocument> ask(Ask what, const QByteArray &payload = {});
    // Whether every command was carried out.
    static bool run(const QByteArray &commands);

    // A connection, as a file, and what is written there to ask; -1 where there is none. Whoever opens it
    // closes it.
    static int open();
    static QByteArray message(Ask what, const QByteArray &payload);

    // A connection that hears of windows, as a file; -1 where there is none. Whoever asks closes it.
    static int listen();
    // Takes in what has arrived there; false when the other side is gone.
    static bool drain(int file);
};
