#include "editor/canvas_view.h"

#include "base/async.h"
#include "base/notice.h"
#include "document/editor_document.h"
#include "document/image_files.h"
#include "document/renderer.h"
#include "editor/canvas_accessibility.h"
#include "editor/editor_session.h"
#include "editor/inline_text_field.h"
#include "editor/texts.h"
#include "ui/announcement.h"
#include "ui/latin_keys.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QImageReader>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>

namespace {

// A file among the dropped ones that looks like a picture; its content decides later.
QString droppedPicture(const QMimeData *data)
{
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile() && !QImageReader(url.toLocalFile()).format().isEmpty())
            return url.toLocalFile();
        if (url.isLocalFile() && url.fileName().toLower().endsWith(".heic"))
            return url.toLocalFile();
    }
    return {};
}

Qt::CursorShape shapeOf(CanvasInteraction::Cursor cursor)
{
    switch (cursor) {
    case CanvasInteraction::Cursor::Arrow:
        return Qt::ArrowCursor;
    case CanvasInteraction::Cursor::Cross:
        return Qt::CrossCursor;
    case CanvasInteraction::Cursor::OpenHand:
        return Qt::OpenHandCursor;
    case CanvasInteraction::Cursor::ClosedHand:
        return Qt::ClosedHandCursor;
    case CanvasInteraction::Cursor::Text:
        return Qt::IBeamCursor;
    case CanvasInteraction::Cursor::ResizeRows:
        return Qt::SizeVerCursor;
    case CanvasInteraction::Cursor::ResizeColumns:
        return Qt::SizeHorCursor;
    }
    return Qt::ArrowCursor;
}

} // namespace

CanvasView::CanvasView(EditorDocument &document, EditorSession &session, Pasteboard &pasteboard,
                       NoticeBoard &notices, QWidget *parent)
    : QWidget(parent),
      m_document(document),
      m_session(session),
      m_notices(notices),
      m_interaction(document, session, pasteboard, *this)
{
    installCanvasAccessibility();
    setObjectName("canvas");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    grabGesture(Qt::PinchGesture);
    connect(&document, &EditorDocument::changed, this, &CanvasView::follow);
    connect(&session, &EditorSession::changed, this, [this](EditorSession::Field field) {
        if (field == EditorSession::Field::Mode)
            updateCursor();
        else if (field == EditorSession::Field::Zoom)
            canvasChanged();
    });
    updateCursor();
}

CanvasView::~CanvasView() = default;

