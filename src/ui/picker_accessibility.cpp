#include "ui/picker_accessibility.h"

#include "ui/segmented_picker.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace {

class Segment : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Segment(SegmentedPicker *picker, int index) : m_picker(picker), m_index(index) {}

    bool isValid() const override { return m_picker && m_index < m_picker->segments().size(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_picker ? m_picker->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_picker); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override {}
    QAccessible::Role role() const override
    {
        return isValid() && m_picker->isTabs() ? QAccessible::PageTab : QAccessible::RadioButton;
    }
    QString text(QAccessible::Text which) const override
    {
        return isValid() && which == QAccessible::Name ? m_picker->segments()[m_index].text : QString();
    }
    QRect rect() const override
    {
        return isValid() ? m_picker->segmentRect(m_index).translated(m_picker->mapToGlobal(QPoint()))
                         : QRect();
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        const bool isCurrent = m_picker->current() == m_index;
        state.disabled = !m_picker->isEnabled() || !m_picker->isSegmentEnabled(m_index);
        state.invisible = !m_picker->isVisible();
        state.focusable = true;
        state.focused = isCurrent && m_picker->hasFocus();
        state.checkable = !m_picker->isTabs();
        state.checked = state.checkable && isCurrent;
        state.selectable = true;
        state.selected = isCurrent;
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &name) override
    {
        if (isValid() && name == pressAction())
            m_picker->choose(m_index);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QPointer<SegmentedPicker> m_picker;
    int m_index;
};

class AccessiblePicker : public QAccessibleWidget {
public:
    explicit AccessiblePicker(SegmentedPicker *picker) : QAccessibleWidget(picker) {}
    ~AccessiblePicker() override
    {
        for (const QAccessible::Id id : std::as_const(m_segments))
            QAccessible::deleteAccessibleInterface(id);
    }

    QAccessible::Role role() const override
    {
        return picker()->isTabs() ? QAccessible::PageTabList : QAccessible::Grouping;
    }
    QString text(QAccessible::Text which) const override
    {
        // The choice stands in the children alone.
        return which == QAccessible::Value ? QString() : QAccessibleWidget::text(which);
    }
    int childCount() const override { return static_cast<int>(picker()->segments().size()); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        while (m_segments.size() <= index)
            m_segments += QAccessible::registerAccessibleInterface(
                new Segment(picker(), static_cast<int>(m_segments.size())));
        return QAccessible::accessibleInterface(m_segments[index]);
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int i = 0; i < childCount(); ++i) {
            if (child(i)->rect().contains(x, y))
                return child(i);
        }
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface *wanted) const override
    {
        for (int i = 0; i < childCount(); ++i) {
            if (child(i) == wanted)
                return i;
        }
        return -1;
    }
    QAccessibleInterface *focusChild() const override
    {
        return picker()->hasFocus() ? child(picker()->current()) : nullptr;
    }

private:
    SegmentedPicker *picker() const { return static_cast<SegmentedPicker *>(widget()); }

    mutable QList<QAccessible::Id> m_segments;
};

} // namespace

QAccessibleInterface *makePickerAccessible(SegmentedPicker *picker)
{
    return new AccessiblePicker(picker);
}

void tellOfChoice(SegmentedPicker *picker, int before)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface *group = QAccessible::queryAccessibleInterface(picker);
    for (const int index : {before, picker->current()}) {
        QAccessibleInterface *segment = group->child(index);
        if (!segment)
            continue;
        QAccessible::State changed;
        changed.selected = picker->isTabs();
        changed.checked = !picker->isTabs();
        QAccessibleStateChangeEvent event(segment, changed);
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleInterface *now = group->child(picker->current());
    if (now && picker->hasFocus()) {
        QAccessibleEvent event(now, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}
