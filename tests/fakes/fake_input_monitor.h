#pragma once

#include "platform/input_monitor.h"

#include <QList>

// Clicks and keys that a test makes itself.
class FakeInputMonitors : public InputMonitors {
public:
    Result<std::unique_ptr<InputMonitor>> listen(InputEvents events,
                                                 const std::function<void(InputMonitor &)> &connect) override
    {
        if (!refusal.isEmpty())
            return fail(Error::Kind::Unavailable, refusal);
        auto monitor = std::make_unique<Listener>(*this, events);
        connect(*monitor);
        return monitor;
    }

    void press(const PointerPress &press)
    {
        for (Listener *listener : std::as_const(m_listeners)) {
            if (listener->events.testFlag(InputEvent::Clicks))
                Q_EMIT listener->pressed(press);
        }
    }
    void type(const KeyStroke &stroke)
    {
        for (Listener *listener : std::as_const(m_listeners)) {
            if (listener->events.testFlag(InputEvent::Keys))
                Q_EMIT listener->keyPressed(stroke);
        }
    }
    qsizetype listeners() const { return m_listeners.size(); }

    QString refusal;

private:
    struct Listener : InputMonitor {
        Listener(FakeInputMonitors &owner, InputEvents wanted) : events(wanted), m_owner(owner)
        {
            m_owner.m_listeners.append(this);
        }
        ~Listener() override { m_owner.m_listeners.removeOne(this); }
        InputEvents events;

    private:
        FakeInputMonitors &m_owner;
    };
    QList<Listener *> m_listeners;
};
