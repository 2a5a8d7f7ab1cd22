#include "editor/canvas_interaction.h"

#include "document/editor_document.h"
#include "editor/drag_shapes.h"
#include "editor/editor_session.h"
#include "editor/texts.h"

#include <cmath>

namespace {

constexpr double kHandleReach = 8;   // points
constexpr double kHitTolerance = 6;  // points
constexpr double kLeastCrop = 8;     // image pixels
constexpr double kLeastTextArea = 6; // image pixels
constexpr double kPanPerNotch = 10;  // points for a line of a wheel
constexpr double kLinesPerNotch = 3; // as the toolkit scrolls lists
constexpr double kZoomPerPixel = 1.0 / 200;
constexpr double kZoomPerLine = 1.0 / 20;

template <typename... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};

bool reshapesImage(ToolKind tool)
{
    return tool == ToolKind::Crop || tool == ToolKind::Cutout;
}

QRectF rectBetween(const QPointF &a, const QPointF &b)
{
    return QRectF(a, b).normalized();
}

QRect roundedOutwards(const QRectF &rect)
{
    return rect.toAlignedRect();
}

AnnotationHandle oppositeEnd(AnnotationHandle handle)
{
    return handle == AnnotationHandle::Start ? AnnotationHandle::End : AnnotationHandle::Start;
}

} // namespace

void CanvasInteraction::setView(const QSizeF &size, double backing)
{
    m_viewSize = size;
    m_backing = backing;
}

CanvasViewport CanvasInteraction::viewport() const
{
    CanvasViewport viewport;
    viewport.view = m_viewSize;
    viewport.image = m_document.base().size();
    viewport.backing = m_backing;
    viewport.backdrop = m_document.effects().backdrop;
    viewport.zoom = m_session.zoom();
    viewport.pan = m_pan;
    return viewport;
}

void CanvasInteraction::setZoom(std::optional<double> zoom, std::optional<QPointF> around)
{
    CanvasViewport view = viewport();
    view.setZoom(zoom, around.value_or(QPointF(m_viewSize.width() / 2, m_viewSize.height() / 2)));
    m_pan = view.pan;
    m_session.setZoom(view.zoom);
    m_host.canvasChanged();
}

void CanvasInteraction::showFromStart()
{
    CanvasViewport view = viewport();
    view.showFromStart();
    m_pan = view.pan;
    m_session.setZoom(view.zoom);
    m_host.canvasChanged();
}

void CanvasInteraction::panBy(const QPointF &delta)
{
    CanvasViewport view = viewport();
    view.panBy(delta);
    m_pan = view.pan;
    m_host.canvasChanged();
}

bool CanvasInteraction::scroll(const Scroll &scroll)
{
    const bool precise = !scroll.pixels.isNull();
    QPointF delta = precise ? scroll.pixels : scroll.notches * kLinesPerNotch;
    if (scroll.modifiers & Qt::ControlModifier) {
        const double grow = delta.y() * (precise ? kZoomPerPixel : kZoomPerLine);
        // A fast wheel can ask for less than nothing.
        setZoom(std::max(1 + grow, 0.1) * viewport().displayZoom(), scroll.position);
        return true;
    }
    if (!m_session.zoom())
        return false;
    if ((scroll.modifiers & Qt::ShiftModifier) && delta.x() == 0)
        delta = {delta.y(), 0};
    panBy(precise ? delta : delta * kPanPerNotch);
    return true;
}

void CanvasInteraction::pinch(double magnification, const QPointF &position)
{
    setZoom((1 + magnification) * viewport().displayZoom(), position);
}

double CanvasInteraction::tolerance() const
{
    return kHitTolerance / viewport().scale();
}

std::optional<AnnotationHandle> CanvasInteraction::handleHit(const QPointF &viewPoint) const
{
    const auto selected = m_document.selected();
    if (!selected)
        return std::nullopt;
    const CanvasViewport view = viewport();
    for (const auto &[handle, point] : selected->handles()) {
        const QPointF away = view.toView(point) - viewPoint;
        if (std::hypot(away.x(), away.y()) <= kHandleReach)
            return handle;
    }
    return std::nullopt;
}

bool CanvasInteraction::cutsColumns() const
{
    return m_document.toolStyle(ToolKind::Cutout) == 1;
}

