#include "editor/canvas_accessibility.h"

#include "document/editor_document.h"
#include "editor/annotation_description.h"
#include "editor/canvas_view.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace {

// One object. It stands for an identity: the object itself may be gone.
class AccessibleObject : public QAccessibleInterface {
public:
    AccessibleObject(CanvasView *canvas, const QUuid &id) : m_canvas(canvas), m_id(id) {}

    bool isValid() const override { return m_canvas && annotation(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_canvas ? m_canvas->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_canvas); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::Graphic; }
    void setText(QAccessible::Text, const QString &) override {}
    QString text(QAccessible::Text which) const override
    {
        const auto shown = annotation();
        return shown && which == QAccessible::Name ? describe(*shown) : QString();
    }
    QRect rect() const override
    {
        const auto shown = annotation();
        if (!shown)
            return {};
        const QRectF inView = m_canvas->interaction().viewport().toView(shown->bounds());
        return inView.toAlignedRect().translated(m_canvas->mapToGlobal(QPoint(0, 0)));
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.selectable = true;
        state.focusable = true;
        state.selected = m_canvas->document().selectedID() == m_id;
        state.focused = state.selected && m_canvas->hasFocus();
        return state;
    }

private:
    std::optional<Annotation> annotation() const
    {
        if (m_canvas) {
            for (const Annotation &candidate : m_canvas->document().annotations()) {
                if (candidate.id == m_id)
                    return candidate;
            }
        }
        return std::nullopt;
    }

    QPointer<CanvasView> m_canvas;
    QUuid m_id;
};

class AccessibleCanvas : public QAccessibleWidget {
public:
    explicit AccessibleCanvas(CanvasView *canvas) : QAccessibleWidget(canvas, QAccessible::Canvas) {}
    ~AccessibleCanvas() override
    {
        for (const QAccessible::Id id : std::as_const(m_children))
            QAccessible::deleteAccessibleInterface(id);
    }

    QString text(QAccessible::Text which) const override
    {
        switch (which) {
        case QAccessible::Name:
            return canvas()->accessibleLabel();
        case QAccessible::Description:
            return canvas()->accessibleHelp();
        default:
            return QAccessibleWidget::text(which);
        }
    }
    // The objects come first, then the field in which a text is being typed.
    int childCount() const override
    {
        return static_cast<int>(objects().size()) + QAccessibleWidget::childCount();
    }
    QAccessibleInterface *child(int index) const override
    {
        const auto count = objects().size();
        if (index < 0 || index >= count)
            return index < 0 ? nullptr : QAccessibleWidget::child(index - static_cast<int>(count));
        return interfaceOf(objects()[index].id);
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int i = childCount() - 1; i >= 0; --i) {
            if (QAccessibleInterface *candidate = child(i); candidate && candidate->rect().contains(x, y))
                return candidate;
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
        const auto selected = canvas()->document().selectedID();
        return selected && canvas()->hasFocus() ? interfaceOf(*selected) : nullptr;
    }

private:
    CanvasView *canvas() const { return static_cast<CanvasView *>(widget()); }
    const QList<Annotation> &objects() const { return canvas()->document().annotations(); }
    QAccessibleInterface *interfaceOf(const QUuid &id) const
    {
        forgetGoneObjects();
        const auto known = m_children.constFind(id);
        if (known != m_children.constEnd())
            return QAccessible::accessibleInterface(*known);
        auto *made = new AccessibleObject(canvas(), id);
        m_children.insert(id, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    void forgetGoneObjects() const
    {
        if (m_children.size() <= objects().size())
            return;
        m_children.removeIf([](const auto &entry) {
            QAccessibleInterface *child = QAccessible::accessibleInterface(entry.value());
            if (child && child->isValid())
                return false;
            QAccessible::deleteAccessibleInterface(entry.value());
            return true;
        });
    }

    mutable QHash<QUuid, QAccessible::Id> m_children;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *canvas = qobject_cast<CanvasView *>(object);
    return canvas ? new AccessibleCanvas(canvas) : nullptr;
}

} // namespace

void installCanvasAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(installed);
}
