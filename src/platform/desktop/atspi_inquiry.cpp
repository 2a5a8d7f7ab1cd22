#include "platform/desktop/atspi_inquiry.h"

#include <QList>
#include <QRegularExpression>
#include <cmath>

namespace {

constexpr int kDeepest = 40;      // levels from a window down to a control
constexpr int kFarthestNamed = 8; // levels from what was hit up to what has a name
// Text inside a control without a name of its own: enough for a row of some columns.
constexpr int kShownObjects = 24;
constexpr int kMenuObjects = 600;
constexpr int kPlacelessChildren = 12;
// How much wider than what it tells a window may be for the shadow around it.
constexpr int kWidestShadow = 120;
// Windows of the bus and of the window system differ by a border.
constexpr int kBorder = 3;

bool hasSize(const QSize &size, const QSize &wanted, double scale)
{
    return std::abs(size.width() * scale - wanted.width()) <= kBorder * scale &&
           std::abs(size.height() * scale - wanted.height()) <= kBorder * scale;
}

// Menus hang below these, and no others need to be searched for them.
bool mayHoldMenus(AtspiRole role)
{
    switch (role) {
    case AtspiRole::Dialog:
    case AtspiRole::Filler:
    case AtspiRole::Frame:
    case AtspiRole::LayeredPane:
    case AtspiRole::List:
    case AtspiRole::ListBox:
    case AtspiRole::Menu:
    case AtspiRole::MenuBar:
    case AtspiRole::Panel:
    case AtspiRole::PopupMenu:
    case AtspiRole::RootPane:
    case AtspiRole::SplitPane:
    case AtspiRole::ScrollPane:
    case AtspiRole::Viewport:
    case AtspiRole::ToolBar:
    case AtspiRole::Window:
    case AtspiRole::ComboBox:
    case AtspiRole::Grouping:
        return true;
    default:
        return false;
    }
}

bool isMenuEntry(AtspiRole role)
{
    return role == AtspiRole::MenuItem || role == AtspiRole::CheckMenuItem ||
           role == AtspiRole::RadioMenuItem || role == AtspiRole::Menu || role == AtspiRole::ListItem ||
           role == AtspiRole::TearoffMenuItem;
}

} // namespace

QPoint AtspiInquiry::Window::fromNative(QPoint native) const
{
    return {int(std::floor((native.x() - origin.x()) / scale)),
            int(std::floor((native.y() - origin.y()) / scale))};
}

QRect AtspiInquiry::Window::toNative(const QRect &rect) const
{
    return QRectF(rect.x() * scale + origin.x(), rect.y() * scale + origin.y(), rect.width() * scale,
                  rect.height() * scale)
        .toRect();
}

bool AtspiInquiry::connects(int milliseconds)
{
    m_bus.setDeadline(milliseconds);
    return m_bus.connect();
}

AtspiObject AtspiInquiry::application(const ClickTarget &target)
{
    AtspiObject byTitle;
    for (const AtspiObject &application : m_bus.applications()) {
        if (target.pid != 0 && m_bus.pid(application) == target.pid)
            return application;
        if (m_bus.isLate())
            return {};
    }
    // Programs in a container count their processes apart.
    if (target.title.isEmpty())
        return {};
    for (const AtspiObject &application : m_bus.applications()) {
        for (const AtspiObject &window : m_bus.children(application)) {
            if (m_bus.name(window) == target.title)
                return application;
        }
        if (m_bus.isLate())
            return {};
    }
    return {};
}

