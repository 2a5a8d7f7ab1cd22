#pragma once

#include <QImage>
#include <QObject>
#include <QRectF>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class NoticeBoard;
class Pasteboard;
class PinWindow;
class QMenu;

// Where a new pin goes: at most 60 percent of the usable part of the screen (global points, y down) and never
// larger than the picture's own points, centred, each of six steps 24 farther to the lower right.
QRectF pinFrame(const QSize &image, double backing, const QRectF &visible, int openPins);

// Pictures that float above all windows, any number of them.
class Pins : public QObject {
    Q_OBJECT
public:
    // Both outlive the pins.
    Pins(Pasteboard &pasteboard, NoticeBoard &notices, QObject *parent = nullptr);
    ~Pins() override;

    // Opens a picture in a new editor.
    std::function<void(const QImage &)> openEditor;

    void pin(const QImage &image);
    void closeAll();
    // Gives the keyboard to the pin after the one that has it. False without pins.
    bool goToNext();
    const std::vector<std::unique_ptr<PinWindow>> &windows() const { return m_windows; }

private:
    friend class PinWindow;
    void remove(PinWindow *window);
    void copy(const QImage &image);

    Pasteboard &m_pasteboard;
    NoticeBoard &m_notices;
    std::vector<std::unique_ptr<PinWindow>> m_windows;
};

// One pin. Drag moves it, its edges size it, a wheel zooms it (with Alt: its opacity), a double click closes
// it. Of the keys, arrows move it, with Alt they size it, and Tab goes on to the next pin.
class PinWindow : public QWidget {
    Q_OBJECT
public:
    PinWindow(Pins &pins, const QImage &image, const QRectF &frame, double backing);

    const QImage &image() const { return m_image; }
    // Around the window's centre; 60 to 6000 wide.
    void zoom(double factor);
    void showActualSize();
    // Where and how large it is, for who can't see it.
    QString placeWords() const;
    QMenu *makeMenu();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void arrowKey(const QPoint &direction, Qt::KeyboardModifiers modifiers);
    bool isOnEdge(const QPointF &position) const;
    void resizeTo(double width, const QPointF &fixed, double fixedX, double fixedY);

    Pins &m_pins;
    QImage m_image;
    QImage m_scaled; // as it is shown, in device pixels
    double m_backing;
    QPointF m_grip; // of the press, in the window
    bool m_isSizing = false;
};