void CanvasView::follow(EditorDocument::Field field)
{
    if (field == EditorDocument::Field::Tool)
        m_interaction.stopPlacing();
    canvasChanged();
    if (field == EditorDocument::Field::Tool || field == EditorDocument::Field::Style)
        updateCursor();
    if (field == EditorDocument::Field::Selection)
        tellOfSelection();
    const auto count = m_document.annotations().size(); // which the name tells
    const bool isNewName = std::exchange(m_toldCount, count) != count || field == EditorDocument::Field::Base;
    if (isNewName && QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (field == EditorDocument::Field::Base)
        announce(accessibleLabel());
}

// Once for all that a turn of the loop brings. Without a selection the canvas itself has the focus.
void CanvasView::tellOfSelection()
{
    if (!QAccessible::isActive() || std::exchange(m_isTellingOfSelection, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isTellingOfSelection = false;
            if (!hasFocus())
                return;
            QAccessibleInterface *canvas = QAccessible::queryAccessibleInterface(this);
            QAccessibleInterface *child = canvas->focusChild();
            QAccessibleEvent event(child ? child : canvas, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        },
        Qt::QueuedConnection);
}

QString CanvasView::accessibleLabel() const
{
    const auto count = static_cast<int>(m_document.annotations().size());
    const QString label = EditorTexts::tr("Capture, %1 by %2 pixels, %n object(s)", nullptr, count)
                              .arg(m_document.base().width())
                              .arg(m_document.base().height());
    return count > 0 ? label + EditorTexts::tr(". Tab moves between objects.") : label;
}

QString CanvasView::accessibleHelp() const
{
    const ToolKind tool = m_document.tool();
    const QString go = EditorTexts::tr("F6 goes to the bars.");
    if (tool == ToolKind::Select)
        return go;
    return EditorTexts::tr("Return places: %1. Arrow keys move it, with Alt they size it.")
               .arg(Tools::shortTitle(tool)) +
           ' ' + go;
}

void CanvasView::canvasChanged()
{
    if (!std::exchange(m_isStale, true))
        QMetaObject::invokeMethod(this, &CanvasView::synchronize, Qt::QueuedConnection);
}

void CanvasView::synchronize()
{
    if (!m_isStale)
        return;
    m_interaction.setView(size(), devicePixelRatioF());
    // The first time that it stands in a window at its size.
    if (isVisible() && !std::exchange(m_wasShown, true))
        m_interaction.showFromStart();
    m_isStale = false;
    update(m_painter.update(CanvasPainter::Scene::of(m_document, m_interaction)));
    if (m_textField) {
        if (const auto look = m_interaction.inlineText())
            m_textField->setLook(*look);
    }
    reportZoom();
    makeMosaic();
    drawAhead();
}

// While the user moves to where the first spotlight will be.
void CanvasView::drawAhead()
{
    if (m_document.tool() != ToolKind::Spotlight)
        return m_painter.keepAhead({});
    if (m_isDrawingAhead)
        return;
    auto dimmed = m_painter.dimmedAhead();
    if (!dimmed)
        return;
    m_isDrawingAhead = true;
    const auto drawn = runInBackground([dimmed = std::move(*dimmed)]() mutable {
        dimmed.draw();
        return std::move(dimmed);
    });
    whenDone(drawn, this, [this](CanvasPainter::Dimmed done) {
        m_isDrawingAhead = false;
        m_painter.keepAhead(std::move(done));
        drawAhead(); // what has changed meanwhile
    });
}

// Several frames long for a large picture. Until it is there, what it covers shows grey.
void CanvasView::makeMosaic()
{
    const bool isWanted = m_document.tool() == ToolKind::Blur || m_painter.wantsMosaic();
    if (!isWanted || m_isMakingMosaic || !m_document.readyPixelated().isNull())
        return;
    m_isMakingMosaic = true;
    const QImage base = m_document.base();
    whenDone(runInBackground([base] { return Renderer::pixelated(base); }), this,
             [this, base](const QImage &pixelated) {
                 m_isMakingMosaic = false;
                 m_document.keepPixelated(base, pixelated);
                 canvasChanged(); // and makes another one if the base has changed meanwhile
             });
}

void CanvasView::reportZoom()
{
    const double zoom = m_interaction.viewport().displayZoom();
    if (std::abs(zoom - m_session.displayZoom()) > 0.001)
        QMetaObject::invokeMethod(
            this, [this, zoom] { m_session.setDisplayZoom(zoom); }, Qt::QueuedConnection);
}

void CanvasView::paintEvent(QPaintEvent *)
{
    if (m_interaction.viewport().backing != devicePixelRatioF() || !m_wasShown)
        m_isStale = true;
    synchronize();
    QPainter painter(this);
    m_painter.paint(painter);
}

void CanvasView::resizeEvent(QResizeEvent *)
{
    // The ring lies inside: the canvas reaches from edge to edge.
    setProperty("focusRect", rect().adjusted(6, 6, -6, -6));
    m_isStale = true;
    synchronize();
}

bool CanvasView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        // Before the toolkit moves the focus.
        auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
            m_interaction.keyPress({key->key(), key->modifiers(), key->isAutoRepeat()})) {
            key->accept();
            return true;
        }
        break;
    }
    case QEvent::WindowActivate:
        makeMosaic();
        drawAhead();
        break;
    case QEvent::WindowDeactivate:
        // Any number of editors may stand open; those that nobody works in keep only what they show.
        m_painter.releaseCaches();
        m_document.releasePixelated();
        break;
    case QEvent::NativeGesture: {
        auto *gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            m_interaction.pinch(gesture->value(), gesture->position());
            return true;
        }
        break;
    }
    case QEvent::Gesture:
        if (auto *pinch = static_cast<QPinchGesture *>(
                static_cast<QGestureEvent *>(event)->gesture(Qt::PinchGesture))) {
            m_interaction.pinch(pinch->scaleFactor() - 1, mapFromGlobal(pinch->centerPoint()));
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void CanvasView::press(QMouseEvent *event, int clickCount)
{
    if (event->button() == Qt::MiddleButton) {
        // The middle button pushes the picture about, as the space key with the left one does.
        m_interaction.keyPress({Qt::Key_Space, {}, false});
        m_interaction.press({event->position(), {}, 1});
        m_interaction.keyRelease({Qt::Key_Space, {}, false});
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    setFocus(Qt::MouseFocusReason);
    m_interaction.press({event->position(), event->modifiers(), clickCount});
}

void CanvasView::mousePressEvent(QMouseEvent *event)
{
    press(event, 1);
}

void CanvasView::mouseDoubleClickEvent(QMouseEvent *event)
{
    press(event, 2);
}

void CanvasView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & (Qt::LeftButton | Qt::MiddleButton))
        m_interaction.drag(event->position(), event->modifiers());
}

