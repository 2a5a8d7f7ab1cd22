#pragma once

#include <QString>
#include <QStringList>
#include <optional>

class ScrollingCaptureSession;

// What a user should know of a scrolling capture that has ended.
namespace ScrollingWords {

// Why there is no picture worth keeping; nothing where there is one.
std::optional<QString> whyNothing(const ScrollingCaptureSession &session);
// Why the picture may not show all.
QStringList doubts(const ScrollingCaptureSession &session);

} // namespace ScrollingWords
