#pragma once

#include "base/result.h"

#include <QObject>
#include <QRect>
#include <QUrl>
#include <optional>

// The title of windows that cover a whole screen for a moment, by which a desktop can be told to leave the
// others alone.
inline constexpr char kScreenCoverTitle[] = "lumenpost-cover";

// How the titles of windows that float over others begin where their place is told by it: "title X,Y".
inline constexpr char kFloatTitle[] = "lumenpost-float";

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
    // Gives the keyboard back to the window that had it at the last call of rememberActiveWindow(), which
    // comes before a screen is covered.
    virtual void rememberActiveWindow() = 0;
    virtual void restoreActiveWindow() = 0;

    // Whether windows that float over others have to be announced, as programs can't place them here.
    virtual bool placesFloats() const { return false; }
    // A window of this program that is about to be shown with that title shall lie there, in global points,
    // above the others, and leave the keyboard where it is.
    virtual void placeFloat(const QString &title, const QRect &frame)
    {
        Q_UNUSED(title)
        Q_UNUSED(frame)
    }

Q_SIGNALS:
    // Another application became active. Sent only after the first connection.
    void activated(const Workspace::Application &application);
};
