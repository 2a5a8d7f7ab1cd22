#pragma once

#include "base/result.h"
#include "platform/screen_pictures.h"

// Pictures that KWin makes for programs whose installed launcher says that they take some. Slow: for a
// worker.
namespace KWinPictures {

// Whether this session's KWin would be asked. Whether it lets this program is told by the first picture.
bool isOffered();
// A screen by its name, in its own pixels.
Result<QImage> screen(const QString &name, Pointer pointer);
// A window alone, by KWin's handle.
Result<QImage> window(const QString &handle, Pointer pointer, WindowPart part);

} // namespace KWinPictures
