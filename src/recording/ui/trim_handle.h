#pragma once

#include <QWidget>

// One end of the part of a film that is being chosen. Dragged, or moved with the arrow keys: a picture, with
// Shift a second.
class TrimHandle : public QWidget {
    Q_OBJECT
public:
    enum class Side { Left, Right };
    static constexpr int kWidth = 12;

    TrimHandle(Side side, const QString &name, QWidget *parent);
    static QColor color();

Q_SIGNALS:
    // Of its inner edge, in the parent's coordinates.
    void draggedTo(double x);
    void stepped(int pictures);
    void nudged(double seconds);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    Side m_side;
    double m_grip = 0; // from the pointer to the inner edge
};
