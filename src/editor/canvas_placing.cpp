#include "editor/canvas_interaction.h"

#include "document/editor_document.h"
#include "editor/annotation_description.h"
#include "editor/drag_shapes.h"
#include "editor/editor_session.h"
#include "editor/texts.h"

#include <cmath>

// Drawing without a pointer: Return places what the tool makes in the middle of what is seen, keys move it on
// from there.

namespace {

constexpr double kFrameShare = 0.6; // of what is seen
constexpr double kLeastFrame = 10;  // image pixels
constexpr double kBesideStep = 16;  // image pixels, away from an object that lies there already

QRectF shareOf(const QRectF &rect, double share)
{
    QRectF part(QPointF(), rect.size() * share);
    part.moveCenter(rect.center());
    return part.toAlignedRect();
}

// The lower limit wins where they cross, as in a picture smaller than a frame can be.
double between(double low, double value, double high)
{
    return std::max(low, std::min(value, high));
}

// Inside the bounds, as large as it is.
QRectF pushedInto(QRectF rect, const QRectF &bounds)
{
    rect.moveLeft(between(bounds.left(), rect.left(), bounds.right() - rect.width()));
    rect.moveTop(between(bounds.top(), rect.top(), bounds.bottom() - rect.height()));
    return rect;
}

} // namespace

QRectF CanvasInteraction::visiblePart() const
{
    const QRectF seen = viewport().toImage(QRectF(QPointF(), m_viewSize)) & m_document.imageBounds();
    return seen.isEmpty() ? m_document.imageBounds() : seen;
}

bool CanvasInteraction::returnKey()
{
    if (isPlacingFrame()) {
        release({});
        return true;
    }
    switch (m_session.mode()) {
    case EditorSession::Mode::PickingColor:
        if (!m_aim) {
            moveAim(visiblePart().center());
        } else {
            const QPointF aim = *m_aim;
            stopPlacing();
            pickColor(aim);
        }
        return true;
    case EditorSession::Mode::SelectingText:
        placeFrame(SelectingText{}, shareOf(visiblePart(), kFrameShare));
        return true;
    case EditorSession::Mode::Editing:
        break;
    }
    if (const auto selected = m_document.selected(); selected && Tools::holdsText(selected->kind)) {
        m_text.begin(*selected);
        return true;
    }
    return placeTool();
}

bool CanvasInteraction::placeTool()
{
    const ToolKind tool = m_document.tool();
    const QRectF seen = visiblePart();
    switch (tool) {
    case ToolKind::Select:
    case ToolKind::Image:
        return false;
    case ToolKind::Text:
        m_text.begin(seen.center());
        return true;
    case ToolKind::Crop:
        placeFrame(Cropping{}, shareOf(seen, kFrameShare));
        return true;
    case ToolKind::Cutout: {
        QRectF strip = shareOf(seen, kFrameShare / 3);
        placeFrame(Cutting{}, band(strip.topLeft(), strip.bottomRight()));
        return true;
    }
    case ToolKind::Arrow:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Highlight:
    case ToolKind::Callout:
    case ToolKind::Step:
    case ToolKind::Stamp:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Measure:
        placeObject(tool);
        return true;
    }
    return false;
}

void CanvasInteraction::placeObject(ToolKind tool)
{
    const QRectF seen = visiblePart();
    Annotation object = placed(m_document.makeAnnotation(tool, seen.center()), seen.center(), seen.size());
    if (const auto whole = drawn(object, m_document.base().size()))
        object = *whole;
    const auto isTaken = [this](const QPointF &start) {
        const auto &objects = m_document.annotations();
        return std::any_of(objects.begin(), objects.end(),
                           [&start](const Annotation &other) { return other.start == start; });
    };
    while (isTaken(object.start))
        object.offset(kBesideStep, kBesideStep);
    m_document.add(object);
    if (tool == ToolKind::Callout)
        m_text.beginNew(object);
    m_host.canvasChanged();
}

void CanvasInteraction::placeFrame(const DragMode &mode, const QRectF &frame)
{
    commitText();
    m_document.setSelectedID({});
    m_dragOrigin.reset();
    m_mode = mode;
    m_band = frame & m_document.imageBounds();
    m_session.setPlacing(true);
    m_host.canvasChanged();
    announceFrame();
}

// With Alt the lower right corner moves, otherwise the frame as a whole.
void CanvasInteraction::arrowFrame(const Key &key, const QPointF &step)
{
    const QRectF bounds = m_document.imageBounds();
    QRectF frame = *m_band;
    if (key.modifiers & Qt::AltModifier) {
        frame.setRight(between(frame.left() + kLeastFrame, frame.right() + step.x(), bounds.right()));
        frame.setBottom(between(frame.top() + kLeastFrame, frame.bottom() + step.y(), bounds.bottom()));
    } else {
        frame = pushedInto(frame.translated(step), bounds);
    }
    m_band = bandKind() == BandKind::Cutout ? band(frame.topLeft(), frame.bottomRight()) : frame & bounds;
    reveal({bandKind() == BandKind::Cutout ? frame.center() : frame.topLeft(), QSizeF(1, 1)});
    m_host.canvasChanged();
    announceFrame();
}

void CanvasInteraction::moveAim(const QPointF &to)
{
    const QRectF bounds = m_document.imageBounds();
    const QPointF middle(std::floor(to.x()) + 0.5, std::floor(to.y()) + 0.5); // of a pixel
    m_aim = QPointF(between(0.5, middle.x(), bounds.width() - 0.5),
                    between(0.5, middle.y(), bounds.height() - 0.5));
    m_session.setPlacing(true);
    reveal({*m_aim, QSizeF(1, 1)});
    m_host.canvasChanged();
    if (const auto color = m_document.sampleColor(*m_aim))
        m_host.announce(EditorTexts::tr("%1, %2 at %3, %4")
                            .arg(spokenColor(*color), color->name().toUpper())
                            .arg(std::floor(m_aim->x()))
                            .arg(std::floor(m_aim->y())));
}

void CanvasInteraction::stopPlacing()
{
    if (isPlacingFrame() || m_aim)
        endDrag();
}

void CanvasInteraction::announceFrame()
{
    const QRect frame = m_band->toRect();
    switch (bandKind()) {
    case BandKind::Crop:
    case BandKind::TextArea:
        return m_host.announce(EditorTexts::tr("%1 by %2 at %3, %4")
                                   .arg(frame.width())
                                   .arg(frame.height())
                                   .arg(frame.x())
                                   .arg(frame.y()));
    case BandKind::Cutout:
        return m_host.announce(cutsColumns()
                                   ? EditorTexts::tr("Columns %1 to %2").arg(frame.left()).arg(frame.right())
                                   : EditorTexts::tr("Rows %1 to %2").arg(frame.top()).arg(frame.bottom()));
    }
}

// Scrolls a zoomed picture as little as shows the part, or as much of it as there is room for.
void CanvasInteraction::reveal(const QRectF &part)
{
    constexpr double kRoom = 24; // points
    if (!m_session.zoom())
        return;
    const QRectF inView = viewport().toView(part).adjusted(-kRoom, -kRoom, kRoom, kRoom);
    const auto shift = [](double from, double to, double length) {
        if (from < 0 || to - from > length)
            return -from;
        return std::min(length - to, 0.0);
    };
    panBy({shift(inView.left(), inView.right(), m_viewSize.width()),
           shift(inView.top(), inView.bottom(), m_viewSize.height())});
}
