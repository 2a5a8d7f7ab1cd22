#pragma once

#include <QList>
#include <QString>
#include <span>

// Everything the editor's window can be asked to do, beside picking a tool. Bars, menus, the palette and the
// window's shortcuts are all made from one table.
enum class EditorCommand {
    Undo,
    Redo,
    CopyImage,
    Save,
    SaveAs,
    Share,
    Upload,
    Pin,
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
    Cut,
    CopyObject,
    Paste,
    Duplicate,
    Delete,
    BringToFront,
    SendToBack,
    CommandPalette,
};

// One row of the table. Texts are as they are shown; shortcuts are in their stored form ("⇧⌘Z").
struct EditorCommandInfo {
    EditorCommand command;
    const char *title;        // in bars and menus
    const char *paletteTitle; // empty for what the palette doesn't list
    const char *symbol;
    const char *shortcut;
    const char *tip;
    // What the palette shows; otherwise `shortcut`.
    const char *paletteShortcut = "";
    bool needsSelection = false;
};

// In the order of the palette.
std::span<const EditorCommandInfo> editorCommands();
const EditorCommandInfo &info(EditorCommand command);

// The titles, symbols and tips of the menus in the main bar.
struct EditorMenuInfo {
    const char *title;
    const char *symbol;
    const char *tip;
};
namespace EditorMenus {
extern const EditorMenuInfo effects;
extern const EditorMenuInfo redact;
extern const EditorMenuInfo ai;
extern const EditorMenuInfo share;
extern const EditorMenuInfo presets;
extern const EditorMenuInfo zoom; // the tip of the zoom in the status line
} // namespace EditorMenus
