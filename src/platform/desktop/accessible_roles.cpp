#include "platform/desktop/accessible_roles.h"

namespace AccessibleRoles {

namespace {

bool is(const Facts &facts, AtspiState state)
{
    return AtspiBus::has(facts.states, state);
}

// Rows and cells may be changed in place; a field of their own stands over them then.
bool isTypedInto(const Facts &facts)
{
    switch (facts.role) {
    case AtspiRole::DateEditor:
    case AtspiRole::PasswordText:
    case AtspiRole::SpinButton:
    case AtspiRole::Terminal:
    case AtspiRole::Text:
    case AtspiRole::Autocomplete:
    case AtspiRole::EditBar:
    case AtspiRole::Entry:
        return true;
    case AtspiRole::TableCell:
    case AtspiRole::TreeItem:
    case AtspiRole::ListItem:
    case AtspiRole::TableRow:
        return false;
    default: // the bus has more roles than are told apart here
        return is(facts, AtspiState::Editable);
    }
}

QString textInputName(const Facts &facts)
{
    if (facts.role == AtspiRole::ComboBox || facts.role == AtspiRole::Autocomplete)
        return QStringLiteral("AXComboBox");
    if (facts.webRole == QLatin1String("searchbox"))
        return QStringLiteral("AXSearchField");
    const bool isLine = facts.role == AtspiRole::Entry || facts.role == AtspiRole::PasswordText ||
                        facts.role == AtspiRole::SpinButton || facts.role == AtspiRole::DateEditor ||
                        (facts.role == AtspiRole::Text && !is(facts, AtspiState::MultiLine));
    return isLine && !is(facts, AtspiState::MultiLine) ? QStringLiteral("AXTextField")
                                                       : QStringLiteral("AXTextArea");
}

} // namespace

ControlKind kind(const Facts &facts)
{
    // Who doesn't say whether it is typed into tells no name either.
    if (facts.states == 0)
        return ControlKind::Container;
    if (isTypedInto(facts))
        return ControlKind::TextInput;
    switch (facts.role) {
    case AtspiRole::CheckBox:
    case AtspiRole::CheckMenuItem:
    case AtspiRole::ColumnHeader:
    case AtspiRole::ComboBox:
    case AtspiRole::DesktopIcon:
    case AtspiRole::Icon:
    case AtspiRole::Link:
    case AtspiRole::ListItem:
    case AtspiRole::Menu:
    case AtspiRole::MenuItem:
    case AtspiRole::PageTab:
    case AtspiRole::PushButton:
    case AtspiRole::PushButtonMenu:
    case AtspiRole::RadioButton:
    case AtspiRole::RadioMenuItem:
    case AtspiRole::RowHeader:
    case AtspiRole::Slider:
    case AtspiRole::Dial:
    case AtspiRole::Switch:
    case AtspiRole::TableCell:
    case AtspiRole::TableColumnHeader:
    case AtspiRole::TableRowHeader:
    case AtspiRole::TearoffMenuItem:
    case AtspiRole::ToggleButton:
    case AtspiRole::TreeItem:
        return ControlKind::Control;
    case AtspiRole::Image:
    case AtspiRole::Label:
    case AtspiRole::Static:
    case AtspiRole::Caption:
    case AtspiRole::Heading:
    case AtspiRole::Paragraph:
        return ControlKind::Showing;
    default: // panels, panes, pages, documents, windows and what nobody clicks
        return ControlKind::Container;
    }
}

QString name(const Facts &facts)
{
    if (kind(facts) == ControlKind::TextInput)
        return textInputName(facts);
    switch (facts.role) {
    case AtspiRole::Menu:
    case AtspiRole::MenuItem:
        return facts.parentRole == AtspiRole::MenuBar ? QStringLiteral("AXMenuBarItem")
                                                      : QStringLiteral("AXMenuItem");
    case AtspiRole::CheckMenuItem:
    case AtspiRole::RadioMenuItem:
    case AtspiRole::TearoffMenuItem:
        return QStringLiteral("AXMenuItem");
    case AtspiRole::CheckBox:
        return facts.webRole == QLatin1String("switch") ? QStringLiteral("AXSwitch")
                                                        : QStringLiteral("AXCheckBox");
    case AtspiRole::Switch:
        return QStringLiteral("AXSwitch");
    case AtspiRole::ToggleButton:
        if (facts.webRole == QLatin1String("switch"))
            return QStringLiteral("AXSwitch");
        return is(facts, AtspiState::HasPopup) ? QStringLiteral("AXPopUpButton") : QStringLiteral("AXButton");
    case AtspiRole::PushButton:
        return is(facts, AtspiState::HasPopup) ? QStringLiteral("AXPopUpButton") : QStringLiteral("AXButton");
    case AtspiRole::PushButtonMenu:
    case AtspiRole::ComboBox:
        return QStringLiteral("AXPopUpButton");
    case AtspiRole::ColumnHeader:
    case AtspiRole::RowHeader:
    case AtspiRole::TableColumnHeader:
    case AtspiRole::TableRowHeader:
        return QStringLiteral("AXButton");
    case AtspiRole::RadioButton:
        return QStringLiteral("AXRadioButton");
    case AtspiRole::PageTab:
        return QStringLiteral("AXTab");
    case AtspiRole::PageTabList:
        return QStringLiteral("AXTabGroup");
    case AtspiRole::Link:
        return QStringLiteral("AXLink");
    case AtspiRole::Slider:
    case AtspiRole::Dial:
        return QStringLiteral("AXSlider");
    case AtspiRole::TableCell:
    case AtspiRole::ListItem:
        return QStringLiteral("AXCell");
    case AtspiRole::TreeItem:
        return QStringLiteral("AXRow");
    case AtspiRole::Image:
    case AtspiRole::Icon:
    case AtspiRole::DesktopIcon:
        return QStringLiteral("AXImage");
    case AtspiRole::Label:
    case AtspiRole::Static:
    case AtspiRole::Caption:
    case AtspiRole::Heading:
    case AtspiRole::Paragraph:
        return QStringLiteral("AXStaticText");
    default:
        return {};
    }
}

bool needsParent(AtspiRole role)
{
    return role == AtspiRole::Menu || role == AtspiRole::MenuItem;
}

// GTK 3 and Qt name a list that opens by the entry that is chosen.
bool isNamedByValue(AtspiRole role, const QString &toolkit)
{
    const bool giveTheChoice =
        toolkit.compare(QLatin1String("gtk"), Qt::CaseInsensitive) == 0 || toolkit == QLatin1String("Qt");
    return role == AtspiRole::ComboBox && giveTheChoice;
}

} // namespace AccessibleRoles
