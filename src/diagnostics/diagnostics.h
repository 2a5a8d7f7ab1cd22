#pragma once

#include "base/result.h"

#include <QDateTime>
#include <QFuture>
#include <QString>

class AppSettings;
class Library;
class Paths;
class Permissions;
class Screens;

// One file with what helps to find a fault on the user's machine: the logs, reports of crashes and a summary of
// the system. No picture, no text of one, no name of a capture and no credential is in it.
class Diagnostics {
public:
    struct Parts {
        const Paths &paths;
        const Screens &screens;
        const Permissions &permissions;
        const AppSettings &settings;
        const Library &library;
    };

    explicit Diagnostics(Parts parts) : m_parts(parts) {}

    // "Lumenpost Diagnostics <time>.zip" on the desktop (or, without one, in the home folder). The path, when it
    // is complete. Asks what it needs at once, on the main thread; the rest is done on a worker and can be waited
    // for without an event loop.
    QFuture<Result<QString>> makeBundle(const QDateTime &now) const;

private:
    // The text of "system.txt", with a gap for whether there is an API key: that takes longer to find out.
    QString systemSummary() const;

    Parts m_parts;
};
