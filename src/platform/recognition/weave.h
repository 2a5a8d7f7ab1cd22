#pragma once

#include "platform/recognition/read_line.h"

// One line that was read twice: words as they were read in its language, and what isn't one, such as keys,
// numbers and signs, as the reading has it that is the surer.
std::vector<ReadSign> woven(const std::vector<ReadSign> &first, const std::vector<ReadSign> &inItsLanguage);
