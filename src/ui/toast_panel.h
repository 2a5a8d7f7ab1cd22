#pragma once

#include "base/notice.h"

#include <QTimer>
#include <QWidget>

class QPropertyAnimation;

// The panel of one notice: its words, or a small picture that can be dragged out as a file, and buttons for
// what the notice offers. One that offers nothing lets the pointer through; the others stay for as long as
// the pointer is over them, or one of their buttons is used. None ever takes the keyboard.
class ToastPanel : public QWidget {
    Q_OBJECT
public:
    explicit ToastPanel(const Notice &notice);
    ~ToastPanel() override;

    bool isInteractive() const { return m_isInteractive; }
    // Shows it there for `milliseconds`, then it fades.
    void showAt(const QPoint &topLeft, int milliseconds);

Q_SIGNALS:
    // It has faded, or an action was chosen.
    void finished();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QWidget *makeWords(const Notice &notice, bool isBesidePicture) const;
    QWidget *makeActions(const QList<NoticeAction> &actions);
    void fade();
    void stay();
    // While the picture is dragged, which takes the pointer elsewhere.
    void setHeld(bool isHeld);

    bool m_isInteractive;
    bool m_isHeld = false;
    QTimer m_leaving;
    QPropertyAnimation *m_fade;
};
