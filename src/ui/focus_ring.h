#pragma once

#include <QObject>
#include <QPointer>

class QApplication;
class QWidget;

// Draws a ring around whatever control the keyboard has reached, 2 points off its edge, for every control of
// the program alike. Nothing is shown while the pointer does the work.
//
// A widget may shape the ring with the dynamic properties "focusRadius" (points; a negative one hides the
// ring) and "focusRect" (QRect in its own coordinates).
class FocusRing : public QObject {
    Q_OBJECT
public:
    explicit FocusRing(QApplication &application);
    ~FocusRing() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QWidget *widget);
    void setByKeyboard(bool byKeyboard);
    void place();

    class Frame;
    bool m_byKeyboard = false; // how the user last moved about
    QPointer<QWidget> m_target;
    QPointer<Frame> m_frame;
};
