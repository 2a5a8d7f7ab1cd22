#pragma once

#include "platform/recognition/read_line.h"

// Pairs a measured line's signs with its cells in order, so that they fit best: by their places, which are
// read only roughly; by their widths; and by the blanks between them. A wide cell may hold several signs
// that touch; a sign may take two cells. Signs that fit nowhere get no cell.
void align(ReadLine &line);
