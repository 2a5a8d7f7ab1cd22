#pragma once

#include "platform/screens.h"

#include <QMutex>
#include <memory>

class WaylandConnection;
class WaylandOutputs;
class WaylandWindows;

// The screens that the compositor tells, and its windows where it tells them.
class WaylandScreens : public Screens {
public:
    explicit WaylandScreens(std::shared_ptr<WaylandWindows> windows);
    ~WaylandScreens() override;
    QList<Screen> screens() const override;
    QList<ListedWindow> windows() const override;

private:
    std::shared_ptr<WaylandWindows> m_windows; // may be null
    mutable QMutex m_mutex;
    // Opened at the first question, and again after the compositor went away.
    mutable std::unique_ptr<WaylandConnection> m_connection;
    mutable std::unique_ptr<WaylandOutputs> m_outputs;
};
