#pragma once

#include <QChar>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <array>
#include <optional>

// The closed list of the editor's tools, in the order they are shown. Every switch over it names all cases,
// so that a new tool can't be forgotten anywhere.
enum class ToolKind {
    Select,
    Arrow,
    Rectangle,
    Ellipse,
    Line,
    Pen,
    Highlight,
    Text,
    Callout,
    Step,
    Stamp,
    Blur,
    Spotlight,
    Magnify,
    Crop,
    Cutout,
    Measure,
    Image, // only the kind of a pasted or dropped picture, never picked from a toolbar
};

inline size_t qHash(ToolKind kind, size_t seed = 0)
{
    return qHash(static_cast<int>(kind), seed);
}

namespace Tools {

inline constexpr std::array kAll{
    ToolKind::Select, ToolKind::Arrow,     ToolKind::Rectangle, ToolKind::Ellipse, ToolKind::Line,
    ToolKind::Pen,    ToolKind::Highlight, ToolKind::Text,      ToolKind::Callout, ToolKind::Step,
    ToolKind::Stamp,  ToolKind::Blur,      ToolKind::Spotlight, ToolKind::Magnify, ToolKind::Crop,
    ToolKind::Cutout, ToolKind::Measure,   ToolKind::Image,
};

// All but Image, in the same order.
QList<ToolKind> toolbarTools();

// What project files and style presets store: "arrow", "cutout".
QString rawValue(ToolKind kind);
std::optional<ToolKind> fromRawValue(const QString &rawValue);

QString shortTitle(ToolKind kind);
QString symbol(ToolKind kind);
// The longer sentence of a toolbar tip.
QString tipDetail(ToolKind kind);
// The line shown while the tool is active.
QString hint(ToolKind kind);

bool usesColor(ToolKind kind);
bool usesSize(ToolKind kind);
bool usesFont(ToolKind kind);
// Whether an object of the kind holds text that can be edited.
bool holdsText(ToolKind kind);

// The upper-case letter that picks the tool; a null character for Image.
QChar shortcutKey(ToolKind kind);
// The tool of a letter in lower case.
std::optional<ToolKind> ofShortcut(QChar lowerCaseKey);

struct Style {
    QString name;
    QString symbol;
};
// The position in the list is what `Annotation::style` stores. Empty for a tool without a style picker.
QList<Style> styles(ToolKind kind);

} // namespace Tools
