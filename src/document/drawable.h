#pragma once

#include "document/annotation.h"

#include <optional>

// What of an object can be drawn at all: nothing with a number that isn't one, and all others within limits,
// so that a broken project costs neither time nor memory.
std::optional<Annotation> drawable(const Annotation &annotation);
