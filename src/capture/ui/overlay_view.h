#pragma once

#include "capture/screen_capturer.h"
#include "capture/ui/overlay_marks.h"

#include <QWidget>
#include <optional>

class CaptureOverlayController;

// The interaction with one display's frozen picture, and its drawing. Places are points, origin at the top
// left of the display.
class OverlayView : public QWidget {
    Q_OBJECT
public:
    OverlayView(const DisplaySnapshot &snapshot, CaptureOverlayController &controller, QWidget *parent);

    const DisplaySnapshot &snapshot() const { return m_snapshot; }
    const std::optional<QPointF> &mouse() const { return m_mouse; }
    const std::optional<QPointF> &dragStart() const { return m_dragStart; }
    const std::optional<QRectF> &selection() const { return m_selection; }
    const OverlayMarks &marks() const { return m_marks; }

    // As if the pointer had come to this place.
    void pointerMoved(const QPointF &position);
    // Moves the pointer, and what hangs on it, by so many pixels of the picture.
    void nudge(int dx, int dy);
    // Begins a selection at the pointer, or ends the one that was begun by keys. In a drag of the mouse the
    // selection moves as a whole from now on, until endMove().
    void toggleSelection();
    void endMove();
    // Takes the selection, or without one the whole display.
    void accept();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    struct Hovered {
        quint32 id = 0;
        QRectF rect; // in the view
    };
    // What moves with the pointer while a selection is drawn: its far corner, or, as long as Space is held
    // in a drag of the mouse, the whole of it.
    enum class DraggedBy { Button, ButtonAsAWhole, Keys };
    enum class Shape { Free, Square };

    QRectF bounds() const { return QRectF(rect()); }
    OverlayLayout layout() const { return {QSizeF(size()), m_snapshot.image}; }
    QPointF placeOf(const QMouseEvent &event) const;
    void updateHover(const QPointF &position);
    void beginDrag(const QPointF &position, DraggedBy by);
    void drag(const QPointF &position, Shape shape);
    void moveSelection(const QPointF &position);
    void endDrag();
    void finishSelecting();
    void finishCapturing();
    void finishWithRect(const QRectF &rect);
    // Brings the marks up to date and repaints only what changed.
    void refresh();
    QString placeWords() const;
    QString titleOf(quint32 window) const;
    OverlayMarks currentMarks() const;
    void preparePicture();
    void paintPictures(QPainter &painter, const QRegion &region) const;

    DisplaySnapshot m_snapshot;
    CaptureOverlayController &m_controller;
    QImage m_picture; // in the device's pixels
    std::optional<QPointF> m_mouse;
    std::optional<QPointF> m_dragStart;
    DraggedBy m_draggedBy = DraggedBy::Button;
    std::optional<QRectF> m_selection;
    std::optional<Hovered> m_hovered;
    std::optional<QPointF> m_nudgedTo; // its motion event is our own
    OverlayMarks m_marks;
};
