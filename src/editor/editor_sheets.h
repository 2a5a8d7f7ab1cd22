#pragma once

#include "base/result.h"
#include "editor/ai_result.h"

#include <functional>

class EditorDocument;
class NoticeBoard;
class Pasteboard;
class PresetStore;
class QWidget;

// The sheets of an editor's window. Each opens over the window and closes by itself; an error that is a
// cancellation shows none.
namespace EditorSheets {

// A reply of the service, to be read, selected and copied.
void showResult(QWidget &window, const AIResult &result, Pasteboard &pasteboard);

// Asks for the name of a preset made of the document's present style. An empty name saves nothing.
void promptPreset(QWidget &window, const EditorDocument &document, PresetStore &presets,
                  NoticeBoard &notices);

// What failed of an action beside the document; offers the settings where a credential is missing.
void showError(QWidget &window, const Error &error, const std::function<void()> &openSettings);

} // namespace EditorSheets
