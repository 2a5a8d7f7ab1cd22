#pragma once

#include "ui/controls.h"

#include <QSet>

// Takes in what of a bar there is no room for, and offers it in a menu. Stands in the bar's row; hidden while
// everything fits.
class OverflowButton : public BarButton {
    Q_OBJECT
public:
    // `yielding` give way one after the other, the first one first. The bar is whole by now, and may become
    // narrower than its row.
    OverflowButton(QWidget *bar, const QString &name, QList<BarButton *> yielding);

    // Those that are in the menu now.
    const QSet<BarButton *> &takenIn() const { return m_takenIn; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fit();
    void partGroups();
    void fill();

    QWidget *m_bar;
    QList<BarButton *> m_yielding;
    QSet<BarButton *> m_takenIn;
};
