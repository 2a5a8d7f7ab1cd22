#include "platform/desktop/atspi_inquiry.h"

#include <QList>
#include <QThread>
#include <cmath>

namespace {

constexpr int kDeepest = 40;      // levels from a window down to a control
constexpr int kFarthestNamed = 8; // levels from what was hit up to what has a name
// Text inside a control without a name of its own: enough for a row of some columns.
constexpr int kShownObjects = 24;
constexpr int kMenuObjects = 600;
constexpr int kGuesses = 7;
constexpr int kBetweenGuesses = 30; // milliseconds
constexpr int kPlacelessChildren = 12;
constexpr int kChoices = 200; // of one part of a page
// How far the words of a check box reach, in heights of its mark: measured with type of 12 to 20 points.
constexpr double kLetterWidth = 0.65;
constexpr double kBeforeWords = 0.6;
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
    case AtspiRole::MenuItem:
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
                return Window{window, AtspiCoordinates::Screen, {}, scale, true};
            return Window{window, AtspiCoordinates::Window, rect.topLeft(), scale, true};
        }
    }
    if (toolkit == QLatin1String("GTK")) {
        // Counted from inside a shadow whose width nobody tells.
        const QSize shadow = target.window.size() - screen.size();
        if (shadow.width() < 0 || shadow.height() < 0 || shadow.width() > kWidestShadow ||
            shadow.height() > kWidestShadow)
            return std::nullopt;
        return Window{window, AtspiCoordinates::Window,
                      target.window.topLeft() + QPoint(shadow.width() / 2, shadow.height() / 2), 1, true};
    }
    // A window inside the one that the window system knows, or one that it counts with its title bar.
    if (screen.contains(target.at))
        return Window{window, AtspiCoordinates::Screen, {}, 1, false};
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
        if (auto window = placed(child, target, toolkit)) {
            // A window may have the size of the menu over it.
            const AtspiRole role = target.isPopup ? m_bus.role(child) : AtspiRole::Frame;
            if (target.isPopup && (role == AtspiRole::Frame || role == AtspiRole::Dialog))
                window->isWhole = false;
            const bool isTitled = !target.title.isEmpty() && m_bus.name(child) == target.title;
            found.insert(isTitled || window->isWhole ? 0 : found.size(), *window);
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
        if (inner.isNull() && kind(m_bus.card(object)) == ControlKind::Container)
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
        // A tab takes the place of its words, and its page hangs below it all the same.
        const bool isTab = !rect.isEmpty() && m_bus.role(child) == AtspiRole::PageTab;
        if (!rect.isEmpty() && !isTab)
            continue;
        for (const AtspiObject &shown : m_bus.children(child).mid(0, kPlacelessChildren)) {
            if (m_bus.isLate())
                return {};
            if (m_bus.extents(shown, coordinates).contains(point) &&
                (!isTab || AtspiBus::has(m_bus.states(shown), AtspiState::Showing)))
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

AccessibleRoles::Facts AtspiInquiry::facts(const AtspiBus::Card &card)
{
    AccessibleRoles::Facts facts;
    facts.role = card.role;
    facts.states = card.states;
    facts.webRole = card.attributes.value(QStringLiteral("xml-roles"));
    if (AccessibleRoles::needsParent(facts.role))
        facts.parentRole = m_bus.role(card.parent);
    return facts;
}

ControlKind AtspiInquiry::kind(const AtspiBus::Card &card)
{
    return AccessibleRoles::kind({card.role, card.states, AtspiRole::Panel, {}});
}

AtspiBus::Card AtspiInquiry::editingHost(AtspiBus::Card field)
{
    for (int level = 0; level < kFarthestNamed; ++level) {
        AtspiBus::Card outer = m_bus.card(field.parent);
        const bool isField = outer.role == AtspiRole::Entry || outer.role == AtspiRole::Text ||
                             outer.role == AtspiRole::SpinButton || outer.role == AtspiRole::ComboBox;
        if (!isField && !AtspiBus::has(outer.states, AtspiState::Editable))
            break;
        field = outer;
        field.states |= quint64(1) << int(AtspiState::Editable);
    }
    return field;
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
        const AtspiBus::Card card = m_bus.card(inner);
        switch (kind(card)) {
        case ControlKind::TextInput:
            break;
        case ControlKind::Showing:
        case ControlKind::Control:
            if (const QString text = card.name.trimmed(); !text.isEmpty())
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
    AtspiBus::Card chosen = pressed(m_bus.card(leaf), isInPopup);
    if (kind(chosen) == ControlKind::Container)
        return AccessibleElement{};
    const bool isTyped = kind(chosen) == ControlKind::TextInput;
    if (isTyped)
        chosen = editingHost(chosen);

    AccessibleElement found;
    found.element.role = AccessibleRoles::name(facts(chosen));
    const auto keep = [](std::optional<QString> &field, const QString &text) {
        if (!text.isEmpty())
            field = text;
    };
    const bool isNamedByValue = AccessibleRoles::isNamedByValue(chosen.role, toolkit);
    QString title = isTyped || isNamedByValue ? m_bus.labelledBy(chosen.object) : QString();
    if (title.isEmpty() && !isNamedByValue)
        title = chosen.name;
    if (title.isEmpty() && !isTyped && !isNamedByValue)
        title = m_bus.labelledBy(chosen.object);
    if (title.trimmed().isEmpty() && chosen.description.trimmed().isEmpty() &&
        kind(chosen) == ControlKind::Control && !isNamedByValue)
        title = shownText(chosen.object);
    keep(found.element.title, title);
    keep(found.element.description, chosen.description);
    if (isTyped) {
        keep(found.element.placeholder,
             chosen.attributes.value(QStringLiteral("placeholder-text"),
                                     chosen.attributes.value(QStringLiteral("placeholder"))));
    }
    const QRect rect = m_bus.extents(chosen.object, window.coordinates);
    if (!rect.isEmpty())
        found.frame = window.toNative(rect);
    // What came too late may be what says that this is typed into.
    return m_bus.isLate() ? std::nullopt : std::optional(found);
}

// The control that a person would name: what shows something may be the face of a control around it, the
// entry of a closed list that of the list, and a label belongs to its control.
AtspiBus::Card AtspiInquiry::pressed(const AtspiBus::Card &leaf, bool isInPopup)
{
    const auto isControl = [](const AtspiBus::Card &card) {
        return kind(card) == ControlKind::Control || kind(card) == ControlKind::TextInput;
    };
    if (leaf.role == AtspiRole::MenuItem && !isInPopup) {
        const AtspiBus::Card list = m_bus.card(m_bus.parent(leaf.parent));
        return list.role == AtspiRole::ComboBox ? list : leaf;
    }
    AtspiBus::Card outer = leaf;
    for (int level = 0; level < kFarthestNamed && !outer.object.isNull(); ++level) {
        if (isControl(outer))
            return outer;
        if (outer.role == AtspiRole::Frame || outer.role == AtspiRole::DocumentWeb ||
            outer.role == AtspiRole::Application || outer.role == AtspiRole::Dialog)
            break;
        outer = m_bus.card(outer.parent);
    }
    const AtspiObject control = labelled(leaf.object);
    return control.isNull() ? leaf : m_bus.card(control);
}

// Chromium has no object for words that name the check box or radio button left of them.
AtspiObject AtspiInquiry::choiceBeside(const AtspiObject &container, QPoint at, const Window &window)
{
    for (const AtspiBus::Look &look : m_bus.lookAt(m_bus.children(container).mid(0, kChoices))) {
        if (look.role != AtspiRole::CheckBox && look.role != AtspiRole::RadioButton)
            continue;
        const QRect mark = window.toNative(look.extents);
        const bool isInLine = at.y() >= mark.top() - mark.height() / 2 &&
                              at.y() <= mark.bottom() + mark.height() / 2 && at.x() > mark.right();
        if (!isInLine)
            continue;
        const double reach = mark.height() * (kBeforeWords + kLetterWidth * m_bus.name(look.object).size());
        if (at.x() <= mark.right() + reach)
            return look.object;
    }
    return {};
}

std::optional<AccessibleElement>
AtspiInquiry::innermostDescribed(const Window &window, const ClickTarget &target, const QString &toolkit)
{
    const AtspiObject leaf = innermost(window, target.at);
    return leaf == window.object ? std::nullopt : described(leaf, window, toolkit, target.isPopup);
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
    const bool hasWhole = std::ranges::any_of(candidates, &Window::isWhole);
    std::optional<AccessibleElement> container;
    for (const Window &window : std::as_const(candidates)) {
        // What lies under a menu, or under the window itself, wasn't pressed.
        if (!window.isWhole && (target.isPopup || hasWhole))
            continue;
        auto found = innermostDescribed(window, target, toolkit);
        // Chromium answers at once with a guess, and with what it has found meanwhile when asked again.
        for (int again = 0; again < kGuesses && toolkit == QLatin1String("Chromium") && found &&
                            !found->element.role && !m_bus.isLate();
             ++again) {
            QThread::msleep(kBetweenGuesses);
            found = innermostDescribed(window, target, toolkit);
        }
        if (toolkit == QLatin1String("Chromium") && found && !found->element.role) {
            const AtspiObject choice = choiceBeside(innermost(window, target.at), target.at, window);
            if (!choice.isNull())
                return described(choice, window, toolkit, target.isPopup);
        }
        if (found && found->element.role)
            return found;
        if (!container)
            container = found;
    }
    return m_bus.isLate() ? std::nullopt : container;
}

void AtspiInquiry::learnPrograms(int milliseconds)
{
    m_bus.setDeadline(milliseconds);
    if (!m_bus.connect())
        return;
    for (const AtspiObject &application : m_bus.applications())
        static_cast<void>(m_bus.pid(application));
}

void AtspiInquiry::wake(int milliseconds)
{
    m_bus.setDeadline(milliseconds);
    if (!m_bus.connect())
        return;
    for (const AtspiObject &application : m_bus.applications()) {
        for (const AtspiObject &window : m_bus.children(application)) {
            // What a page shows is only told after a question about a part of it.
            const QRect rect = m_bus.extents(window, AtspiCoordinates::Screen);
            const AtspiObject inner = m_bus.childAt(window, rect.center(), AtspiCoordinates::Screen);
            if (!inner.isNull())
                static_cast<void>(m_bus.card(inner));
            if (m_bus.isLate())
                return;
        }
        if (m_bus.isLate())
            return;
    }
}
