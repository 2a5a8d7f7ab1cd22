#include "editor/canvas_interaction.h"

#include "document/editor_document.h"
#include "editor/editor_session.h"
#include "editor/object_clipboard.h"

// The canvas by keyboard and menu: keys, and the commands on what is selected.

namespace {

constexpr double kArrowStep = 1; // image pixels
constexpr double kLargeArrowStep = 10;
constexpr double kLeastWidth = 2, kMostWidth = 30;

// What of the modifiers decides between a command and a plain key.
Qt::KeyboardModifiers commandModifiers(Qt::KeyboardModifiers modifiers)
{
    return modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

} // namespace

bool CanvasInteraction::keyPress(const Key &key)
{
    const auto selected = m_document.selected();
    switch (key.key) {
    case Qt::Key_Space:
        if (commandModifiers(key.modifiers))
            return false;
        if (!key.isRepeat) {
            m_spaceHeld = true;
            m_host.updateCursor();
        }
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!selected || !Tools::holdsText(selected->kind))
            return false;
        m_text.begin(*selected);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (commandModifiers(key.modifiers) || m_document.annotations().isEmpty())
            return false;
        selectNext(key.key == Qt::Key_Backtab || (key.modifiers & Qt::ShiftModifier));
        return true;
    case Qt::Key_Escape:
        escape();
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return arrowKey(key);
    default:
        break;
    }
    if (commandModifiers(key.modifiers) || key.key < Qt::Key_A || key.key > Qt::Key_Z)
        return false;
    const auto tool = Tools::ofShortcut(QChar(key.key).toLower());
    if (tool)
        m_document.chooseTool(*tool);
    return tool.has_value();
}

void CanvasInteraction::keyRelease(const Key &key)
{
    if (key.key == Qt::Key_Space && !key.isRepeat) {
        m_spaceHeld = false;
        m_host.updateCursor();
    }
}

void CanvasInteraction::escape()
{
    m_document.setSelectedID({});
    m_session.setMode(EditorSession::Mode::Editing);
    endDrag();
}

bool CanvasInteraction::arrowKey(const Key &key)
{
    auto selected = m_document.selected();
    if (!selected)
        return false;
    const double step = key.modifiers & Qt::ShiftModifier ? kLargeArrowStep : kArrowStep;
    const double dx = key.key == Qt::Key_Left ? -step : key.key == Qt::Key_Right ? step : 0;
    const double dy = key.key == Qt::Key_Up ? -step : key.key == Qt::Key_Down ? step : 0;
    // A key that is held is one step.
    if (!key.isRepeat || m_arrowedObject != selected->id)
        m_document.pushUndo();
    m_arrowedObject = selected->id;
    if (!(key.modifiers & Qt::AltModifier)) {
        selected->offset(dx, dy);
    } else if (const auto corner = selected->handlePoint(AnnotationHandle::BottomRight)) {
        selected->move(AnnotationHandle::BottomRight, *corner + QPointF(dx, dy));
    } else if (const auto end = selected->handlePoint(AnnotationHandle::End)) {
        selected->move(AnnotationHandle::End, *end + QPointF(dx, dy));
    } else {
        const double grow = key.key == Qt::Key_Right || key.key == Qt::Key_Up ? 1 : -1;
        // As the bar's slider does, so that it shows the new size.
        m_document.setLineWidth(std::clamp(selected->lineWidth + grow, kLeastWidth, kMostWidth));
        return true;
    }
    m_document.replace(*selected);
    m_host.canvasChanged();
    return true;
}

void CanvasInteraction::select(const QUuid &id)
{
    if (const auto chosen = m_document.object(id)) {
        m_document.adoptStyle(*chosen);
        m_document.setSelectedID(id);
    }
}

void CanvasInteraction::selectNext(bool backwards)
{
    const auto &objects = m_document.annotations();
    const auto count = objects.size();
    if (count == 0)
        return;
    qsizetype at = -1;
    if (const auto selected = m_document.selected()) {
        for (qsizetype i = 0; i < count; ++i) {
            if (objects[i].id == selected->id)
                at = i;
        }
    }
    const qsizetype next = at < 0 ? (backwards ? count - 1 : 0) : (at + (backwards ? -1 : 1) + count) % count;
    select(objects[next].id);
    m_host.announceSelection();
}

void CanvasInteraction::selectForMenu(const QPointF &position)
{
    commitText();
    const auto hit = m_document.hitTest(viewport().toImage(position), tolerance());
    const auto selected = m_document.selected();
    if (hit && !(selected && selected->id == hit->id))
        select(hit->id);
}

void CanvasInteraction::undo()
{
    // What is still being drawn is no step yet: it goes alone.
    const bool wasDrawing = m_draft || m_band;
    endDrag();
    if (!wasDrawing)
        m_document.undo();
}

void CanvasInteraction::redo()
{
    endDrag();
    m_document.redo();
}

void CanvasInteraction::paste()
{
    std::optional<QPointF> at;
    if (const auto pointer = m_host.pointer())
        at = viewport().toImage(*pointer);
    ObjectClipboard::paste(m_document, m_pasteboard, at);
}

void CanvasInteraction::startEyedropper()
{
    m_session.setMode(EditorSession::Mode::PickingColor);
    m_host.updateCursor();
}

void CanvasInteraction::startTextSelection()
{
    m_session.setMode(EditorSession::Mode::SelectingText);
    m_host.updateCursor();
}

void CanvasInteraction::dropImage(const QImage &image, const QPointF &position)
{
    m_document.addImageObject(image, viewport().toImage(position));
}
