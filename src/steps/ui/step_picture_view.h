#pragma once

#include "steps/guide_step.h"

#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <optional>

// The picture of a step in its card. The marker of a step that no editor has changed is dragged here, or put
// where a click wants it; a double click asks for the editor.
class StepPictureView : public QWidget {
    Q_OBJECT
public:
    explicit StepPictureView(QWidget *parent = nullptr);

    void setStep(const GuideStep &step);
    // Null while there is none; the room for it is kept.
    void setPreview(const QImage &preview);
    // How large it is where there is so much room.
    static QSize sizeWithin(QSize picture, int width);

Q_SIGNALS:
    void markerPut(QPointF point); // in pixels of the picture
    void editWanted();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    bool hasMarkerLayer() const { return !m_step.edited; }
    double scale() const; // points for a pixel of the picture
    double ringSize() const;
    QRect ringRect(QPointF at) const;
    void drag(QPointF pointer);
    void putMarker();

    GuideStep m_step;
    QImage m_preview;
    QPixmap m_scaled;                    // the preview as it is drawn
    std::optional<QPointF> m_marker;     // while it is dragged, and until a preview shows it there
    std::optional<QPointF> m_grabOffset; // from the pointer to the marker that it took hold of
    QPointF m_pressedAt;
    bool m_isPressed = false;
    bool m_isDragged = false;
    QTimer m_putSoon; // a click may be the first half of a double click
};
