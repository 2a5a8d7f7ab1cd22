#include "ui/roles.h"

#include "ui/controls.h"
#include "ui/picker_accessibility.h"
#include "ui/sheet.h"
#include "ui/texts.h"

#include <QAccessibleWidget>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

namespace {

constexpr char kRole[] = "lumenpostRole";
constexpr char kValue[] = "lumenpostValue";
constexpr char kMaximum[] = "lumenpostMaximum";
constexpr char kValueWords[] = "lumenpostValueWords";

std::optional<QAccessible::Role> roleOf(const QObject *object)
{
    const QVariant role = object->property(kRole);
    return role.isValid() ? std::optional(static_cast<QAccessible::Role>(role.toInt())) : std::nullopt;
}

class AccessiblePart : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessiblePart(QWidget *part) : QAccessibleWidget(part) {}

    // Asked for each time: a widget gets its role and its parent after its first event.
    QAccessible::Role role() const override
    {
        return roleOf(widget()).value_or(widget()->isWindow() ? QAccessible::Window : QAccessible::Client);
    }
    QString text(QAccessible::Text which) const override
    {
        const QString words = widget()->property(kValueWords).toString();
        return which == QAccessible::Value && !words.isEmpty() ? words : QAccessibleWidget::text(which);
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && widget()->property(kValue).isValid())
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return widget()->property(kValue); }
    void setCurrentValue(const QVariant &) override {} // by keys alone
    QVariant minimumValue() const override { return 0.0; }
    QVariant maximumValue() const override { return widget()->property(kMaximum); }
    QVariant minimumStepSize() const override { return {}; }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = qobject_cast<Sheet *>(widget()) != nullptr || widget()->isModal();
        return state;
    }
};

class AccessibleButton : public QAccessibleWidget {
public:
    explicit AccessibleButton(QAbstractButton *button) : QAccessibleWidget(button) {}

    QAccessible::Role role() const override
    {
        if (const auto own = roleOf(widget()))
            return *own;
        if (menu())
            return QAccessible::ButtonMenu;
        return button()->isCheckable() ? QAccessible::CheckBox : QAccessible::PushButton;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button()->isCheckable();
        state.checked = button()->isChecked();
        state.pressed = button()->isDown();
        state.hasPopup = menu() != nullptr;
        state.expandable = state.hasPopup;
        state.expanded = menu() && menu()->isVisible();
        state.collapsed = menu() && !menu()->isVisible();
        return state;
    }
    QString text(QAccessible::Text which) const override
    {
        const QString own = QAccessibleWidget::text(which);
        return own.isEmpty() && which == QAccessible::Name ? button()->text() : own;
    }
    QStringList actionNames() const override
    {
        QStringList names;
        if (button()->isEnabled())
            names += button()->isCheckable() ? toggleAction() : menu() ? showMenuAction() : pressAction();
        return names + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &name) override
    {
        if (name == pressAction() || name == toggleAction() || name == showMenuAction())
            button()->animateClick();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QAbstractButton *button() const { return static_cast<QAbstractButton *>(widget()); }
    QMenu *menu() const
    {
        const auto *opener = qobject_cast<BarButton *>(widget());
        return opener ? opener->menu() : nullptr;
    }
};

// The toolkit asks for each class of an object, the most derived one first.
QAccessibleInterface *make(const QString &className, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget)
        return nullptr;
    if (auto *picker = qobject_cast<SegmentedPicker *>(widget))
        return makePickerAccessible(picker);
    if (className == QLatin1String("QAbstractButton"))
        return new AccessibleButton(static_cast<QAbstractButton *>(widget));
    if (qobject_cast<QAbstractButton *>(widget))
        return nullptr;
    return className == QLatin1String("QWidget") || roleOf(widget) ? new AccessiblePart(widget) : nullptr;
}

} // namespace

void Roles::set(QWidget *widget, QAccessible::Role role)
{
    widget->setProperty(kRole, static_cast<int>(role));
}

void Roles::setValue(QWidget *widget, double value, double maximum, const QString &words)
{
    widget->setProperty(kValue, value);
    widget->setProperty(kMaximum, maximum);
    widget->setProperty(kValueWords, words);
    QAccessibleValueChangeEvent event(widget, value);
    QAccessible::updateAccessibility(&event);
}

void Roles::nameMenu(QMenu *menu)
{
    if (!menu->accessibleName().isEmpty())
        return;
    QString name = menu->title().remove(u'&');
    if (const auto *button = qobject_cast<QAbstractButton *>(menu->parentWidget()); button && name.isEmpty())
        name = button->accessibleName().isEmpty() ? button->text() : button->accessibleName();
    menu->setAccessibleName(name.isEmpty() ? UiTexts::tr("Context menu") : name);
}

void Roles::install()
{
    static const bool installed = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(installed);
}
