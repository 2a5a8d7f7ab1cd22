#pragma once

#include "base/result.h"

#include <QUrl>

// Asks the desktop to open and to show things. Returns at once; what happens then is the other program's.
namespace DesktopOpener {

Result<void> open(const QUrl &url);
// Selected in the file manager where it can; else its folder is opened.
Result<void> reveal(const QString &path);

} // namespace DesktopOpener
