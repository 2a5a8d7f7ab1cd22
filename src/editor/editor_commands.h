#pragma once

#include "document/effects.h"

#include <QList>
#include <QString>
#include <span>

class EditorWindowController;

// Everything the editor's window can be asked to do, beside picking a tool. Bars, menus, the palette, the
// canvas's menu and the keys are all made from one table of words, keys, conditions and actions.
enum class EditorCommand {
    Undo,
    Redo,
    CopyImage,
    Save,
    SaveAs,
    Share,
    Upload,
    Pin,
    GoToPin,
    DragOut,
    ZoomIn,
    ZoomOut,
    ZoomToFit,
    ActualSize,
    ToggleBackdrop,
    ToggleBorder,
    ToggleShadow,
    ToggleRounded,
    RedactSensitive,
    RedactAllText,
    RedactFaces,
    GrabText,
    CopyTextFromArea,
    PickColor,
    Describe,
    DescribeSteps,
    AltText,
    Rename,
    EditText,
    Cut,
    CopyObject,
    Paste,
    Duplicate,
    Delete,
    BringToFront,
    SendToBack,
    CommandPalette,
};

// What must be so for a command to make sense.
enum class CommandCondition { Always, Selection, SelectedText, UndoableStep, RedoableStep, PasteableContent, OpenPin };

// Who hears a command's keys: the whole window; the canvas alone, so that a bare key belongs to any other
// control that has the focus; or nobody, where the canvas knows the key by itself.
enum class KeyScope { Window, Canvas, OnlyShown };

// One row of the table. Texts are in the source language, of the context "EditorTexts"; shortcuts are in
// their stored form ("⇧⌘Z").
struct EditorCommandInfo {
    EditorCommand command;
    const char *title;        // in bars and menus
    const char *paletteTitle; // empty for what the palette doesn't list
    const char *symbol;
    const char *shortcut;
    const char *tip;
    void (*run)(EditorWindowController &);
    CommandCondition condition = CommandCondition::Always;
    bool Effects::*effect = nullptr; // what it switches on and off
    const char *otherShortcut = "";  // does the same, and is never shown
    KeyScope scope = KeyScope::Window;
    const char *paletteShortcut = nullptr; // shown there instead of `shortcut`

    QString shownTitle() const;
    QString shownPaletteTitle() const;
    QString shownTip() const;
};

// In the order of the palette.
std::span<const EditorCommandInfo> editorCommands();
const EditorCommandInfo &info(EditorCommand command);

// The titles, symbols and tips of the menus in the main bar, as above.
struct EditorMenuInfo {
    const char *title;
    const char *symbol;
    const char *tip;

    QString shownTitle() const;
    QString shownTip() const;
};
namespace EditorMenus {
extern const EditorMenuInfo kEffects;
extern const EditorMenuInfo kRedact;
extern const EditorMenuInfo kAi;
extern const EditorMenuInfo kShare;
extern const EditorMenuInfo kPresets;
extern const EditorMenuInfo kZoom; // the tip of the zoom in the status line
} // namespace EditorMenus
