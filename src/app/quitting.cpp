#include "app/quitting.h"

#include "base/log.h"
#include "base/pending_work.h"

#include <QApplication>
#include <QEvent>

Quitting::Quitting(QApplication &application, PendingWork &pending)
    : m_application(application), m_pending(pending)
{
    application.installEventFilter(this);
}

bool Quitting::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != &m_application || event->type() != QEvent::Quit)
        return false;
    switch (m_state) {
    case State::Running:
        if (firstWork)
            firstWork();
        // What closing windows still write is part of what is waited for.
        QApplication::closeAllWindows();
        m_state = State::Waiting;
        if (!m_pending.isIdle())
            Log::info(QStringLiteral("Quitting waits for ") +
                      m_pending.underWay().join(QStringLiteral(", ")));
        m_pending.whenIdle(PendingWork::kLimit, [this] {
            m_state = State::LastWork;
            if (lastWork)
                lastWork();
            m_pending.whenIdle(PendingWork::kLimit, [this] { leave(); });
        });
        return true;
    case State::Waiting:
    case State::LastWork:
        return true;
    case State::Leaving:
        return false;
    }
    Q_UNREACHABLE();
}

void Quitting::leave()
{
    m_state = State::Leaving;
    QCoreApplication::quit();
}
