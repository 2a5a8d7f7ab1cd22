#include "document/tool_kind.h"

#include "document/texts.h"

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
        return {"select",
                QT_TRANSLATE_NOOP("DocumentTexts", "Select"),
                "cursorarrow",
                'V',
                false,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Pick, move and resize objects. Double-click text to edit it."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Click to select, drag handles to resize, double-click "
                                                   "text to edit. Right-click for arrange & "
                                                   "duplicate.")};
    case ToolKind::Arrow:
        return {"arrow",
                QT_TRANSLATE_NOOP("DocumentTexts", "Arrow"),
                "arrow.up.right",
                'A',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Point at something important. Choose tapered, thin, double or curved."),
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Drag to draw an arrow. Hold ⇧ to snap to 45°. Pick a style above.")};
    case ToolKind::Rectangle:
        return {"rectangle",
                QT_TRANSLATE_NOOP("DocumentTexts", "Box"),
                "rectangle",
                'R',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Frame an area with a box — outline, tinted or solid."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag to draw a box. Hold ⇧ for a square.")};
    case ToolKind::Ellipse:
        return {
            "ellipse",
            QT_TRANSLATE_NOOP("DocumentTexts", "Oval"),
            "circle",
            'E',
            true,
            true,
            false,
            QT_TRANSLATE_NOOP("DocumentTexts", "Circle something with an oval — outline, tinted or solid."),
            QT_TRANSLATE_NOOP("DocumentTexts", "Drag to draw an oval. Hold ⇧ for a circle.")};
    case ToolKind::Line:
        return {"line",
                QT_TRANSLATE_NOOP("DocumentTexts", "Line"),
                "line.diagonal",
                'L',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Draw a straight line, solid or dashed."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag to draw a line. Hold ⇧ to snap to 45°.")};
    case ToolKind::Pen:
        return {"pen",
                QT_TRANSLATE_NOOP("DocumentTexts", "Pen"),
                "pencil.tip",
                'P',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Draw freehand, like a marker."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Draw freehand by dragging.")};
    case ToolKind::Highlight:
        return {"highlight",
                QT_TRANSLATE_NOOP("DocumentTexts", "Highlight"),
                "highlighter",
                'H',
                true,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Mark text with a see-through highlighter."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag across text to highlight it.")};
    case ToolKind::Text:
        return {
            "text",
            QT_TRANSLATE_NOOP("DocumentTexts", "Text"),
            "textformat",
            'T',
            true,
            true,
            true,
            QT_TRANSLATE_NOOP("DocumentTexts", "Add a caption. Plain text or a label with a colored box."),
            QT_TRANSLATE_NOOP("DocumentTexts", "Click where the text should go, type, then press Return.")};
    case ToolKind::Callout:
        return {
            "callout",
            QT_TRANSLATE_NOOP("DocumentTexts", "Callout"),
            "bubble.left",
            'K',
            true,
            true,
            true,
            QT_TRANSLATE_NOOP("DocumentTexts", "Add a speech bubble with text and a tail you can aim."),
            QT_TRANSLATE_NOOP("DocumentTexts",
                              "Drag to draw a speech bubble, then type. Drag the tail handle to point it.")};
    case ToolKind::Step:
        return {"step",
                QT_TRANSLATE_NOOP("DocumentTexts", "Step"),
                "1.circle.fill",
                'S',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Number the steps of a process (1 2 3 or A B C)."),
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Click to drop numbered steps — they count up automatically.")};
    case ToolKind::Stamp:
        return {"stamp",
                QT_TRANSLATE_NOOP("DocumentTexts", "Stamp"),
                "seal",
                'G',
                true,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Drop a symbol, emoji or keyboard key, like ✓, ⚠️ or ⌘."),
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Choose a stamp above, then click to place it (or drag to size it).")};
    case ToolKind::Blur:
        return {"blur",
                QT_TRANSLATE_NOOP("DocumentTexts", "Blur"),
                "square.grid.3x3.fill",
                'B',
                false,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Hide private details like names, emails or numbers."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag over anything private to pixelate it.")};
    case ToolKind::Spotlight:
        return {"spotlight",
                QT_TRANSLATE_NOOP("DocumentTexts", "Spotlight"),
                "flashlight.on.fill",
                'O',
                false,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Dim everything except the area you drag."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag around what matters — everything else is dimmed.")};
    case ToolKind::Magnify:
        return {"magnify",
                QT_TRANSLATE_NOOP("DocumentTexts", "Magnify"),
                "plus.magnifyingglass",
                'M',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Add a 2× magnifier bubble to show fine detail."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag to add a magnifier bubble that zooms in 2×.")};
    case ToolKind::Crop:
        return {"crop",
                QT_TRANSLATE_NOOP("DocumentTexts", "Crop"),
                "crop",
                'C',
                false,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "Keep only the area you drag."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Drag to choose the area to keep. ⌘Z undoes it.")};
    case ToolKind::Cutout:
        return {
            "cutout",
            QT_TRANSLATE_NOOP("DocumentTexts", "Cut Out"),
            "scissors",
            'X',
            false,
            false,
            false,
            QT_TRANSLATE_NOOP("DocumentTexts",
                              "Remove a strip from the middle and join the rest with a torn edge."),
            QT_TRANSLATE_NOOP("DocumentTexts",
                              "Drag across the part to remove — the image closes the gap with a torn edge.")};
    case ToolKind::Measure:
        return {"measure",
                QT_TRANSLATE_NOOP("DocumentTexts", "Measure"),
                "ruler",
                'U',
                true,
                true,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Measure distances in pixels — handy for checking spacing in designs."),
                QT_TRANSLATE_NOOP("DocumentTexts",
                                  "Drag between two points to measure them. Hold ⇧ to snap to 45°.")};
    case ToolKind::Image:
        return {"image",
                QT_TRANSLATE_NOOP("DocumentTexts", "Image"),
                "photo",
                0,
                false,
                false,
                false,
                QT_TRANSLATE_NOOP("DocumentTexts", "A pasted image you can move and resize."),
                QT_TRANSLATE_NOOP("DocumentTexts", "Pasted image. Drag to move, drag handles to resize.")};
    }
    return {};
}

} // namespace

