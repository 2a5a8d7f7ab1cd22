#include "editor/editor_commands.h"

#include <algorithm>
#include <array>

namespace {

using enum EditorCommand;

constexpr std::array table{
    EditorCommandInfo{CopyImage, "Copy", "Copy Image", "doc.on.doc", "⇧⌘C",
                      "Copy the finished image, with effects, to paste anywhere."},
    EditorCommandInfo{Save, "Save", "Save", "square.and.arrow.down", "⌘S",
                      "Save to your Library. Objects stay editable when you reopen it."},
    EditorCommandInfo{SaveAs, "Save As…", "Save As…", "square.and.arrow.down.on.square", "⇧⌘S", "", " "},
    EditorCommandInfo{Share, "Share…", "Share…", "square.and.arrow.up", "", ""},
    EditorCommandInfo{Upload, "Upload & Copy Link", "Upload & Copy Link", "link", "", ""},
    EditorCommandInfo{Pin, "Pin", "Pin to Screen", "pin", "",
                      "Float this image above all windows as a reference while you work."},
    EditorCommandInfo{Undo, "Undo", "Undo", "arrow.uturn.backward", "⌘Z", "Take back the last change."},
    EditorCommandInfo{Redo, "Redo", "Redo", "arrow.uturn.forward", "⇧⌘Z",
                      "Bring back the change you just undid."},
    EditorCommandInfo{ZoomToFit, "Fit to Window", "Zoom to Fit", "arrow.up.left.and.arrow.down.right", "⌘0",
                      ""},
    EditorCommandInfo{ActualSize, "Actual Size (100%)", "Actual Size (100%)", "1.magnifyingglass", "⌘1", ""},
    EditorCommandInfo{ToggleBackdrop, "Gradient Backdrop", "Toggle Gradient Backdrop",
                      "rectangle.inset.filled", "", ""},
    EditorCommandInfo{ToggleBorder, "Border", "Toggle Border", "square", "", ""},
    EditorCommandInfo{ToggleShadow, "Drop Shadow", "Toggle Drop Shadow", "shadow", "", ""},
    EditorCommandInfo{ToggleRounded, "Rounded Corners", "Toggle Rounded Corners", "app", "", ""},
    EditorCommandInfo{RedactSensitive, "Emails, Numbers & API Keys", "Redact Emails, Numbers & Keys",
                      "eye.slash", "", ""},
    EditorCommandInfo{RedactAllText, "All Text", "Redact All Text", "eye.slash.fill", "", ""},
    EditorCommandInfo{RedactFaces, "Faces", "Blur Faces", "face.dashed", "", ""},
    EditorCommandInfo{GrabText, "Copy All Text from Image", "Copy All Text from Image", "text.viewfinder", "",
                      ""},
    EditorCommandInfo{CopyTextFromArea, "Copy Text from Area…", "Copy Text from Area…",
                      "text.and.command.macwindow", "", ""},
    EditorCommandInfo{PickColor, "Eyedropper", "Pick Color from Image", "eyedropper", "",
                      "Click this, then click the image to pick up one of its colors."},
    EditorCommandInfo{Describe, "Describe", "AI: Describe", "sparkles", "", ""},
    EditorCommandInfo{DescribeSteps, "Step-by-Step Instructions", "AI: Step-by-Step Instructions",
                      "list.number", "", ""},
    EditorCommandInfo{AltText, "Alt Text", "AI: Alt Text", "text.bubble", "", ""},
    EditorCommandInfo{Rename, "Rename with AI", "AI: Rename", "character.cursor.ibeam", "", ""},
    EditorCommandInfo{Duplicate, "Duplicate", "Duplicate Object", "plus.square.on.square", "⌘D", "", "",
                      true},
    EditorCommandInfo{Delete, "Delete", "Delete Object", "trash", "⌫", "", "", true},
    EditorCommandInfo{BringToFront, "Bring to Front", "Bring to Front", "square.3.layers.3d.top.filled", "⌘]",
                      "", "", true},
    EditorCommandInfo{SendToBack, "Send to Back", "Send to Back", "square.3.layers.3d.bottom.filled", "⌘[",
                      "", "", true},
    EditorCommandInfo{DragOut, "Drag Out", "", "square.and.arrow.up.on.square", "",
                      "Drag this into Mail, Slack, Finder or any app to drop the finished image."},
    EditorCommandInfo{ZoomIn, "Zoom In", "", "plus", "⌘+", ""},
    EditorCommandInfo{ZoomOut, "Zoom Out", "", "minus", "⌘−", ""},
    EditorCommandInfo{Cut, "Cut", "", "scissors", "⌘X", "", "", true},
    EditorCommandInfo{CopyObject, "Copy", "", "doc.on.doc", "⌘C", "", "", true},
    EditorCommandInfo{Paste, "Paste", "", "doc.on.clipboard", "⌘V", ""},
    EditorCommandInfo{CommandPalette, "All Commands", "", "command", "⌘K", ""},
};

} // namespace

std::span<const EditorCommandInfo> editorCommands()
{
    return table;
}

const EditorCommandInfo &info(EditorCommand command)
{
    return *std::find_if(table.begin(), table.end(),
                         [command](const EditorCommandInfo &row) { return row.command == command; });
}

namespace EditorMenus {
const EditorMenuInfo effects{
    "Effects", "wand.and.stars",
    "Add a gradient backdrop, border, drop shadow or rounded corners to the finished image."};
const EditorMenuInfo redact{
    "Redact", "eye.slash",
    "Automatically blur emails, numbers, API keys, all text or faces. Review each blur afterwards."};
const EditorMenuInfo ai{
    "AI", "sparkles",
    "Have Claude describe the image, write step-by-step instructions or alt text, or name it."};
const EditorMenuInfo share{"Share", "square.and.arrow.up",
                           "Share, upload and copy a link, or Save As a new file."};
const EditorMenuInfo presets{"Presets", "paintpalette",
                             "Apply a saved tool, color and style in one click — or save your own."};
const EditorMenuInfo zoom{
    "Zoom", "magnifyingglass",
    "Pinch or ⌘-scroll on the image. Hold Space and drag to move around. ⌘0 fits, ⌘1 is 100%."};
} // namespace EditorMenus
