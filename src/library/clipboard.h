#pragma once

#include "base/async.h"

#include <QImage>

class Pasteboard;

// Copying captures so that other programs can paste them.
namespace Clipboard {

// Puts the picture on the pasteboard as PNG and as TIFF, in that order. Encoding runs on a worker; the future
// ends when the pasteboard holds the picture. Main thread only.
QFuture<Result<void>> copy(Pasteboard &pasteboard, const QImage &image, QObject *owner);
// Puts the file itself there, so that a paste elsewhere gets the file.
void copyFile(Pasteboard &pasteboard, const QString &path);

} // namespace Clipboard
