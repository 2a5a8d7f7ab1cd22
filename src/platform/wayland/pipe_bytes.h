#pragma once

#include <QByteArray>

// Bytes through a pipe to a program that may be slow, or stop in the middle. Both close the file.
namespace PipeBytes {

// Without waiting: on a worker that gives up when nothing is taken for some seconds.
void send(int file, const QByteArray &bytes);
// Waits for the end, or for so many bytes. Empty when nothing comes for some seconds, or when it would be too
// much.
QByteArray receive(int file, qsizetype wanted = -1);

} // namespace PipeBytes
