#pragma once

#include <QRegularExpression>

// The ten patterns of what is private, and what the same secrets look like after the usual slips of reading.
namespace SensitiveText {

// Any of the ten as it stands.
const QRegularExpression &exactPatterns();
// Any of them misread; for lines without stray blanks.
const QRegularExpression &misreadPatterns();
// An opaque run as it stands, also one whose first digits look like a telephone number.
const QRegularExpression &opaquePattern();
// Keys that lost the sign after their prefix or a letter of it, or have a mark beside them for their first
// letter; words begin so too.
const QRegularExpression &shortenedPatterns();
// Keys behind a word that reading glued to them for want of a blank: by a prefix that no word ends in, or in
// capitals behind small letters.
const QRegularExpression &gluedPatterns();

} // namespace SensitiveText
