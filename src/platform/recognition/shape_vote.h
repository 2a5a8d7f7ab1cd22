#pragma once

#include "platform/recognition/read_line.h"

// The same character has the same shape wherever it stands in one font. Among mixed signs, gives each sign
// the reading that its most alike shapes on the page have, where readings are of the kind that is easily
// confused: 0 and O; 1, l and I. The lines are aligned.
void voteByShape(const QImage &ink, std::vector<ReadLine> &lines);
