#pragma once

#include "base/result.h"

#include <QObject>
#include <QUrl>
#include <optional>

// The title of windows that cover a whole screen for a moment, by which a desktop can be told to leave the
// others alone.
inline constexpr char kScreenCoverTitle[] = "lumenpost-cover";

// Other programs: which is in front, and what can be asked of the desktop.
class Workspace : public QObject {
    Q_OBJECT
public:
    struct Application {
        qint64 pid = 0; // 0 if unknown
        QString name;
        bool operator==(const Application &) const = default;
    };

    using QObject::QObject;
    // The application of the active window; nothing when there is none.
    virtual std::optional<Application> frontmost() const = 0;
    // Opens a file or address in the program that the desktop chose for it.
    virtual Result<void> open(const QUrl &url) = 0;
    // Shows a file in the file manager, selected where that is possible.
    virtual Result<void> reveal(const QString &path) = 0;
    // Gives the keyboard back to the window that had it at the last call of rememberActiveWindow(), which comes
    // before a screen is covered.
    virtual void rememberActiveWindow() = 0;
    virtual void restoreActiveWindow() = 0;

Q_SIGNALS:
    // Another application became active. Sent only after the first connection.
    void activated(const Workspace::Application &application);
};
