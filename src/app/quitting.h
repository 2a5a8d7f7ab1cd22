#pragma once

#include <QObject>
#include <functional>

class PendingWork;
class QApplication;

// Ends the program in order: the windows close first, then what is pending gets its time. All ways of quitting
// (the menu, a signal, the session's end) come through here.
class Quitting : public QObject {
    Q_OBJECT
public:
    Quitting(QApplication &application, PendingWork &pending);

    // Called once before the windows close: ends what runs until someone stops it.
    std::function<void()> firstWork;
    // Called once when nothing else is pending; what it starts in turn is waited for as well.
    std::function<void()> lastWork;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void leave();

    enum class State { Running, Waiting, LastWork, Leaving };

    QApplication &m_application;
    PendingWork &m_pending;
    State m_state = State::Running;
};
