#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QList>
#include <chrono>
#include <functional>
#include <memory>

struct wl_callback;
struct wl_display;
struct wl_interface;
struct wl_proxy;
struct wl_registry;

// What the compositor offers, by the name of its interface.
struct WaylandGlobal {
    quint32 name = 0; // the same for every client while it stays
    QByteArray interface;
    quint32 version = 0;
};

// Listens to globals that come and go; they are told of those that are there already.
class WaylandGlobals {
public:
    virtual ~WaylandGlobals() = default;
    virtual void added(const WaylandGlobal &global) = 0;
    virtual void removed(quint32 name) = 0;
};

// A connection to the session's compositor, apart from the toolkit's. Used by one thread at a time; what is
// bound on it must be destroyed before it.
class WaylandConnection {
public:
    // How long a compositor may take to answer before it counts as gone.
    static constexpr std::chrono::milliseconds kPatience{3000};

    // Error::Kind::Unavailable when no compositor answers.
    static Result<std::unique_ptr<WaylandConnection>> open();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection &) = delete;
    WaylandConnection &operator=(const WaylandConnection &) = delete;

    wl_display *display() const { return m_display; }
    wl_registry *registry() const { return m_registry; }
    bool isBroken() const;
    bool offers(const wl_interface &interface) const;
    // A proxy of the first global of that kind, of the version that both sides know; null where there is
    // none.
    template <typename Proxy>
    Proxy *bind(const wl_interface &interface, quint32 version)
    {
        return static_cast<Proxy *>(bindFirst(interface, version));
    }
    void setListener(WaylandGlobals *globals);

    // Handles events until it is done; false when that took too long, when the connection broke, or when the
    // file `wake` became readable.
    bool waitFor(const std::function<bool()> &isDone, std::chrono::milliseconds patience = kPatience,
                 int wake = -1);
    // Until the compositor has done all that was asked of it.
    bool roundtrip();
    // What has arrived already, without waiting.
    void dispatchPending();
    void flush();

private:
    WaylandConnection() = default;
    void *bindFirst(const wl_interface &interface, quint32 version);

    wl_display *m_display = nullptr;
    wl_registry *m_registry = nullptr;
    QList<WaylandGlobal> m_globals;
    WaylandGlobals *m_listener = nullptr;
    bool m_isSilent = false;
};

// The sentence for the user when the compositor doesn't answer.
std::unexpected<Error> noCompositor(const QString &detail = {});
