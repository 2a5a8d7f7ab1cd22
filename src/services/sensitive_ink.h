#pragma once

#include "platform/text_engine.h"
#include "services/sensitive_text.h"

// What the places of the letters of a line tell beyond its text. Distances are in the unit of the line's
// boxes.
namespace SensitiveText {

constexpr qsizetype kOpaqueRun = 32; // signs; a shorter run is none of anybody's keys

// The mean width of a line's characters, blanks between them too.
double advanceOf(const RecognizedLine &line);

// The distance between the characters of a line when all stand in columns, otherwise 0.
double pitchOf(const RecognizedLine &line);

// What is private in a line by its text, with the runs that are longer or shorter on the picture than what
// was read: a sign was lost or read twice, or a blank put in or overlooked.
QList<Match> matchesByInk(const RecognizedLine &line, FurtherKinds further);

} // namespace SensitiveText
