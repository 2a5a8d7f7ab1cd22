#pragma once

#include "document/annotation.h"

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>
#include <optional>
#include <variant>

class CanvasHost;
struct CanvasViewport;
class EditorDocument;

// The editable field for typing a text object, in view coordinates.
struct InlineText {
    QRectF frame;
    QFont font;
    QColor color;
    QString placeholder;
    bool wraps = false; // inside a callout's box; otherwise the field grows with what is typed
    bool centered = false;
    bool operator==(const InlineText &) const = default;
};

// The typing of a text object or of a callout's text: whose text the host's field holds, where that field
// lies, and what its end does to the document.
class TextEditing {
public:
    TextEditing(EditorDocument &document, CanvasHost &host) : m_document(document), m_host(host) {}

    // A new text with its top left corner at an image point.
    void begin(const QPointF &point);
    void begin(const Annotation &annotation);
    // Of an object that was added just now: it goes without a trace if nothing is typed.
    void beginNew(const Annotation &annotation);
    // Closes the field. A text that became empty goes; nothing happens when none is being typed.
    void commit();

    bool isOpen() const { return m_target.has_value(); }
    // Null while a new one is typed.
    QUuid object() const;
    std::optional<InlineText> field(const CanvasViewport &view) const;

private:
    using Target = std::variant<QUuid, QPointF>;

    void dropEmpty(const Annotation &object, std::optional<qsizetype> stepsWhenAdded);
    InlineText fieldForNew(const QPointF &anchor, const CanvasViewport &view) const;
    InlineText fieldFor(const Annotation &edited, const CanvasViewport &view) const;

    EditorDocument &m_document;
    CanvasHost &m_host;
    std::optional<Target> m_target;
    std::optional<qsizetype> m_stepsWhenAdded; // of the history, with a new object
};
