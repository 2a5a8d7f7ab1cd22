#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;
class QWindow;

// Keeps the keyboard with one widget for as long as it lives, whatever else opens meanwhile. Who holds the
// keyboard at its start, as an open menu does, keeps it until it lets go.
class KeyboardHold : public QObject {
    Q_OBJECT
public:
    // `widget` must be shown.
    explicit KeyboardHold(QWidget &widget);
    ~KeyboardHold() override;

private:
    void take();
    void returnFrom(QWindow *focused);

    QPointer<QWidget> m_widget;
    QTimer m_again;
};
