#pragma once

#include "platform/movies.h"

// As Movies::exportMp4 tells.
Result<void> exportMp4File(const QString &path, const QString &target, double from, double to,
                           WorkProgress &progress);
