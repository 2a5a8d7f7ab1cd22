#pragma once

#include <QWidget>

// How far a work is, as a thin line.
class ProgressLine : public QWidget {
    Q_OBJECT
public:
    explicit ProgressLine(QWidget *parent = nullptr);
    // `total` 0: nobody knows yet.
    void set(int done, int total);
    QSize sizeHint() const override { return {120, 4}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_share = 0;
};