QList<ToolKind> toolbarTools()
{
    QList<ToolKind> tools(kAll.begin(), kAll.end());
    tools.removeOne(ToolKind::Image);
    return tools;
}

QString rawValue(ToolKind kind)
{
    return facts(kind).rawValue;
}

std::optional<ToolKind> fromRawValue(const QString &rawValue)
{
    for (const ToolKind kind : kAll) {
        if (rawValue == QLatin1String(facts(kind).rawValue))
            return kind;
    }
    return {};
}

QString shortTitle(ToolKind kind)
{
    return DocumentTexts::tr(facts(kind).shortTitle);
}
QString symbol(ToolKind kind)
{
    return facts(kind).symbol;
}
QString tipDetail(ToolKind kind)
{
    return DocumentTexts::tr(facts(kind).tipDetail);
}
QString hint(ToolKind kind)
{
    return DocumentTexts::tr(facts(kind).hint);
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
    for (const ToolKind kind : kAll) {
        if (const QChar key = shortcutKey(kind); !key.isNull() && key.toLower() == lowerCaseKey)
            return kind;
    }
    return {};
}

QList<Style> styles(ToolKind kind)
{
    switch (kind) {
    case ToolKind::Arrow:
        return {{DocumentTexts::tr("Tapered"), "arrow.up.right"},
                {DocumentTexts::tr("Thin"), "arrow.right"},
                {DocumentTexts::tr("Double"), "arrow.left.and.right"},
                {DocumentTexts::tr("Curved"), "arrow.turn.up.right"}};
    case ToolKind::Rectangle:
        return {{DocumentTexts::tr("Outline"), "rectangle"},
                {DocumentTexts::tr("Tinted"), "rectangle.fill"},
                {DocumentTexts::tr("Solid"), "rectangle.inset.filled"}};
    case ToolKind::Ellipse:
        return {{DocumentTexts::tr("Outline"), "circle"},
                {DocumentTexts::tr("Tinted"), "circle.fill"},
                {DocumentTexts::tr("Solid"), "circle.inset.filled"}};
    case ToolKind::Line:
        return {{DocumentTexts::tr("Solid"), "line.diagonal"},
                {DocumentTexts::tr("Dashed"), "line.3.horizontal.decrease"}};
    case ToolKind::Text:
        return {{DocumentTexts::tr("Plain"), "textformat"},
                {DocumentTexts::tr("Label"), "character.textbox"}};
    case ToolKind::Callout:
        return {{DocumentTexts::tr("Filled"), "bubble.left.fill"},
                {DocumentTexts::tr("Outline"), "bubble.left"}};
    case ToolKind::Step:
        return {{DocumentTexts::tr("1 2 3"), "1.circle.fill"}, {DocumentTexts::tr("A B C"), "a.circle.fill"}};
    case ToolKind::Cutout:
        return {{DocumentTexts::tr("Rows"), "arrow.up.and.down"},
                {DocumentTexts::tr("Columns"), "arrow.left.and.right"}};
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
