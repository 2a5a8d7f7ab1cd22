#pragma once

#include "base/result.h"

#include <QFlags>
#include <QObject>
#include <QPointF>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>

// A button of the pointer that went down anywhere in the session. The wheel isn't one.
struct PointerPress {
    enum class Button { Left, Middle, Right };

    Button button = Button::Left;
    QPointF position;                           // of the pointer, in global points
    QPoint native;                              // the same in pixels of the whole desktop
    bool isOwn = false;                         // on a window of this program
    std::chrono::steady_clock::time_point time; // when this program learned of it
    bool operator==(const PointerPress &) const = default;
};

// A key that went down anywhere in the session, or repeats while it is held. For showing shortcuts, never to
// be kept: it may be part of a password.
struct KeyStroke {
    int keyCode = -1;  // in the program's numbering, as KeyCombo stores it; -1 for a key that it doesn't name
    QString character; // what the key writes in the layout in use, with Shift alone; empty if nothing
    Qt::KeyboardModifiers modifiers; // Meta is the Super key; locks aren't among them
    bool isRepeat = false;
    bool operator==(const KeyStroke &) const = default;
};

enum class InputEvent { Clicks = 1, Keys = 2 };
Q_DECLARE_FLAGS(InputEvents, InputEvent)
Q_DECLARE_OPERATORS_FOR_FLAGS(InputEvents)

// Listens while it lives. Both signals come from a thread of its own, at once: connect directly to act before
// the program that was clicked does, or as usual to be called on the receiver's thread.
class InputMonitor : public QObject {
    Q_OBJECT
public:
    ~InputMonitor() override = default;

Q_SIGNALS:
    void pressed(const PointerPress &press);
    void keyPressed(const KeyStroke &stroke);
};

// What is clicked and typed in any program.
class InputMonitors {
public:
    virtual ~InputMonitors() = default;
    // A new listener. `connect` is called with it before the first event can come. Error::Kind::Unavailable,
    // with a sentence for the user, where the session doesn't tell.
    virtual Result<std::unique_ptr<InputMonitor>>
    listen(InputEvents events, const std::function<void(InputMonitor &)> &connect) = 0;
};