void CanvasView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton)
        m_interaction.release(event->position());
}

void CanvasView::wheelEvent(QWheelEvent *event)
{
    // The toolkit turns a wheel sideways for Alt, which the canvas doesn't want.
    const bool used = m_interaction.scroll({event->position(), QPointF(event->pixelDelta()),
                                            QPointF(event->angleDelta()) / 120.0, event->modifiers()});
    event->setAccepted(used);
}

void CanvasView::keyPressEvent(QKeyEvent *event)
{
    const int key = LatinKeys::standIn(*event).value_or(event->key());
    if (!m_interaction.keyPress({key, event->modifiers(), event->isAutoRepeat()}))
        QWidget::keyPressEvent(event);
}

void CanvasView::keyReleaseEvent(QKeyEvent *event)
{
    m_interaction.keyRelease({event->key(), event->modifiers(), event->isAutoRepeat()});
    QWidget::keyReleaseEvent(event);
}

// The toolkit tells of the canvas alone.
void CanvasView::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    if (m_document.selectedID())
        tellOfSelection();
}

void CanvasView::focusOutEvent(QFocusEvent *event)
{
    // Its release will go elsewhere.
    m_interaction.keyRelease({Qt::Key_Space, {}, false});
    QWidget::focusOutEvent(event);
}

void CanvasView::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Mouse)
        m_interaction.selectForMenu(event->pos());
    QPoint at = event->globalPos();
    if (const auto selected = m_document.selected();
        selected && event->reason() == QContextMenuEvent::Keyboard)
        at = mapToGlobal(m_interaction.viewport().toView(selected->bounds()).center().toPoint());
    Q_EMIT menuRequested(at);
}

void CanvasView::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasImage() || !droppedPicture(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void CanvasView::dropEvent(QDropEvent *event)
{
    const QPointF position = event->position();
    const QString file = droppedPicture(event->mimeData());
    if (!file.isEmpty()) {
        event->acceptProposedAction();
        whenDone(runInBackground([file] { return ImageFiles::read(file); }), this,
                 [this, position](const Result<QImage> &image) {
                     if (image)
                         m_interaction.dropImage(*image, position);
                 });
        return;
    }
    const QImage image = event->mimeData()->imageData().value<QImage>();
    if (image.isNull())
        return;
    event->acceptProposedAction();
    m_interaction.dropImage(image, position);
}

void CanvasView::updateCursor()
{
    setCursor(shapeOf(m_interaction.cursor()));
}

void CanvasView::openTextField(const QString &text)
{
    m_interaction.setView(size(), devicePixelRatioF());
    m_textField = new InlineTextField(text, this);
    if (const auto look = m_interaction.inlineText())
        m_textField->setLook(*look);
    connect(m_textField, &InlineTextField::finished, this, [this] { m_interaction.commitText(); });
    m_textField->show();
    m_textField->setFocus(Qt::OtherFocusReason);
    canvasChanged();
}

QString CanvasView::closeTextField()
{
    if (!m_textField)
        return {};
    const QString text = m_textField->toPlainText();
    InlineTextField *field = std::exchange(m_textField, nullptr);
    field->disconnect(this);
    if (field->hasFocus()) // before it goes, which would send the keyboard on to the next bar
        setFocus(Qt::OtherFocusReason);
    field->hide();
    field->deleteLater();
    return text;
}

void CanvasView::copyText(const QRect &area)
{
    Q_EMIT textAreaChosen(area);
}

void CanvasView::notify(const QString &text, const QString &symbol)
{
    m_notices.post(text, symbol);
}

void CanvasView::announce(const QString &words)
{
    ::announce(this, words);
}

std::optional<QPointF> CanvasView::pointer() const
{
    const QPointF position = mapFromGlobal(QPointF(QCursor::pos()));
    if (!QRectF(rect()).contains(position))
        return std::nullopt;
    return position;
}
