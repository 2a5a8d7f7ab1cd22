#pragma once

#include <QString>

// Shows how far a work is on one line of standard error, when that is a terminal, and stops the work when the
// user interrupts the program: what it made half is cleared then. A function as long works call it.
class TerminalProgress {
public:
    explicit TerminalProgress(QString what);
    bool operator()(int done, int total) const;

private:
    QString m_what;
};
