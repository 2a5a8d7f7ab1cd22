#pragma once

#include "base/notice.h"
#include "services/redacted_areas.h"

#include <functional>

class EditorDocument;
class EditorSession;
class TextRecognizer;

// Finds what is private on a picture and puts an ordinary blur object on each place, so that each can be
// reviewed, moved or taken away.
namespace Redaction {

// Asks the recogniser about the document's base and adds what it found as one undo step, beneath all other
// objects and without selecting it. A base that has become another one meanwhile, as by a crop, is asked
// about anew. The session is busy until then. `done` gets the number of objects, 0 also when recognition
// failed; it is not called when the document goes first.
void redact(EditorDocument &document, EditorSession &session, TextRecognizer &recognizer, Mode mode,
            const std::function<void(int)> &done);

// What to tell the user afterwards.
Notice notice(Mode mode, int count);

} // namespace Redaction
