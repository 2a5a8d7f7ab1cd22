#pragma once

#include "recording/recording_extras.h"

#include <QWidget>

// A clear pane over what is filmed, which is drawn on with the pointer. Esc ends it. Where windows can't be
// clear, it is cut to its strokes and holds the pointer meanwhile.
class DrawOverlayWindow : public QWidget {
    Q_OBJECT
public:
    explicit DrawOverlayWindow(const QRectF &region);
    // Shows it and takes the keyboard.
    void begin();
    void clear();
    const Strokes &strokes() const { return m_strokes; }

Q_SIGNALS:
    void escaped();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void showStrokes();
    bool passOn(const QMouseEvent &event);

    Strokes m_strokes;
    QPointF m_last; // of the pointer, as it draws
};