// Some toolkits count from the screen's corner, some from the window's, some in points of their own; the
// window system's rectangle tells which.
std::optional<AtspiInquiry::Window> AtspiInquiry::placed(const AtspiObject &window, const ClickTarget &target,
                                                         const QString &toolkit)
{
    const QRect screen = m_bus.extents(window, AtspiCoordinates::Screen);
    if (screen.isEmpty())
        return std::nullopt;
    for (const double scale : {1.0, 2.0, 3.0, 1.25, 1.5, 1.75}) {
        for (const QRect &rect : {target.visible, target.window}) {
            if (rect.isEmpty() || !hasSize(screen.size(), rect.size(), scale))
                continue;
            const QPoint expected = (QPointF(rect.topLeft()) / scale).toPoint();
            const bool countsFromScreen = (screen.topLeft() - expected).manhattanLength() <= 2 * kBorder;
            if (countsFromScreen)
                return Window{window, AtspiCoordinates::Screen, {}, scale};
            return Window{window, AtspiCoordinates::Window, rect.topLeft(), scale};
        }
    }
    if (toolkit == QLatin1String("GTK")) {
        // Counted from inside a shadow whose width nobody tells.
        const QSize shadow = target.window.size() - screen.size();
        if (shadow.width() < 0 || shadow.height() < 0 || shadow.width() > kWidestShadow ||
            shadow.height() > kWidestShadow)
            return std::nullopt;
        return Window{window, AtspiCoordinates::Window,
                      target.window.topLeft() + QPoint(shadow.width() / 2, shadow.height() / 2), 1};
    }
    // A window inside the one that the window system knows, or one that it counts with its title bar.
    if (screen.contains(target.at))
        return Window{window, AtspiCoordinates::Screen, {}, 1};
    return std::nullopt;
}

// The likeliest first: the one with the title, then the one that came last.
QList<AtspiInquiry::Window> AtspiInquiry::windows(const AtspiObject &application, const ClickTarget &target,
                                                  const QString &toolkit)
{
    QList<Window> found;
    for (const AtspiObject &child : m_bus.children(application)) {
        // GTK 4 tells of few objects whether they show.
        if (toolkit != QLatin1String("GTK") && !AtspiBus::has(m_bus.states(child), AtspiState::Showing))
            continue;
        if (const auto window = placed(child, target, toolkit)) {
            const bool isTitled = !target.title.isEmpty() && m_bus.name(child) == target.title;
            const bool isWhole =
                window->scale != 1 || window->coordinates == AtspiCoordinates::Window ||
                hasSize(m_bus.extents(child, AtspiCoordinates::Screen).size(), target.visible.size(), 1);
            found.insert(isTitled || isWhole ? 0 : found.size(), *window);
        }
        if (m_bus.isLate())
            break;
    }
    return found;
}

AtspiObject AtspiInquiry::innermost(const Window &window, QPoint at)
{
    const QPoint point = window.fromNative(at);
    AtspiObject object = window.object;
    for (int level = 0; level < kDeepest; ++level) {
        AtspiObject inner = m_bus.childAt(object, point, window.coordinates);
        if (inner.isNull() && AccessibleRoles::kind(facts(object)) == ControlKind::Container)
            inner = throughPlaceless(object, point, window.coordinates);
        if (inner.isNull() || inner == object)
            break;
        object = inner;
    }
    return object;
}

// Some toolkits stop at a pane: what it shows hangs below an object that has no place of its own.
AtspiObject AtspiInquiry::throughPlaceless(const AtspiObject &object, QPoint point,
                                           AtspiCoordinates coordinates)
{
    for (const AtspiObject &child : m_bus.children(object).mid(0, kPlacelessChildren)) {
        const QRect rect = m_bus.extents(child, coordinates);
        if (rect.contains(point))
            return child;
        if (!rect.isEmpty())
            continue;
        for (const AtspiObject &shown : m_bus.children(child).mid(0, kPlacelessChildren)) {
            if (m_bus.isLate())
                return {};
            if (m_bus.extents(shown, coordinates).contains(point))
                return shown;
        }
    }
    return {};
}

// Menus stand in the tree below what opened them, in whatever window that lies.
AtspiObject AtspiInquiry::inOpenMenus(const AtspiObject &application, const ClickTarget &target,
                                      Window &counts)
{
    QList<AtspiObject> level = m_bus.children(application);
    qsizetype asked = 0;
    AtspiObject best;
    while (!level.isEmpty() && asked < kMenuObjects && !m_bus.isLate()) {
        asked += level.size();
        QList<AtspiObject> next;
        for (const AtspiBus::Look &look : m_bus.lookAt(level)) {
            if (!AtspiBus::has(look.states, AtspiState::Showing))
                continue;
            if (isMenuEntry(look.role) && !look.extents.isEmpty() &&
                counts.toNative(look.extents).contains(target.at))
                best = look.object;
            if (mayHoldMenus(look.role))
                next += look.children;
        }
        level = next;
    }
    return best;
}

