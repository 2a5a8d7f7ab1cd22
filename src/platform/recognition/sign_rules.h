#pragma once

#include "platform/recognition/read_line.h"

// Looks at single shapes among mixed signs once more, where fonts make signs that are alike differ: by what
// is filled, by serifs, by height and by width. The lines are aligned.
void mendLookalikes(const QImage &ink, std::vector<ReadLine> &lines);
