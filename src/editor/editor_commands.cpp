#include "editor/editor_commands.h"

#include "editor/canvas_view.h"
#include "editor/editor_session.h"
#include "editor/editor_window_controller.h"
#include "editor/texts.h"

#include <algorithm>
#include <array>

namespace {

using enum EditorCommand;
using Editor = EditorWindowController;

constexpr double kZoomStep = 1.25;

CanvasInteraction &interaction(Editor &editor)
{
    return editor.canvas().interaction();
}

// For what goes on with the next press or key there.
CanvasInteraction &onCanvas(Editor &editor)
{
    editor.canvas().setFocus();
    return interaction(editor);
}

constexpr std::array kTable{
    EditorCommandInfo{
        .command = CopyImage,
        .title = QT_TRANSLATE_NOOP("EditorTexts", "Copy"),
        .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Copy Image"),
        .symbol = "doc.on.doc",
        .shortcut = "⇧⌘C",
        .tip = QT_TRANSLATE_NOOP("EditorTexts", "Copy the finished image, with effects, to paste anywhere."),
        .run = [](Editor &editor) { editor.sharing().copyImage(); }},
    EditorCommandInfo{.command = Save,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Save"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Save"),
                      .symbol = "square.and.arrow.down",
                      .shortcut = "⌘S",
                      .tip = QT_TRANSLATE_NOOP(
                          "EditorTexts", "Save to your Library. Objects stay editable when you reopen it."),
                      .run = [](Editor &editor) { editor.saving().save(); }},
    EditorCommandInfo{.command = SaveAs,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Save As…"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Save As…"),
                      .symbol = "square.and.arrow.down.on.square",
                      .shortcut = "⇧⌘S",
                      .tip = "",
                      .run = [](Editor &editor) { editor.saving().saveAs(); },
                      .paletteShortcut = ""},
    EditorCommandInfo{.command = Share,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Share…"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Share…"),
                      .symbol = "square.and.arrow.up",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.sharing().share(); }},
    EditorCommandInfo{.command = Upload,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Upload & Copy Link"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Upload & Copy Link"),
                      .symbol = "link",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.sharing().upload(); }},
    EditorCommandInfo{.command = Pin,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Pin"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Pin to Screen"),
                      .symbol = "pin",
                      .shortcut = "",
                      .tip = QT_TRANSLATE_NOOP(
                          "EditorTexts", "Float this image above all windows as a reference while you work."),
                      .run = [](Editor &editor) { editor.sharing().pin(); }},
    EditorCommandInfo{.command = Undo,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Undo"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Undo"),
                      .symbol = "arrow.uturn.backward",
                      .shortcut = "⌘Z",
                      .tip = QT_TRANSLATE_NOOP("EditorTexts", "Take back the last change."),
                      .run = [](Editor &editor) { interaction(editor).undo(); },
                      .condition = CommandCondition::UndoableStep},
    EditorCommandInfo{.command = Redo,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Redo"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Redo"),
                      .symbol = "arrow.uturn.forward",
                      .shortcut = "⇧⌘Z",
                      .tip = QT_TRANSLATE_NOOP("EditorTexts", "Bring back the change you just undid."),
                      .run = [](Editor &editor) { interaction(editor).redo(); },
                      .condition = CommandCondition::RedoableStep,
                      .otherShortcut = "⌘Y"},
    EditorCommandInfo{.command = ZoomToFit,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Fit to Window"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Zoom to Fit"),
                      .symbol = "arrow.up.left.and.arrow.down.right",
                      .shortcut = "⌘0",
                      .tip = "",
                      .run = [](Editor &editor) { interaction(editor).setZoom({}); }},
    EditorCommandInfo{.command = ActualSize,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Actual Size (100%)"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Actual Size (100%)"),
                      .symbol = "1.magnifyingglass",
                      .shortcut = "⌘1",
                      .tip = "",
                      .run = [](Editor &editor) { interaction(editor).setZoom(1); }},
    EditorCommandInfo{.command = ToggleBackdrop,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Gradient Backdrop"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Toggle Gradient Backdrop"),
                      .symbol = "rectangle.inset.filled",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.toggle(&Effects::backdrop); },
                      .effect = &Effects::backdrop},
    EditorCommandInfo{.command = ToggleBorder,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Border"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Toggle Border"),
                      .symbol = "square",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.toggle(&Effects::border); },
                      .effect = &Effects::border},
    EditorCommandInfo{.command = ToggleShadow,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Drop Shadow"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Toggle Drop Shadow"),
                      .symbol = "shadow",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.toggle(&Effects::shadow); },
                      .effect = &Effects::shadow},
    EditorCommandInfo{.command = ToggleRounded,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Rounded Corners"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Toggle Rounded Corners"),
                      .symbol = "app",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.toggle(&Effects::rounded); },
                      .effect = &Effects::rounded},
    EditorCommandInfo{.command = RedactSensitive,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Emails, Numbers & API Keys"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Redact Emails, Numbers & Keys"),
                      .symbol = "eye.slash",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().redact(Redaction::Mode::Sensitive); }},
    EditorCommandInfo{.command = RedactAllText,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "All Text"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Redact All Text"),
                      .symbol = "eye.slash.fill",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().redact(Redaction::Mode::AllText); }},
    EditorCommandInfo{.command = RedactFaces,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Faces"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Blur Faces"),
                      .symbol = "face.dashed",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().redact(Redaction::Mode::Faces); }},
    EditorCommandInfo{.command = GrabText,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Copy All Text from Image"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Copy All Text from Image"),
                      .symbol = "text.viewfinder",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().grabText(); }},
    EditorCommandInfo{.command = CopyTextFromArea,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Copy Text from Area…"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Copy Text from Area…"),
                      .symbol = "text.and.command.macwindow",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { onCanvas(editor).startTextSelection(); }},
    EditorCommandInfo{.command = PickColor,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Eyedropper"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Pick Color from Image"),
                      .symbol = "eyedropper",
                      .shortcut = "",
                      .tip = QT_TRANSLATE_NOOP(
                          "EditorTexts", "Click this, then click the image to pick up one of its colors."),
                      .run = [](Editor &editor) { onCanvas(editor).startEyedropper(); }},
    EditorCommandInfo{.command = Describe,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Describe"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "AI: Describe"),
                      .symbol = "sparkles",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().runAI(ClaudeClient::Action::Describe); }},
    EditorCommandInfo{.command = DescribeSteps,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Step-by-Step Instructions"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "AI: Step-by-Step Instructions"),
                      .symbol = "list.number",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().runAI(ClaudeClient::Action::Steps); }},
    EditorCommandInfo{.command = AltText,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Alt Text"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "AI: Alt Text"),
                      .symbol = "text.bubble",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().runAI(ClaudeClient::Action::AltText); }},
    EditorCommandInfo{.command = Rename,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Rename with AI"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "AI: Rename"),
                      .symbol = "character.cursor.ibeam",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.reading().runAI(ClaudeClient::Action::Name); }},
    EditorCommandInfo{.command = Duplicate,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Duplicate"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Duplicate Object"),
                      .symbol = "plus.square.on.square",
                      .shortcut = "⌘D",
                      .tip = "",
                      .run = [](Editor &editor) { editor.document().duplicateSelected(); },
                      .condition = CommandCondition::Selection},
    EditorCommandInfo{.command = Delete,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Delete"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Delete Object"),
                      .symbol = "trash",
                      .shortcut = "⌫",
                      .tip = "",
                      .run = [](Editor &editor) { editor.document().deleteSelected(); },
                      .condition = CommandCondition::Selection,
                      .otherShortcut = "⌦",
                      .scope = KeyScope::Canvas},
    EditorCommandInfo{.command = BringToFront,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Bring to Front"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Bring to Front"),
                      .symbol = "square.3.layers.3d.top.filled",
                      .shortcut = "⌘]",
                      .tip = "",
                      .run = [](Editor &editor) { editor.document().bringToFront(); },
                      .condition = CommandCondition::Selection},
    EditorCommandInfo{.command = SendToBack,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Send to Back"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Send to Back"),
                      .symbol = "square.3.layers.3d.bottom.filled",
                      .shortcut = "⌘[",
                      .tip = "",
                      .run = [](Editor &editor) { editor.document().sendToBack(); },
                      .condition = CommandCondition::Selection},
    EditorCommandInfo{.command = GoToPin,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Go to Pinned Image"),
                      .paletteTitle = QT_TRANSLATE_NOOP("EditorTexts", "Go to Pinned Image"),
                      .symbol = "pin",
                      .shortcut = "",
                      .tip = "",
                      .run = [](Editor &editor) { editor.sharing().goToPin(); },
                      .condition = CommandCondition::OpenPin},
    EditorCommandInfo{
        .command = DragOut,
        .title = QT_TRANSLATE_NOOP("EditorTexts", "Drag Out"),
        .paletteTitle = "",
        .symbol = "square.and.arrow.up.on.square",
        .shortcut = "",
        .tip = QT_TRANSLATE_NOOP("EditorTexts",
                                 "Drag this into Mail, Slack, Finder or any app to drop the finished image."),
        .run = [](Editor &editor) { editor.sharing().copyFile(); }},
    EditorCommandInfo{.command = ZoomIn,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Zoom In"),
                      .paletteTitle = "",
                      .symbol = "plus",
                      .shortcut = "⌘+",
                      .tip = "",
                      .run = [](Editor &editor) { interaction(editor).zoomBy(kZoomStep); },
                      .otherShortcut = "⌘="},
    EditorCommandInfo{.command = ZoomOut,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Zoom Out"),
                      .paletteTitle = "",
                      .symbol = "minus",
                      .shortcut = "⌘−",
                      .tip = "",
                      .run = [](Editor &editor) { interaction(editor).zoomBy(1 / kZoomStep); }},
    EditorCommandInfo{.command = EditText,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Edit Text"),
                      .paletteTitle = "",
                      .symbol = "character.cursor.ibeam",
                      .shortcut = "↩",
                      .tip = "",
                      .run = [](Editor &editor) { interaction(editor).editSelectedText(); },
                      .condition = CommandCondition::SelectedText,
                      .scope = KeyScope::OnlyShown},
    EditorCommandInfo{.command = Cut,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Cut"),
                      .paletteTitle = "",
                      .symbol = "scissors",
                      .shortcut = "⌘X",
                      .tip = "",
                      .run = [](Editor &editor) { editor.sharing().cutSelection(); },
                      .condition = CommandCondition::Selection},
    EditorCommandInfo{.command = CopyObject,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Copy"),
                      .paletteTitle = "",
                      .symbol = "doc.on.doc",
                      .shortcut = "⌘C",
                      .tip = "",
                      .run = [](Editor &editor) { editor.sharing().copySelection(); }},
    EditorCommandInfo{.command = Paste,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "Paste"),
                      .paletteTitle = "",
                      .symbol = "doc.on.clipboard",
                      .shortcut = "⌘V",
                      .tip = "",
                      .run = [](Editor &editor) { interaction(editor).paste(); },
                      .condition = CommandCondition::PasteableContent},
    EditorCommandInfo{.command = CommandPalette,
                      .title = QT_TRANSLATE_NOOP("EditorTexts", "All Commands"),
                      .paletteTitle = "",
                      .symbol = "command",
                      .shortcut = "⌘K",
                      .tip = "",
                      .run = [](Editor &editor) { editor.session().setPaletteOpen(true); }},
};