QRectF CanvasInteraction::band(const QPointF &a, const QPointF &b) const
{
    const QRectF image = m_document.imageBounds();
    const QRectF between = rectBetween(a, b);
    const bool columns = cutsColumns();
    const QRectF strip = columns ? QRectF(between.left(), 0, between.width(), image.height())
                                 : QRectF(0, between.top(), image.width(), between.height());
    return strip & image;
}

void CanvasInteraction::pickColor(const QPointF &point)
{
    if (const auto color = m_document.sampleColor(point)) {
        m_document.setColor(*color);
        m_host.notify(EditorTexts::tr("Picked %1").arg(color->name().toUpper()),
                      QStringLiteral("eyedropper"));
    }
    m_session.setMode(EditorSession::Mode::Editing);
    m_host.updateCursor();
}

void CanvasInteraction::press(const Press &press)
{
    commitText();
    stopPlacing();
    const CanvasViewport view = viewport();
    const QPointF point = view.toImage(press.position);
    m_dragOrigin = point;
    m_movedSinceDown = false;
    m_mode = None{};

    if (m_session.mode() == EditorSession::Mode::PickingColor) {
        pickColor(point);
    } else if (m_session.mode() == EditorSession::Mode::SelectingText) {
        m_band = QRectF(point, QSizeF());
        m_mode = SelectingText{};
    } else if (m_spaceHeld) {
        m_mode = Panning{press.position, view.origin()};
        m_host.updateCursor();
    } else if (!pressObject(press, point)) {
        pressTool(point);
    }
    m_host.canvasChanged();
}

// True when the press met the selection's handle or an object, which then takes it.
bool CanvasInteraction::pressObject(const Press &press, const QPointF &point)
{
    const bool reshapes = reshapesImage(m_document.tool());
    const auto selected = m_document.selected();
    if (!reshapes && selected) {
        if (const auto handle = handleHit(press.position)) {
            m_mode = Resizing{*selected, *handle};
            return true;
        }
    }
    const auto hit = m_document.hitTest(point, tolerance());
    if (press.clickCount == 2 && hit && Tools::holdsText(hit->kind)) {
        m_document.setSelectedID(hit->id);
        m_text.begin(*hit);
        return true;
    }
    if (reshapes || !hit)
        return false;
    const bool isSelected = selected && selected->id == hit->id;
    if (m_document.tool() != ToolKind::Select && !isSelected)
        return false;
    if (!isSelected)
        select(hit->id);
    m_mode = Moving{*hit};
    return true;
}

void CanvasInteraction::pressTool(const QPointF &point)
{
    switch (const ToolKind tool = m_document.tool()) {
    case ToolKind::Select:
        m_document.setSelectedID({});
        break;
    case ToolKind::Text:
        m_text.begin(point);
        break;
    case ToolKind::Step:
        m_document.add(m_document.makeAnnotation(tool, point));
        break;
    case ToolKind::Crop:
        m_band = QRectF(point, QSizeF());
        m_mode = Cropping{};
        break;
    case ToolKind::Cutout:
        m_band = band(point, point);
        m_mode = Cutting{};
        break;
    case ToolKind::Arrow:
    case ToolKind::Rectangle:
    case ToolKind::Ellipse:
    case ToolKind::Line:
    case ToolKind::Pen:
    case ToolKind::Highlight:
    case ToolKind::Callout:
    case ToolKind::Stamp:
    case ToolKind::Blur:
    case ToolKind::Spotlight:
    case ToolKind::Magnify:
    case ToolKind::Measure:
    case ToolKind::Image:
        m_document.setSelectedID({});
        m_draft = m_document.makeAnnotation(tool, point);
        m_mode = Drawing{};
        break;
    }
}

void CanvasInteraction::beforeFirstMove()
{
    if (!std::exchange(m_movedSinceDown, true))
        m_document.pushUndo();
}

