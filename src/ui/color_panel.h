#pragma once

#include <QColor>
#include <QFrame>

class QLineEdit;

// Any colour, by hue, saturation, brightness or its hexadecimal name, in a small panel that closes when the
// user goes elsewhere. The colour is told while it is being chosen; Esc takes it back.
class ColorPanel : public QFrame {
    Q_OBJECT
public:
    explicit ColorPanel(const QColor &color, QWidget *parent);

    const QColor &color() const { return m_color; }
    // Chooses, as the user does.
    void choose(const QColor &color);
    // Opens under a control. Deletes itself when it closes.
    void openUnder(QWidget *anchor);

Q_SIGNALS:
    void changed(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Plane;
    class HueBar;

    void take(double hue, double saturation, double value);
    void show(const QColor &color);
    void readField();

    QColor m_before;
    QColor m_color;
    double m_hue = 0; // 0 to 1, kept also while the colour is grey
    Plane *m_plane;
    HueBar *m_hueBar;
    QLineEdit *m_field;
};