QString shown(const char *text)
{
    return *text ? EditorTexts::tr(text) : QString();
}

} // namespace

QString EditorCommandInfo::shownTitle() const
{
    return shown(title);
}

QString EditorCommandInfo::shownPaletteTitle() const
{
    return shown(paletteTitle);
}

QString EditorCommandInfo::shownTip() const
{
    return shown(tip);
}

QString EditorMenuInfo::shownTitle() const
{
    return shown(title);
}

QString EditorMenuInfo::shownTip() const
{
    return shown(tip);
}

std::span<const EditorCommandInfo> editorCommands()
{
    return kTable;
}

const EditorCommandInfo &info(EditorCommand command)
{
    return *std::find_if(kTable.begin(), kTable.end(),
                         [command](const EditorCommandInfo &row) { return row.command == command; });
}

namespace EditorMenus {
const EditorMenuInfo kEffects{
    QT_TRANSLATE_NOOP("EditorTexts", "Effects"), "wand.and.stars",
    QT_TRANSLATE_NOOP(
        "EditorTexts",
        "Add a gradient backdrop, border, drop shadow or rounded corners to the finished image.")};
const EditorMenuInfo kRedact{
    QT_TRANSLATE_NOOP("EditorTexts", "Redact"), "eye.slash",
    QT_TRANSLATE_NOOP(
        "EditorTexts",
        "Automatically blur emails, numbers, API keys, all text or faces. Review each blur afterwards.")};
const EditorMenuInfo kAi{
    QT_TRANSLATE_NOOP("EditorTexts", "AI"), "sparkles",
    QT_TRANSLATE_NOOP(
        "EditorTexts",
        "Have Claude describe the image, write step-by-step instructions or alt text, or name it.")};
const EditorMenuInfo kShare{
    QT_TRANSLATE_NOOP("EditorTexts", "Share"), "square.and.arrow.up",
    QT_TRANSLATE_NOOP("EditorTexts", "Share, upload and copy a link, or Save As a new file.")};
const EditorMenuInfo kPresets{
    QT_TRANSLATE_NOOP("EditorTexts", "Presets"), "paintpalette",
    QT_TRANSLATE_NOOP("EditorTexts", "Apply a saved tool, color and style in one click — or save your own.")};
const EditorMenuInfo kZoom{
    QT_TRANSLATE_NOOP("EditorTexts", "Zoom"), "magnifyingglass",
    QT_TRANSLATE_NOOP(
        "EditorTexts",
        "Pinch or ⌘-scroll on the image. Hold Space and drag to move around. ⌘0 fits, ⌘1 is 100%.")};
} // namespace EditorMenus
