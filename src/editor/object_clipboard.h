#pragma once

#include <QFuture>
#include <QPointF>
#include <optional>

class EditorDocument;
class Pasteboard;
class QObject;

// Copying and pasting of objects between all documents of this program. Other programs get a picture of what
// was copied. What anyone else copies later wins: it takes away the marker that this leaves on the
// pasteboard. Main thread only.
namespace ObjectClipboard {

// On the pasteboard: "the objects copied last in this program".
constexpr auto kMarker = "com.oakfenrow.lumenpost.objects";

// The document's selected object; nothing without one. It can be pasted here at once; its picture is drawn
// and encoded on a worker thread and follows, unless something else has been copied by then. `owner` keeps
// that going and lives no longer than the pasteboard. The future ends with it.
QFuture<void> copy(const EditorDocument &document, Pasteboard &pasteboard, QObject *owner);

// An object, a picture or a picture's file, whichever the pasteboard holds.
bool canPaste(const Pasteboard &pasteboard);
// At an image point; without one objects go a little beside their originals, a picture into the middle.
// Pictures are decoded on a worker thread and come in while the document lives.
void paste(EditorDocument &document, Pasteboard &pasteboard, const std::optional<QPointF> &point = {});

} // namespace ObjectClipboard
