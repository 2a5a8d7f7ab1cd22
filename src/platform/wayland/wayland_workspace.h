#pragma once

#include "platform/workspace.h"

#include <functional>
#include <memory>

class QSocketNotifier;
class WaylandWindows;

// Windows of other programs where the compositor tells them. Opening and showing files is the desktop's
// matter and is given from outside.
class WaylandWorkspace : public Workspace {
    Q_OBJECT
public:
    struct Opener {
        std::function<Result<void>(const QUrl &)> open;
        std::function<Result<void>(const QString &)> reveal;
    };

    WaylandWorkspace(std::shared_ptr<WaylandWindows> windows, Opener opener);
    ~WaylandWorkspace() override;
    std::optional<Application> frontmost() const override;
    Result<void> open(const QUrl &url) override;
    Result<void> reveal(const QString &path) override;
    void rememberActiveWindow() override;
    void restoreActiveWindow() override;
    bool placesFloats() const override { return m_windows != nullptr; }
    void placeFloat(const QString &title, const QRect &frame) override;

protected:
    void connectNotify(const QMetaMethod &signal) override;

private:
    void readEvents();

    std::shared_ptr<WaylandWindows> m_windows; // may be null
    Opener m_opener;
    int m_events = -1; // a file; open while it is listened to
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::optional<Application> m_last;
    quint32 m_remembered = 0;
    QList<quint32> m_filling; // windows that filled their screens then
};
