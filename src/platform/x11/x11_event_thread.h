#pragma once

#include <functional>
#include <thread>

class X11Connection;

// Hands the events of a connection to a handler on a thread of its own, until it is destroyed or the
// connection breaks. Nothing else may read events of the connection meanwhile.
class X11EventThread {
public:
    X11EventThread() = default;
    ~X11EventThread();
    X11EventThread(const X11EventThread &) = delete;
    X11EventThread &operator=(const X11EventThread &) = delete;

    // Gets ready to start. False when there are no more handles of files.
    bool open();
    // `prepare` runs first on the thread; `handle` gets an event of XCB.
    void start(
        const X11Connection &connection, std::function<void(const void *event)> handle,
        std::function<void()> prepare = [] {});

private:
    int m_stop = -1;
    std::thread m_thread;
};