// GTK 4 names what has no name by its class.
QString AtspiInquiry::nameOf(const AtspiObject &object)
{
    static const QRegularExpression s_class(QStringLiteral("^Gtk[A-Z][A-Za-z]+$"));
    const QString name = m_bus.name(object);
    return s_class.match(name).hasMatch() ? QString() : name;
}

AccessibleRoles::Facts AtspiInquiry::facts(const AtspiObject &object)
{
    AccessibleRoles::Facts facts;
    facts.role = m_bus.role(object);
    facts.states = m_bus.states(object);
    if (AccessibleRoles::needsParent(facts.role))
        facts.parentRole = m_bus.role(m_bus.parent(object));
    return facts;
}

AtspiObject AtspiInquiry::editingHost(AtspiObject object)
{
    for (int level = 0; level < kFarthestNamed; ++level) {
        const AtspiObject outer = m_bus.parent(object);
        if (outer.isNull())
            break;
        const AtspiRole role = m_bus.role(outer);
        const bool isField = role == AtspiRole::Entry || role == AtspiRole::Text ||
                             role == AtspiRole::SpinButton || role == AtspiRole::ComboBox;
        if (!isField && !AtspiBus::has(m_bus.states(outer), AtspiState::Editable))
            break;
        object = outer;
    }
    return object;
}

AtspiObject AtspiInquiry::labelled(AtspiObject label)
{
    for (int level = 0; level < 2 && !label.isNull(); ++level) {
        if (const AtspiObject control = m_bus.labelFor(label); !control.isNull())
            return control;
        label = m_bus.parent(label);
    }
    return {};
}

// The texts that stand in a control, from the first to the last, as one label; nothing that is typed.
QString AtspiInquiry::shownText(const AtspiObject &object)
{
    QList<AtspiObject> waiting = m_bus.children(object);
    for (int asked = 0; !waiting.isEmpty() && asked < kShownObjects && !m_bus.isLate(); ++asked) {
        const AtspiObject inner = waiting.takeFirst();
        switch (AccessibleRoles::kind(facts(inner))) {
        case ControlKind::TextInput:
            break;
        case ControlKind::Showing:
        case ControlKind::Control:
            if (const QString text = nameOf(inner).trimmed(); !text.isEmpty())
                return text;
            [[fallthrough]];
        case ControlKind::Container:
            waiting = m_bus.children(inner) + waiting;
            break;
        }
    }
    return {};
}

