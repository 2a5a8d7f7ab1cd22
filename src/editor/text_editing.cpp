#include "editor/text_editing.h"

#include "document/editor_document.h"
#include "document/text_block.h"
#include "editor/canvas_host.h"
#include "editor/canvas_viewport.h"
#include "editor/texts.h"

#include <cmath>

namespace {

constexpr double kLeastFieldWidth = 240; // points
constexpr double kLineHeight = 1.35;     // of the letters' size

} // namespace

void TextEditing::begin(const QPointF &point)
{
    commit();
    m_target = point;
    m_host.openTextField({});
}

void TextEditing::begin(const Annotation &annotation)
{
    commit();
    m_target = annotation.id;
    m_host.openTextField(annotation.text);
    m_host.canvasChanged();
}

void TextEditing::beginNew(const Annotation &annotation)
{
    begin(annotation);
    m_stepsWhenAdded = m_document.undoSteps();
}

void TextEditing::dropEmpty(const Annotation &object, std::optional<qsizetype> stepsWhenAdded)
{
    if (stepsWhenAdded == m_document.undoSteps())
        return m_document.dropLastStep();
    m_document.setSelectedID(object.id);
    m_document.deleteSelected();
}

void TextEditing::commit()
{
    if (!m_target)
        return;
    const Target target = *m_target;
    const auto stepsWhenAdded = std::exchange(m_stepsWhenAdded, std::nullopt);
    m_target.reset(); // first: closing the field may ask for this again
    const QString text = m_host.closeTextField().trimmed();
    if (const QPointF *anchor = std::get_if<QPointF>(&target)) {
        if (!text.isEmpty()) {
            Annotation added = m_document.makeAnnotation(ToolKind::Text, *anchor);
            added.text = text;
            m_document.add(added);
        }
    } else if (auto edited = m_document.object(std::get<QUuid>(target))) {
        if (text.isEmpty() && (edited->kind == ToolKind::Text || stepsWhenAdded)) {
            dropEmpty(*edited, stepsWhenAdded);
        } else if (edited->text != text) {
            m_document.pushUndo();
            edited->text = text;
            m_document.replace(*edited);
        }
    }
    m_host.canvasChanged();
}

QUuid TextEditing::object() const
{
    const auto *id = m_target ? std::get_if<QUuid>(&*m_target) : nullptr;
    return id ? *id : QUuid();
}

std::optional<InlineText> TextEditing::field(const CanvasViewport &view) const
{
    if (!m_target)
        return std::nullopt;
    if (const QPointF *anchor = std::get_if<QPointF>(&*m_target))
        return fieldForNew(*anchor, view);
    if (const auto edited = m_document.object(std::get<QUuid>(*m_target)))
        return fieldFor(*edited, view);
    return std::nullopt;
}

InlineText TextEditing::fieldForNew(const QPointF &anchor, const CanvasViewport &view) const
{
    const double size = std::max(m_document.lineWidth() * 6, 14.0) * view.scale();
    InlineText field;
    field.frame = QRectF(view.toView(anchor), QSizeF(kLeastFieldWidth, std::trunc(size * kLineHeight)));
    field.font = Fonts::font(designOf(m_document.textFont()), size);
    field.color = m_document.color();
    field.placeholder = EditorTexts::tr("Type, then Return");
    return field;
}

InlineText TextEditing::fieldFor(const Annotation &edited, const CanvasViewport &view) const
{
    const double size = edited.textSize() * view.scale();
    InlineText field;
    if (edited.kind != ToolKind::Callout) {
        const double width = std::max(edited.bounds().width() * view.scale() + 40, kLeastFieldWidth);
        field.frame = QRectF(view.toView(edited.start), QSizeF(width, std::trunc(size * kLineHeight)));
        field.font = Fonts::font(designOf(edited.textFont()), size);
        field.color = edited.color;
        return field;
    }
    const double raw = edited.lineWidth * 6;
    const double dx = raw < 14 ? 5.6 : raw * 0.4, dy = raw < 14 ? 4.2 : raw * 0.3;
    field.frame = view.toView(edited.rect().adjusted(dx, dy, -dx, -dy));
    field.font = Fonts::font(designOf(edited.textFont()), size * 0.75);
    field.color = Qt::black;
    field.placeholder = EditorTexts::tr("Type your callout, then Return (⌥↩ for a new line)");
    field.wraps = true;
    field.centered = true;
    return field;
}
