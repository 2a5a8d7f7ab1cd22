#pragma once

#include "platform/text_engine.h"
#include "services/sensitive_text.h"

namespace SensitiveText {

// What is private in the lines read from a picture: by line, from left to right. A key that its window broke
// at the right edge, as terminals and text fields do, is found too, each of its parts on its own line.
QList<QList<Match>> matchesInReadLines(const QList<RecognizedLine> &lines,
                                       FurtherKinds further = kAllFurtherKinds);

} // namespace SensitiveText
