#include "document/tool_kind.h"

namespace Tools {

namespace {

struct Facts {
    const char *rawValue;
    const char *shortTitle;
    const char *symbol;
    char shortcut; // upper case; 0 for none
    bool color;
    bool size;
    bool font;
    const char *tipDetail;
    const char *hint;
};

Facts facts(ToolKind kind)
{
    switch (kind) {
    case ToolKind::Select:
        return {
            "select",
            "Select",
            "cursorarrow",
            'V',
            false,
            false,
            false,
            "Pick, move and resize objects. Double-click text to edit it.",
            "Click to select, drag handles to resize, double-click text to edit. Right-click for arrange & "
            "duplicate."};
    case ToolKind::Arrow:
        return {"arrow",
                "Arrow",
                "arrow.up.right",
                'A',
                true,
                true,
                false,
                "Point at something important. Choose tapered, thin, double or curved.",
                "Drag to draw an arrow. Hold ⇧ to snap to 45°. Pick a style above."};
    case ToolKind::Rectangle:
        return {"rectangle",
                "Box",
                "rectangle",
                'R',
                true,
                true,
                false,
                "Frame an area with a box — outline, tinted or solid.",
                "Drag to draw a box. Hold ⇧ for a square."};
    case ToolKind::Ellipse:
        return {"ellipse",
                "Oval",
                "circle",
                'E',
                true,
                true,
                false,
                "Circle something with an oval — outline, tinted or solid.",
                "Drag to draw an oval. Hold ⇧ for a circle."};
    case ToolKind::Line:
        return {"line",
                "Line",
                "line.diagonal",
                'L',
                true,
                true,
                false,
                "Draw a straight line, solid or dashed.",
                "Drag to draw a line. Hold ⇧ to snap to 45°."};
    case ToolKind::Pen:
        return {"pen",
                "Pen",
                "pencil.tip",
                'P',
                true,
                true,
                false,
                "Draw freehand, like a marker.",
                "Draw freehand by dragging."};
    case ToolKind::Highlight:
        return {"highlight",
                "Highlight",
                "highlighter",
                'H',
                true,
                false,
                false,
                "Mark text with a see-through highlighter.",
                "Drag across text to highlight it."};
    case ToolKind::Text:
        return {"text",
                "Text",
                "textformat",
                'T',
                true,
                true,
                true,
                "Add a caption. Plain text or a label with a colored box.",
                "Click where the text should go, type, then press Return."};
    case ToolKind::Callout:
        return {"callout",
                "Callout",
                "bubble.left",
                'K',
                true,
                true,
                true,
                "Add a speech bubble with text and a tail you can aim.",
                "Drag to draw a speech bubble, then type. Drag the tail handle to point it."};
    case ToolKind::Step:
        return {"step",
                "Step",
                "1.circle.fill",
                'S',
                true,
                true,
                false,
                "Number the steps of a process (1 2 3 or A B C).",
                "Click to drop numbered steps — they count up automatically."};
    case ToolKind::Stamp:
        return {"stamp",
                "Stamp",
                "seal",
                'G',
                true,
                false,
                false,
                "Drop a symbol, emoji or keyboard key, like ✓, ⚠️ or ⌘.",
                "Choose a stamp above, then click to place it (or drag to size it)."};
    case ToolKind::Blur:
        return {"blur",
                "Blur",
                "square.grid.3x3.fill",
                'B',
                false,
                false,
                false,
                "Hide private details like names, emails or numbers.",
                "Drag over anything private to pixelate it."};
    case ToolKind::Spotlight:
        return {"spotlight",
                "Spotlight",
                "flashlight.on.fill",
                'O',
                false,
                false,
                false,
                "Dim everything except the area you drag.",
                "Drag around what matters — everything else is dimmed."};
    case ToolKind::Magnify:
        return {"magnify",
                "Magnify",
                "plus.magnifyingglass",
                'M',
                true,
                true,
                false,
                "Add a 2× magnifier bubble to show fine detail.",
                "Drag to add a magnifier bubble that zooms in 2×."};
    case ToolKind::Crop:
        return {"crop",
                "Crop",
                "crop",
                'C',
                false,
                false,
                false,
                "Keep only the area you drag.",
                "Drag to choose the area to keep. ⌘Z undoes it."};
    case ToolKind::Cutout:
        return {"cutout",
                "Cut Out",
                "scissors",
                'X',
                false,
                false,
                false,
                "Remove a strip from the middle and join the rest with a torn edge.",
                "Drag across the part to remove — the image closes the gap with a torn edge."};
    case ToolKind::Measure:
        return {"measure",
                "Measure",
                "ruler",
                'U',
                true,
                true,
                false,
                "Measure distances in pixels — handy for checking spacing in designs.",
                "Drag between two points to measure them. Hold ⇧ to snap to 45°."};
    case ToolKind::Image:
        return {"image",
                "Image",
                "photo",
                0,
                false,
                false,
                false,
                "A pasted image you can move and resize.",
                "Pasted image. Drag to move, drag handles to resize."};
    }
    return {};
}

} // namespace

QList<ToolKind> toolbarTools()
{
    QList<ToolKind> tools(all.begin(), all.end());
    tools.removeOne(ToolKind::Image);
    return tools;
}

QString rawValue(ToolKind kind)
{
    return facts(kind).rawValue;
}

std::optional<ToolKind> fromRawValue(const QString &rawValue)
{
    for (const ToolKind kind : all) {
        if (rawValue == QLatin1String(facts(kind).rawValue))
            return kind;
    }
    return {};
}

QString shortTitle(ToolKind kind)
{
    return facts(kind).shortTitle;
}
QString symbol(ToolKind kind)
{
    return facts(kind).symbol;
}
QString tipDetail(ToolKind kind)
{
    return QString::fromUtf8(facts(kind).tipDetail);
}
QString hint(ToolKind kind)
{
    return QString::fromUtf8(facts(kind).hint);
}
bool usesColor(ToolKind kind)
{
    return facts(kind).color;
}
bool usesSize(ToolKind kind)
{
    return facts(kind).size;
}
bool usesFont(ToolKind kind)
{
    return facts(kind).font;
}
bool holdsText(ToolKind kind)
{
    return kind == ToolKind::Text || kind == ToolKind::Callout;
}
QChar shortcutKey(ToolKind kind)
{
    return QLatin1Char(facts(kind).shortcut);
}

std::optional<ToolKind> ofShortcut(QChar lowerCaseKey)
{
    for (const ToolKind kind : all) {
        if (const QChar key = shortcutKey(kind); !key.isNull() && key.toLower() == lowerCaseKey)
            return kind;
    }
    return {};
}

QList<Style> styles(ToolKind kind)
{
    switch (kind) {
    case ToolKind::Arrow:
        return {{"Tapered", "arrow.up.right"},
                {"Thin", "arrow.right"},
                {"Double", "arrow.left.and.right"},
                {"Curved", "arrow.turn.up.right"}};
    case ToolKind::Rectangle:
        return {{"Outline", "rectangle"}, {"Tinted", "rectangle.fill"}, {"Solid", "rectangle.inset.filled"}};
    case ToolKind::Ellipse:
        return {{"Outline", "circle"}, {"Tinted", "circle.fill"}, {"Solid", "circle.inset.filled"}};
    case ToolKind::Line:
        return {{"Solid", "line.diagonal"}, {"Dashed", "line.3.horizontal.decrease"}};
    case ToolKind::Text:
        return {{"Plain", "textformat"}, {"Label", "character.textbox"}};
    case ToolKind::Callout:
        return {{"Filled", "bubble.left.fill"}, {"Outline", "bubble.left"}};
    case ToolKind::Step:
        return {{"1 2 3", "1.circle.fill"}, {"A B C", "a.circle.fill"}};
    case ToolKind::Cutout:
        return {{"Rows", "arrow.up.and.down"}, {"Columns", "arrow.left.and.right"}};
    case ToolKind::Select:
    case ToolKind::Pen:
    case ToolKind::Highlight:
    case ToolKind::Stamp:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Crop:
    case ToolKind::Measure:
    case ToolKind::Image:
        return {};
    }
    return {};
}

} // namespace Tools
