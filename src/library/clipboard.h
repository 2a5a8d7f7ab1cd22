#pragma once

#include "base/async.h"
#include "platform/pasteboard.h"

#include <QImage>
#include <functional>

// Copying captures so that other programs can paste them. Main thread only.
namespace Clipboard {

// The picture as PNG and as TIFF, in that order. Callable from any thread.
QList<Pasteboard::Flavor> encoded(const QImage &image);
// Puts the picture on the pasteboard as PNG and as TIFF, in that order. Encoding runs on a worker; the future
// ends when the pasteboard holds the picture. It ends as cancelled, and nothing is touched, when something newer
// was copied meanwhile, by this program or another.
QFuture<Result<void>> copy(Pasteboard &pasteboard, const QImage &image, QObject *owner);
// The same with a picture that the worker makes first.
QFuture<Result<void>> copy(Pasteboard &pasteboard, const std::function<QImage()> &makeImage, QObject *owner);
// Puts the file itself there, so that a paste elsewhere gets the file.
void copyFile(Pasteboard &pasteboard, const QString &path);

} // namespace Clipboard
