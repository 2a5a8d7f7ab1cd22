#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

// Makes a bar of controls one stop of the Tab key: Left and Right go from control to control inside, Home and
// End to its ends. Up and Down change what a slider or a picker shows.
class BarKeys : public QObject {
    Q_OBJECT
public:
    // The bar is whole by now, and owns this.
    explicit BarKeys(QWidget *bar);

    // Where the keyboard comes in: where it was last, otherwise what is chosen, otherwise the first control.
    // Null when there is none.
    QWidget *stop() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<QWidget *> controls() const;
    QWidget *chosenBeside(QWidget *control, const QList<QWidget *> &all) const;
    bool goTo(qsizetype index);

    QWidget *m_bar;
    QPointer<QWidget> m_last;
};
