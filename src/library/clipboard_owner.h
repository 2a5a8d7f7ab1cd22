#pragma once

#include "base/result.h"
#include "platform/pasteboard.h"

#include <QFuture>
#include <QList>
#include <QString>

// What one program copies is gone when it ends. One that must end leaves a small process of the same program
// behind, "lumenpost clipboard-owner FILE", which holds the content until something else is copied.
namespace ClipboardOwner {

// The word that starts such a process.
inline constexpr const char *kCommand = "clipboard-owner";

// Starts it with that content. The future ends, without an event loop too, when another program can paste it.
QFuture<Result<void>> start(const QList<Pasteboard::Flavor> &flavors);

// What was handed over in the file; the file is removed.
Result<QList<Pasteboard::Flavor>> take(const QString &file);
// The other side may go on.
void tellReady();

} // namespace ClipboardOwner
