#include "library/ui/library_grid.h"

#include <QAccessibleWidget>
#include <QFileInfo>
#include <QHash>
#include <QPointer>
#include <QWindow>

namespace {

// One card. It stands for a path: the file itself may be gone, or not be shown.
class AccessibleCard : public QAccessibleInterface {
public:
    AccessibleCard(LibraryGrid *grid, const QString &path) : m_grid(grid), m_path(path) {}

    bool isValid() const override { return index() >= 0; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_grid ? m_grid->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_grid); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text, const QString &) override {}
    QString text(QAccessible::Text which) const override
    {
        return isValid() && which == QAccessible::Name ? m_grid->description(index()) : QString();
    }
    QRect rect() const override
    {
        return isValid() ? m_grid->cardRect(index())
                               .toAlignedRect()
                               .translated(m_grid->viewport()->mapToGlobal(QPoint(0, 0)))
                         : QRect();
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        state.selectable = true;
        state.focusable = true;
        state.multiSelectable = true;
        state.selected = isValid() && m_grid->model().isSelected(m_path);
        state.focused = isValid() && m_grid->hasFocus() && m_grid->current() == index();
        return state;
    }
    int index() const { return m_grid ? m_grid->model().visibleIndex(m_path) : -1; }

private:
    QPointer<LibraryGrid> m_grid;
    QString m_path;
};

class AccessibleGrid : public QAccessibleWidget {
public:
    explicit AccessibleGrid(LibraryGrid *grid) : QAccessibleWidget(grid, QAccessible::List) {}
    ~AccessibleGrid() override
    {
        for (const QAccessible::Id id : std::as_const(m_cards))
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return grid()->model().visibleCount(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        const QString path = grid()->model().visiblePath(index);
        QAccessible::Id &id = m_cards[path];
        if (!id)
            id = QAccessible::registerAccessibleInterface(new AccessibleCard(grid(), path));
        return QAccessible::accessibleInterface(id);
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QPoint inGrid = grid()->viewport()->mapFromGlobal(QPoint(x, y));
        return child(grid()->cards().cardAt(inGrid - grid()->cardRect(0).topLeft() +
                                            grid()->cards().card(0).topLeft()));
    }
    int indexOfChild(const QAccessibleInterface *wanted) const override
    {
        const auto *card = dynamic_cast<const AccessibleCard *>(wanted);
        return card ? card->index() : -1;
    }
    QAccessibleInterface *focusChild() const override
    {
        return grid()->hasFocus() ? child(grid()->current()) : nullptr;
    }

private:
    LibraryGrid *grid() const { return static_cast<LibraryGrid *>(widget()); }

    mutable QHash<QString, QAccessible::Id> m_cards;
};

QAccessibleInterface *make(const QString &, QObject *object)
{
    auto *grid = qobject_cast<LibraryGrid *>(object);
    return grid ? new AccessibleGrid(grid) : nullptr;
}

} // namespace

void installGridAccessibility()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(isInstalled);
}