std::optional<AccessibleElement> AtspiInquiry::described(const AtspiObject &leaf, const Window &window,
                                                         const QString &toolkit, bool isInPopup)
{
    AtspiObject chosen = leaf;
    AccessibleRoles::Facts chosenFacts = facts(leaf);
    ControlKind chosenKind = AccessibleRoles::kind(chosenFacts);
    // What shows something may be the face of a control around it, and the entry of a closed list that of the
    // list.
    AtspiObject outer = leaf;
    if (chosenKind == ControlKind::Control && chosenFacts.role == AtspiRole::MenuItem && !isInPopup) {
        const AtspiObject list = m_bus.parent(m_bus.parent(leaf));
        if (const AccessibleRoles::Facts listFacts = facts(list); listFacts.role == AtspiRole::ComboBox) {
            chosen = list;
            chosenFacts = listFacts;
            chosenKind = AccessibleRoles::kind(listFacts);
        }
    }
    for (int level = 0; level < kFarthestNamed && chosenKind != ControlKind::Control &&
                        chosenKind != ControlKind::TextInput && !m_bus.isLate();
         ++level) {
        outer = m_bus.parent(outer);
        if (outer.isNull())
            break;
        const AccessibleRoles::Facts outerFacts = facts(outer);
        if (outerFacts.role == AtspiRole::Frame || outerFacts.role == AtspiRole::DocumentWeb ||
            outerFacts.role == AtspiRole::Application || outerFacts.role == AtspiRole::Dialog)
            break;
        const ControlKind outerKind = AccessibleRoles::kind(outerFacts);
        if (outerKind == ControlKind::Control || outerKind == ControlKind::TextInput) {
            chosen = outer;
            chosenFacts = outerFacts;
            chosenKind = outerKind;
        }
    }
    if (chosenKind == ControlKind::Showing || chosenKind == ControlKind::Container) {
        // A press on a control's label is meant for the control.
        if (const AtspiObject control = labelled(leaf); !control.isNull()) {
            chosen = control;
            chosenFacts = facts(control);
            chosenKind = AccessibleRoles::kind(chosenFacts);
        }
    }
    if (chosenKind == ControlKind::Container)
        return AccessibleElement{};
    const bool isTyped = chosenKind == ControlKind::TextInput;
    if (isTyped) {
        const AtspiObject host = editingHost(chosen);
        if (host != chosen) {
            chosen = host;
            chosenFacts.role = m_bus.role(host);
            chosenFacts.states = m_bus.states(host) | quint64(1) << int(AtspiState::Editable);
        }
    }
    const QHash<QString, QString> attributes = m_bus.attributes(chosen);
    chosenFacts.webRole = attributes.value(QStringLiteral("xml-roles"));

    AccessibleElement found;
    found.element.role = AccessibleRoles::name(chosenFacts);
    const auto keep = [](std::optional<QString> &field, const QString &text) {
        if (!text.isEmpty())
            field = text;
    };
    const bool isNamedByValue = AccessibleRoles::isNamedByValue(chosenFacts.role, toolkit);
    QString title = isTyped || isNamedByValue ? m_bus.labelledBy(chosen) : QString();
    if (title.isEmpty() && !isNamedByValue)
        title = nameOf(chosen);
    if (title.isEmpty() && !isTyped && !isNamedByValue)
        title = m_bus.labelledBy(chosen);
    QString description = m_bus.description(chosen);
    if (title.trimmed().isEmpty() && description.trimmed().isEmpty() && chosenKind == ControlKind::Control &&
        !isNamedByValue)
        title = shownText(chosen);
    keep(found.element.title, title);
    keep(found.element.description, description);
    if (isTyped) {
        keep(found.element.placeholder, attributes.value(QStringLiteral("placeholder-text"),
                                                         attributes.value(QStringLiteral("placeholder"))));
    }
    const QRect rect = m_bus.extents(chosen, window.coordinates);
    if (!rect.isEmpty())
        found.frame = window.toNative(rect);
    return found;
}

std::optional<AccessibleElement> AtspiInquiry::elementAt(const ClickTarget &target, int milliseconds)
{
    m_bus.setDeadline(milliseconds);
    if (!m_bus.connect())
        return std::nullopt;
    const AtspiObject program = application(target);
    if (program.isNull())
        return std::nullopt;
    const QString toolkit = m_bus.toolkit(program);
    QList<Window> candidates = windows(program, target, toolkit);
    if (target.isPopup && toolkit != QLatin1String("GTK")) {
        Window counts = candidates.value(0);
        const AtspiObject entry = inOpenMenus(program, target, counts);
        if (!entry.isNull())
            return described(entry, counts, toolkit, true);
    }
    std::optional<AccessibleElement> container;
    for (const Window &window : std::as_const(candidates)) {
        const AtspiObject leaf = innermost(window, target.at);
        if (leaf == window.object)
            continue;
        const auto found = described(leaf, window, toolkit, target.isPopup);
        if (found && found->element.role)
            return found;
        if (!container)
            container = found;
    }
    return m_bus.isLate() ? std::nullopt : container;
}

void AtspiInquiry::wake(int milliseconds)
{
    m_bus.setDeadline(milliseconds);
    if (!m_bus.connect())
        return;
    for (const AtspiObject &application : m_bus.applications()) {
        for (const AtspiObject &window : m_bus.children(application)) {
            const QString key = window.service + window.path;
            if (m_awake.contains(key))
                continue;
            m_awake.insert(key);
            const QRect rect = m_bus.extents(window, AtspiCoordinates::Screen);
            static_cast<void>(m_bus.childAt(window, rect.center(), AtspiCoordinates::Screen));
            static_cast<void>(m_bus.attributes(window));
        }
        if (m_bus.isLate())
            return;
    }
}
