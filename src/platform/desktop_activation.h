#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// How the desktop asks the running program for something: from its launcher, a file manager, a search, a
// link.
class DesktopActivation {
public:
    struct Handlers {
        std::function<void()> activate; // the launcher was used
        std::function<void(const QStringList &addresses)> open;
        std::function<void(const QString &action)> perform; // one of the launcher's actions, by its id
    };

    virtual ~DesktopActivation() = default;
    // From now on the desktop is answered. Does nothing where there is no desktop that could ask, and where
    // another instance of this user answers already.
    virtual void serve(Handlers handlers) = 0;
};
