#pragma once

#include "platform/recognition/read_line.h"

// Signs that a reader takes for blanks, and blanks that it misses or makes up, by the gaps in an aligned
// line's ink.
void restoreUnderscores(ReadLine &line);
void placeBlanks(ReadLine &line);

// A second reading of the same ink goes: "wW" where there is one letter.
void dropSecondReadings(ReadLine &line);
