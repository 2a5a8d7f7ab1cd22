#include "ui/overflow_button.h"

#include "ui/symbol.h"

#include <QEvent>
#include <QLayout>
#include <QMenu>

OverflowButton::OverflowButton(QWidget *bar, const QString &name, QList<BarButton *> yielding)
    : BarButton(QStringLiteral("ellipsis"), name, BarButton::Label::Under, bar),
      m_bar(bar),
      m_yielding(std::move(yielding))
{
    setObjectName(QStringLiteral("overflow"));
    setMenu(new QMenu);
    connect(this, &BarButton::menuAboutToOpen, this, &OverflowButton::fill);
    hide();
    bar->setMinimumWidth(1); // what the row asks for is asked of this button
    bar->installEventFilter(this);
}

bool OverflowButton::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_bar && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest))
        fit();
    return false;
}

void OverflowButton::fit()
{
    const int gap = m_bar->layout()->spacing();
    const auto widthOf = [gap](const BarButton *button) { return button->sizeHint().width() + gap; };
    int needed = m_bar->layout()->minimumSize().width();
    for (const BarButton *button : std::as_const(m_takenIn))
        needed += widthOf(button);
    if (!isHidden())
        needed -= widthOf(this);
    QSet<BarButton *> without;
    const int room = m_bar->width();
    if (needed > room)
        needed += widthOf(this);
    for (BarButton *button : m_yielding) {
        if (needed <= room)
            break;
        needed -= widthOf(button);
        without.insert(button);
    }
    if (without == m_takenIn)
        return;
    m_takenIn = without;
    for (BarButton *button : m_yielding)
        button->setVisible(!m_takenIn.contains(button));
    setVisible(!m_takenIn.isEmpty());
    partGroups();
}

// No line stands beside another one when all between them is taken in.
void OverflowButton::partGroups()
{
    bool hasButton = false;
    for (int i = 0; i < m_bar->layout()->count(); ++i) {
        QWidget *widget = m_bar->layout()->itemAt(i)->widget();
        if (qobject_cast<Hairline *>(widget))
            widget->setVisible(std::exchange(hasButton, false));
        else if (widget && !widget->isHidden())
            hasButton = true;
    }
}

void OverflowButton::fill()
{
    menu()->clear();
    const QLayout &row = *m_bar->layout();
    for (int i = 0; i < row.count(); ++i) {
        auto *button = qobject_cast<BarButton *>(row.itemAt(i)->widget());
        if (!button || !m_takenIn.contains(button))
            continue;
        if (QMenu *own = button->menu()) {
            Q_EMIT button->menuAboutToOpen();
            QAction *item = menu()->addMenu(own);
            item->setText(button->text());
            item->setIcon(symbolIcon(button->symbol()));
            continue;
        }
        QAction *item = menu()->addAction(symbolIcon(button->symbol()), button->text(), button,
                                          &QAbstractButton::click);
        item->setEnabled(button->isEnabled());
        item->setCheckable(button->isCheckable());
        item->setChecked(button->isChecked());
    }
}
