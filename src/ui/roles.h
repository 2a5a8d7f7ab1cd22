#pragma once

#include <QAccessible>

class QMenu;
class QWidget;

// What assistive technology is told of the program's own widgets, as the toolkit does of its own: windows are
// windows, buttons tell what they open and whether they are on, pickers have their choices as children.
namespace Roles {

// Of widgets that are no control, and of buttons that are one of several choices (QAccessible::RadioButton).
// Dialogs that are sheets tell that they are modal.
void set(QWidget *widget, QAccessible::Role role);
// Of a widget that is a slider of its own kind; tells that it changed. `words` say it where the number doesn't.
void setValue(QWidget *widget, double value, double maximum, const QString &words = {});
// A menu without a name has that of the item or the button that opens it.
void nameMenu(QMenu *menu);
// Once for the program; more often does nothing.
void install();

} // namespace Roles
