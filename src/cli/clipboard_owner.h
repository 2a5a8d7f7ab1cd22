#pragma once

#include "base/result.h"

#include <CLI/App.hpp>
#include <QImage>

class CommandContext;

// What one program copies is gone when it ends. A command that copies leaves a small process behind that
// holds the picture until something else is copied.
namespace ClipboardOwner {

Result<void> start(const QImage &image);
// The hidden command that such a process runs.
void addCommand(CLI::App &app, CommandContext &context);

} // namespace ClipboardOwner
