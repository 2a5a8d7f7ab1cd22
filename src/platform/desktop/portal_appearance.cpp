#include "platform/desktop/portal_appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString kSchemeKey = QStringLiteral("color-scheme"); // 0 no wish, 1 dark, 2 light
const QString kInterfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString kAnimationsKey = QStringLiteral("enable-animations");
const QString kGtkThemeKey = QStringLiteral("gtk-theme");
const QString kContrastKey = QStringLiteral("contrast"); // 1 for more
const QString kAccessGroup = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString kHighContrastKey = QStringLiteral("high-contrast");
const QString kPlasmaGroup = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kPlasmaMotionKey = QStringLiteral("AnimationDurationFactor"); // 0 for none

// Hears the portal's signal.
class Listener : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    std::function<void(const QString &group, const QString &key, const QVariant &value)> heard;

public Q_SLOTS:
    void settingChanged(const QDBusMessage &message)
    {
        const QVariantList words = message.arguments();
        if (words.size() == 3)
            heard(words[0].toString(), words[1].toString(), words[2]);
    }
};

} // namespace

std::optional<bool> PortalAppearance::prefersDark()
{
    begin();
    return m_prefersDark;
}

bool PortalAppearance::reducesMotion()
{
    begin();
    return !m_reducingMotion.isEmpty();
}

bool PortalAppearance::wantsContrast()
{
    begin();
    return !m_wantingContrast.isEmpty();
}

void PortalAppearance::begin()
{
    if (std::exchange(m_hasBegun, true))
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    auto *listener = new Listener(this);
    listener->heard = [this](const QString &group, const QString &key, const QVariant &value) {
        take(group, key, value);
    };
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), listener,
                SLOT(settingChanged(QDBusMessage)));
    ask(kAppearanceGroup, kSchemeKey);
    ask(kInterfaceGroup, kAnimationsKey);
    ask(kInterfaceGroup, kGtkThemeKey);
    ask(kAppearanceGroup, kContrastKey);
    ask(kAccessGroup, kHighContrastKey);
    ask(kPlasmaGroup, kPlasmaMotionKey);
}

void PortalAppearance::ask(const QString &group, const QString &key)
{
    QDBusMessage read = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    read.setArguments({group, key});
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, group, key] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError())
            take(group, key, reply.value().variant());
    });
}

void PortalAppearance::take(const QString &group, const QString &key, QVariant value)
{
    // Older portals wrap the value twice.
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const auto dark = m_prefersDark;
    const bool reduces = reducesMotion(), wants = wantsContrast();
    const auto note = [&key](QSet<QString> &wishes, bool isWished) {
        if (isWished)
            wishes.insert(key);
        else
            wishes.remove(key);
    };
    if (group == kAppearanceGroup && key == kSchemeKey) {
        const uint scheme = value.toUInt();
        m_prefersDark = scheme == 1 ? std::optional(true) : scheme == 2 ? std::optional(false) : std::nullopt;
    } else if (group == kInterfaceGroup && key == kAnimationsKey) {
        note(m_reducingMotion, !value.toBool());
    } else if (group == kPlasmaGroup && key == kPlasmaMotionKey) {
        bool isNumber = false;
        const double factor = value.toDouble(&isNumber);
        note(m_reducingMotion, isNumber && factor <= 0 && value.typeId() != QMetaType::Bool);
    } else if (group == kAppearanceGroup && key == kContrastKey) {
        note(m_wantingContrast, value.toUInt() == 1);
    } else if (group == kAccessGroup && key == kHighContrastKey) {
        note(m_wantingContrast, value.toBool());
    } else if (group == kInterfaceGroup && key == kGtkThemeKey) {
        note(m_wantingContrast, value.toString().startsWith(QLatin1String("HighContrast")));
    }
    if (dark != m_prefersDark || reduces != reducesMotion() || wants != wantsContrast())
        Q_EMIT changed();
}

#include "portal_appearance.moc"
