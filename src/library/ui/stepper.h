#pragma once

#include <QWidget>

class QLineEdit;

// A whole number to type, or to step with two buttons or the arrow keys.
class Stepper : public QWidget {
    Q_OBJECT
public:
    Stepper(int minimum, int maximum, int value, QWidget *parent = nullptr);

    int value() const { return m_value; }
    void setValue(int value);

Q_SIGNALS:
    void changed(int value);

private:
    bool eventFilter(QObject *watched, QEvent *event) override;

    int m_minimum;
    int m_maximum;
    int m_value;
    QLineEdit *m_field;
};
