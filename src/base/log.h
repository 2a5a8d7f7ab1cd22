#pragma once

#include "base/result.h"

#include <QString>

// The program's one log: lines with time and level in a file with a size limit, and a marker that tells at
// the next start whether the last session ended normally. Never fails outward; may be called from any thread.
//
// Files in the log folder: "lumenpost.log" and, once that has passed 2000000 bytes, "lumenpost.1.log";
// ".running" while a session runs; "last-exception.txt". A line is "<ISO 8601 time> [INFO|ERROR] <text>\n".
namespace Log {

// Where the files lie. Without a call lines are dropped.
void setDirectory(const QString &directory);
QString directory();

// True if the previous session ended unexpectedly.
bool startSession();
// Writes the last line, waits until all lines are on disk and removes the marker.
void endSession();

void info(const QString &text);
void error(const QString &text);
void error(const QString &text, const Error &error);
// Waits until all lines so far are written.
void flush();

} // namespace Log
