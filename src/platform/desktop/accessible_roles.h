#pragma once

#include "platform/desktop/atspi_bus.h"

// What a control is to the person who clicks it.
enum class ControlKind {
    Control,   // something that is clicked, with a name of its own or in what it shows
    TextInput, // something that is typed into
    Showing,   // text or a picture, which may be part of a control around it
    Container, // only holds others
};

// The one table of roles: of every toolkit's bus role into the vocabulary of ClickedElement.
namespace AccessibleRoles {

struct Facts {
    AtspiRole role = AtspiRole::Panel;
    quint64 states = 0;
    AtspiRole parentRole = AtspiRole::Panel; // asked for only where `needsParent`
    QString webRole;                         // the role that a page's author gave; often empty
};

ControlKind kind(const Facts &facts);
// "AXButton" and so on; empty for a container.
QString name(const Facts &facts);
// Whether `name` goes by what the control stands in.
bool needsParent(AtspiRole role);
// Whether toolkits give what is chosen or typed as the name of this control.
bool isNamedByValue(AtspiRole role, const QString &toolkit);

} // namespace AccessibleRoles