void CanvasInteraction::drag(const QPointF &position, Qt::KeyboardModifiers modifiers)
{
    if (!m_dragOrigin)
        return;
    const CanvasViewport view = viewport();
    const QPointF point = view.toImage(position);
    const QPointF origin = *m_dragOrigin;
    const bool shift = modifiers & Qt::ShiftModifier;
    std::visit(
        Overloaded{
            [](const None &) {},
            [&](const Drawing &) {
                if (!m_draft)
                    return;
                if (m_draft->kind == ToolKind::Pen)
                    m_draft->points.append(point);
                m_draft->end = shift ? constrained(m_draft->start, point, m_draft->kind) : point;
            },
            [&](const Cropping &) { m_band = rectBetween(origin, point) & m_document.imageBounds(); },
            [&](const SelectingText &) { m_band = rectBetween(origin, point) & m_document.imageBounds(); },
            [&](const Cutting &) { m_band = band(origin, point); },
            [&](const Moving &move) {
                beforeFirstMove();
                Annotation moved = move.original;
                moved.offset(point.x() - origin.x(), point.y() - origin.y());
                m_document.replace(moved);
            },
            [&](const Resizing &resize) {
                beforeFirstMove();
                QPointF target = point;
                if (shift &&
                    (resize.handle == AnnotationHandle::Start || resize.handle == AnnotationHandle::End)) {
                    if (const auto from = resize.original.handlePoint(oppositeEnd(resize.handle)))
                        target = constrained(*from, point, resize.original.kind);
                }
                Annotation resized = resize.original;
                resized.move(resize.handle, target);
                m_document.replace(resized);
            },
            [&](const Panning &pan) {
                CanvasViewport moved = view;
                moved.panTo(pan.origin + (position - pan.press));
                m_pan = moved.pan;
            },
        },
        m_mode);
    m_host.canvasChanged();
}

void CanvasInteraction::release(const QPointF &)
{
    const DragMode mode = m_mode;
    std::visit(Overloaded{
                   [](const None &) {},
                   [](const Moving &) {},
                   [](const Resizing &) {},
                   [this](const Drawing &) { finishDrawing(); },
                   [this](const Cropping &) {
                       if (m_band && m_band->width() > kLeastCrop && m_band->height() > kLeastCrop)
                           m_document.applyCrop(*m_band);
                   },
                   [this](const Cutting &) {
                       if (m_band)
                           m_document.applyCutout(*m_band, cutsColumns());
                   },
                   [this](const SelectingText &) { finishTextSelection(); },
                   [](const Panning &) {},
               },
               mode);
    endDrag();
}

void CanvasInteraction::endDrag()
{
    m_band.reset();
    m_draft.reset();
    m_dragOrigin.reset();
    m_aim.reset();
    m_mode = None{};
    m_session.setPlacing(false);
    m_host.updateCursor();
    m_host.canvasChanged();
}

void CanvasInteraction::finishDrawing()
{
    if (!m_draft)
        return;
    const auto object = drawn(*std::exchange(m_draft, std::nullopt), m_document.base().size());
    if (!object)
        return;
    m_document.add(*object);
    if (object->kind == ToolKind::Callout)
        m_text.beginNew(*object);
}

void CanvasInteraction::finishTextSelection()
{
    if (m_session.mode() != EditorSession::Mode::SelectingText)
        return;
    m_session.setMode(EditorSession::Mode::Editing);
    if (m_band && m_band->width() > kLeastTextArea && m_band->height() > kLeastTextArea)
        m_host.copyText(roundedOutwards(*m_band) & m_document.imageBounds().toRect());
}

void CanvasInteraction::editSelectedText()
{
    if (const auto selected = m_document.selected(); selected && Tools::holdsText(selected->kind))
        m_text.begin(*selected);
}

CanvasInteraction::BandKind CanvasInteraction::bandKind() const
{
    if (std::holds_alternative<SelectingText>(m_mode))
        return BandKind::TextArea;
    return std::holds_alternative<Cropping>(m_mode) ? BandKind::Crop : BandKind::Cutout;
}

QUuid CanvasInteraction::movingObject() const
{
    if (const auto *move = std::get_if<Moving>(&m_mode))
        return m_movedSinceDown ? move->original.id : QUuid();
    if (const auto *resize = std::get_if<Resizing>(&m_mode))
        return m_movedSinceDown ? resize->original.id : QUuid();
    return {};
}

CanvasInteraction::Cursor CanvasInteraction::cursor() const
{
    if (std::holds_alternative<Panning>(m_mode))
        return Cursor::ClosedHand;
    if (m_spaceHeld)
        return Cursor::OpenHand;
    if (m_session.mode() != EditorSession::Mode::Editing)
        return Cursor::Cross;
    switch (m_document.tool()) {
    case ToolKind::Cutout:
        return cutsColumns() ? Cursor::ResizeColumns : Cursor::ResizeRows;
    case ToolKind::Text:
        return Cursor::Text;
    case ToolKind::Select:
        return Cursor::Arrow;
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
    case ToolKind::Crop:
    case ToolKind::Measure:
    case ToolKind::Image:
        return Cursor::Cross;
    }
    return Cursor::Arrow;
}
