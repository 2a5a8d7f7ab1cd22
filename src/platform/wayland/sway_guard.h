#pragma once

#include <QByteArray>
#include <sys/types.h>

// A process that has sway carry out commands if this one ends without a word, as a killed one does. It waits
// on a pipe whose other end is here alone.
class SwayGuard {
public:
    explicit SwayGuard(const QByteArray &commands);
    // All went well: nothing is carried out.
    ~SwayGuard();
    SwayGuard(const SwayGuard &) = delete;
    SwayGuard &operator=(const SwayGuard &) = delete;
    // After the others.
    void add(const QByteArray &commands);

private:
    int m_pipe = -1; // -1: there is none, and a killed program leaves its traces
    pid_t m_process = -1;
};
