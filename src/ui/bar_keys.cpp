#include "ui/bar_keys.h"

#include "ui/controls.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLineEdit>

BarKeys::BarKeys(QWidget *bar) : QObject(bar), m_bar(bar)
{
    for (QWidget *child : bar->findChildren<QWidget *>())
        child->installEventFilter(this);
}

// From the left to the right of the screen, whichever way the bar runs.
QList<QWidget *> BarKeys::controls() const
{
    QList<QWidget *> found;
    for (QWidget *child : m_bar->findChildren<QWidget *>()) {
        if (child->isVisibleTo(m_bar) && child->isEnabled() && (child->focusPolicy() & Qt::TabFocus) &&
            !child->focusProxy())
            found += child;
    }
    const auto left = [this](const QWidget *widget) { return widget->mapTo(m_bar, QPoint()).x(); };
    std::sort(found.begin(), found.end(),
              [&left](const QWidget *a, const QWidget *b) { return left(a) < left(b); });
    return found;
}

// Of several choices the one that holds, which may have been made elsewhere.
QWidget *BarKeys::chosenBeside(QWidget *control, const QList<QWidget *> &all) const
{
    if (QAccessible::queryAccessibleInterface(control)->role() != QAccessible::RadioButton)
        return control;
    for (QWidget *other : all) {
        const auto *button = qobject_cast<QAbstractButton *>(other);
        if (button && button->isChecked() && other->parentWidget() == control->parentWidget())
            return other;
    }
    return control;
}

QWidget *BarKeys::stop() const
{
    const QList<QWidget *> all = controls();
    if (m_last && all.contains(m_last.data()))
        return chosenBeside(m_last, all);
    for (QWidget *control : all) {
        const auto *button = qobject_cast<QAbstractButton *>(control);
        if (button && button->isCheckable() && button->isChecked())
            return control;
    }
    return all.isEmpty() ? nullptr
                         : m_bar->layoutDirection() == Qt::RightToLeft ? all.constLast() : all.constFirst();
}

bool BarKeys::goTo(qsizetype index)
{
    const QList<QWidget *> all = controls();
    if (index >= 0 && index < all.size())
        all[index]->setFocus(Qt::TabFocusReason);
    return true;
}

bool BarKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        m_last = static_cast<QWidget *>(watched);
    if (event->type() != QEvent::KeyPress || qobject_cast<QLineEdit *>(watched))
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->modifiers() & ~Qt::KeypadModifier)
        return false;
    const QList<QWidget *> all = controls();
    const auto at = all.indexOf(static_cast<QWidget *>(watched));
    if (at < 0)
        return false;
    const auto *button = qobject_cast<QAbstractButton *>(watched);
    const auto *opener = qobject_cast<BarButton *>(watched);
    switch (key->key()) {
    case Qt::Key_Left:
        return goTo(at - 1);
    case Qt::Key_Right:
        return goTo(at + 1);
    case Qt::Key_Up:
        return button && goTo(at - 1);
    case Qt::Key_Down:
        return button && !(opener && opener->menu()) && goTo(at + 1);
    case Qt::Key_Home:
        return button && goTo(0);
    case Qt::Key_End:
        return button && goTo(all.size() - 1);
    default:
        return false;
    }
}
