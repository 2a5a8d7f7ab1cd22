#pragma once

#include "platform/workspace.h"

#include <functional>
#include <memory>

class QSocketNotifier;
class X11Connection;

// Windows of other programs as the window manager tells them. Opening and showing files is the desktop's
// matter and is given from outside.
class X11Workspace : public Workspace {
    Q_OBJECT
public:
    struct Opener {
        std::function<Result<void>(const QUrl &)> open;
        std::function<Result<void>(const QString &)> reveal;
    };

    explicit X11Workspace(Opener opener);
    ~X11Workspace() override;
    std::optional<Application> frontmost() const override;
    Result<void> open(const QUrl &url) override;
    Result<void> reveal(const QString &path) override;
    void rememberActiveWindow() override;
    void restoreActiveWindow() override;

protected:
    void connectNotify(const QMetaMethod &signal) override;

private:
    X11Connection *connection() const;
    quint32 activeWindow() const;
    quint32 focusedWindow() const;
    void listen();
    void readEvents();

    Opener m_opener;
    mutable std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Connection> m_watching; // hears of changes
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::optional<Application> m_last;
    quint32 m_remembered = 0; // the active window
    quint32 m_focus = 0;      // who had the keyboard: it, or a window inside it
};
