#include "editor/canvas_interaction.h"

#include "document/editor_document.h"
#include "editor/editor_session.h"
#include "editor/object_clipboard.h"
#include "editor/texts.h"

// The canvas by keyboard and menu: keys, and the commands on what is selected.

namespace {

constexpr double kArrowStep = 1; // image pixels
constexpr double kLargeArrowStep = 10;
constexpr double kLeastWidth = 2, kMostWidth = 30;
constexpr double kScrollStep = 40; // points
constexpr double kPageShare = 0.9; // of the view, with Shift

// What of the modifiers decides between a command and a plain key.
Qt::KeyboardModifiers commandModifiers(Qt::KeyboardModifiers modifiers)
{
    return modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

QPointF directionOf(int arrow)
{
    switch (arrow) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    default:
        return {0, 1};
    }
}

QString placeWords(const QPointF &place)
{
    return QStringLiteral("%1, %2").arg(qRound(place.x())).arg(qRound(place.y()));
}

QString sizeWords(const QSizeF &size)
{
    return EditorTexts::tr("%1 by %2").arg(qRound(size.width())).arg(qRound(size.height()));
}

} // namespace

bool CanvasInteraction::keyPress(const Key &key)
{
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
        return returnKey();
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
    if (tool) {
        stopPlacing();
        m_document.chooseTool(*tool);
    }
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
    const bool isLarge = key.modifiers & Qt::ShiftModifier;
    const double length = isLarge ? kLargeArrowStep : kArrowStep;
    const QPointF step = directionOf(key.key) * length;
    if (isPlacingFrame()) {
        arrowFrame(key, step);
    } else if (m_session.mode() == EditorSession::Mode::PickingColor) {
        moveAim(m_aim.value_or(visiblePart().center()) + step);
    } else if (m_document.selected()) {
        arrowObject(key, step);
    } else {
        return scrollByKey(key);
    }
    return true;
}

void CanvasInteraction::arrowObject(const Key &key, const QPointF &step)
{
    Annotation selected = *m_document.selected();
    // A key that is held is one step.
    if (!key.isRepeat || m_arrowedObject != selected.id)
        m_document.pushUndo();
    m_arrowedObject = selected.id;
    const bool resizes = key.modifiers & Qt::AltModifier;
    if (!resizes) {
        selected.offset(step.x(), step.y());
    } else if (const auto corner = selected.handlePoint(AnnotationHandle::BottomRight)) {
        selected.move(AnnotationHandle::BottomRight, *corner + step);
    } else if (const auto end = selected.handlePoint(AnnotationHandle::End)) {
        selected.move(AnnotationHandle::End, *end + step);
    } else {
        const double grow = key.key == Qt::Key_Right || key.key == Qt::Key_Up ? 1 : -1;
        // As the bar's slider does, so that it shows the new size.
        m_document.setLineWidth(std::clamp(selected.lineWidth + grow, kLeastWidth, kMostWidth));
        return m_host.announce(QString::number(m_document.lineWidth()));
    }
    m_document.replace(selected);
    reveal(selected.bounds());
    m_host.canvasChanged();
    m_host.announce(resizes ? sizeWords(selected.bounds().size())
                            : placeWords(selected.bounds().topLeft()));
}

bool CanvasInteraction::scrollByKey(const Key &key)
{
    if (!m_session.zoom())
        return false;
    QPointF part(kScrollStep, kScrollStep);
    if (key.modifiers & Qt::ShiftModifier)
        part = QPointF(m_viewSize.width(), m_viewSize.height()) * kPageShare;
    const QPointF direction = directionOf(key.key);
    panBy({-direction.x() * part.x(), -direction.y() * part.y()});
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
    reveal(objects[next].bounds());
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
    stopPlacing();
    m_session.setMode(EditorSession::Mode::PickingColor);
    m_host.updateCursor();
}

void CanvasInteraction::startTextSelection()
{
    stopPlacing();
    m_session.setMode(EditorSession::Mode::SelectingText);
    m_host.updateCursor();
}

void CanvasInteraction::dropImage(const QImage &image, const QPointF &position)
{
    m_document.addImageObject(image, viewport().toImage(position));
}
