#pragma once

#include "document/annotation.h"
#include "editor/canvas_host.h"
#include "editor/canvas_viewport.h"
#include "editor/text_editing.h"

#include <QPointF>
#include <QRectF>
#include <QUuid>
#include <optional>
#include <variant>

class EditorDocument;
class EditorSession;
class Pasteboard;

// Turns pointer and key events on a canvas into operations on the document: presses, drags and releases,
// zooming and panning, typing and arranging. Knows no window: the view around it is a host of a few calls, so
// it can be driven event by event. Holds no objects but the one being drawn.
//
// Positions that come in are view coordinates in points, y down. Command is Ctrl, Option is Alt.
class CanvasInteraction {
public:
    struct Press {
        QPointF position;
        Qt::KeyboardModifiers modifiers;
        int clickCount = 1;
    };
    struct Key {
        int key = 0;
        Qt::KeyboardModifiers modifiers;
        bool isRepeat = false;
    };
    // Of a wheel or touchpad. `pixels` when the device tells them, otherwise notches of a wheel, in
    // fractions.
    struct Scroll {
        QPointF position;
        QPointF pixels;
        QPointF notches;
        Qt::KeyboardModifiers modifiers;
    };
    enum class Cursor { Arrow, Cross, OpenHand, ClosedHand, Text, ResizeRows, ResizeColumns };
    enum class BandKind { TextArea, Crop, Cutout };

    CanvasInteraction(EditorDocument &document, EditorSession &session, Pasteboard &pasteboard,
                      CanvasHost &host)
        : m_document(document),
          m_session(session),
          m_pasteboard(pasteboard),
          m_host(host),
          m_text(document, host)
    {}

    // The view's size in points, and device pixels for a point.
    void setView(const QSizeF &size, double backing);
    CanvasViewport viewport() const;

    void press(const Press &press);
    void drag(const QPointF &position, Qt::KeyboardModifiers modifiers);
    void release(const QPointF &position);
    // False for what the canvas has no use for.
    bool keyPress(const Key &key);
    void keyRelease(const Key &key);
    bool scroll(const Scroll &scroll);
    // A pinch that grows the picture by `magnification`, 0 for none.
    void pinch(double magnification, const QPointF &position);

    void setZoom(std::optional<double> zoom, std::optional<QPointF> around = {});
    void zoomBy(double factor) { setZoom(viewport().displayZoom() * factor); }
    void panBy(const QPointF &delta);
    // How a picture is first shown: fitted; one much taller than the view as wide as the view, from its top.
    void showFromStart();

    // Text being typed.
    bool isEditingText() const { return m_text.isOpen(); }
    std::optional<InlineText> inlineText() const { return m_text.field(viewport()); }
    QUuid editedObject() const { return m_text.object(); } // null while typing a new one
    void commitText() { m_text.commit(); }
    void editSelectedText();

    // Commands
    // A drag that is under way ends first: what it did goes with the step that it began.
    void undo();
    void redo();
    // Under the pointer, if it is over the canvas.
    void paste();
    void startEyedropper();
    void startTextSelection();
    // Selects what lies under the pointer, for a context menu.
    void selectForMenu(const QPointF &position);
    void dropImage(const QImage &image, const QPointF &position);
    void selectNext(bool backwards);
    void select(const QUuid &id);

    // What is painted over the document's objects.
    const std::optional<Annotation> &draft() const { return m_draft; }
    const std::optional<QRectF> &band() const { return m_band; }
    BandKind bandKind() const;
    // Where keys have moved what picks a colour; image pixels.
    const std::optional<QPointF> &aim() const { return m_aim; }
    // Lets go of a frame or a point that keys have placed.
    void stopPlacing();
    // The object that follows the pointer now; null otherwise.
    QUuid movingObject() const;
    Cursor cursor() const;

private:
    struct None {};
    struct Drawing {};
    struct Cropping {};
    struct Cutting {};
    struct SelectingText {};
    struct Moving {
        Annotation original;
    };
    struct Resizing {
        Annotation original;
        AnnotationHandle handle;
    };
    struct Panning {
        QPointF press;
        QPointF origin;
    };
    using DragMode = std::variant<None, Drawing, Cropping, Cutting, SelectingText, Moving, Resizing, Panning>;

    void pickColor(const QPointF &point);
    bool pressObject(const Press &press, const QPointF &point);
    void pressTool(const QPointF &point);
    void finishDrawing();
    void finishTextSelection();
    void beforeFirstMove();
    bool cutsColumns() const;
    QRectF band(const QPointF &a, const QPointF &b) const;
    std::optional<AnnotationHandle> handleHit(const QPointF &viewPoint) const;
    double tolerance() const;
    bool returnKey();
    bool arrowKey(const Key &key);
    void arrowObject(const Key &key, const QPointF &step);
    void arrowFrame(const Key &key, const QPointF &step);
    bool scrollByKey(const Key &key);
    void escape();
    void endDrag();
    // By keyboard: without a press and its position.
    bool isPlacingFrame() const { return m_band && !m_dragOrigin; }
    bool placeTool();
    void placeObject(ToolKind tool);
    void placeFrame(const DragMode &mode, const QRectF &frame);
    void moveAim(const QPointF &to);
    void announceFrame();
    QRectF visiblePart() const;
    void reveal(const QRectF &part);

    EditorDocument &m_document;
    EditorSession &m_session;
    Pasteboard &m_pasteboard;
    CanvasHost &m_host;
    QSizeF m_viewSize;
    double m_backing = 2;
    QPointF m_pan;
    DragMode m_mode;
    std::optional<Annotation> m_draft;
    std::optional<QPointF> m_dragOrigin; // image point of the last press
    bool m_movedSinceDown = false;
    std::optional<QRectF> m_band; // image pixels
    std::optional<QPointF> m_aim;
    TextEditing m_text;
    bool m_spaceHeld = false;
    std::optional<QUuid> m_arrowedObject; // moved by the key that is held
};
