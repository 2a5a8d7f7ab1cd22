#include "platform/desktop/portal_appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// The settings part of a desktop portal, on a connection of its own.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    FakePortal()
    {
        EXPECT_TRUE(m_bus.registerService("org.freedesktop.portal.Desktop"));
        EXPECT_TRUE(m_bus.registerObject("/org/freedesktop/portal/desktop", this,
                                         QDBusConnection::ExportAllContents));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus("portal"); }

    void change(const QString &group, const QString &key, const QVariant &value)
    {
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }
    uint scheme = 1;

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key)
    {
        if (group == "org.freedesktop.appearance" && key == "color-scheme")
            return QDBusVariant(QVariant::fromValue(QDBusVariant(scheme))); // wrapped twice, as portals do
        if (key == "enable-animations")
            return QDBusVariant(QVariant::fromValue(QDBusVariant(false)));
        return QDBusVariant(QVariant::fromValue(QDBusVariant(QString()))); // says nothing of anything else
    }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

} // namespace

// On a machine with a whole desktop installed, its services would answer in place of the test's own.
TEST(PrivateDesktop, StartsNoServiceOfTheMachine)
{
    const auto message = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                        "org.freedesktop.DBus", "ListActivatableNames");
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message);
    EXPECT_EQ(reply.arguments().value(0).toStringList(), QStringList{"org.freedesktop.DBus"});
}

TEST(PortalAppearance, FollowsTheDesktopsWish)
{
    FakePortal portal;
    PortalAppearance appearance;
    int changes = 0;
    QObject::connect(&appearance, &DesktopAppearance::changed, &appearance, [&] { ++changes; });
    EXPECT_EQ(appearance.prefersDark(), std::nullopt) << "the answer comes later";
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return appearance.prefersDark() == true && appearance.reducesMotion(); }));
    portal.change("org.freedesktop.appearance", "color-scheme", 2u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.prefersDark() == false; }));
    portal.change("org.freedesktop.appearance", "color-scheme", 0u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.prefersDark() == std::nullopt; }));
    EXPECT_EQ(changes, 4);
    portal.change("org.freedesktop.appearance", "accent-color", 7u);
    portal.change("org.freedesktop.appearance", "color-scheme", 1u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 5; }));

    // Each desktop has words of its own for the same wish.
    EXPECT_FALSE(appearance.wantsContrast());
    const std::tuple<const char *, const char *, QVariant, QVariant> wishes[]{
        {"org.freedesktop.appearance", "contrast", 1u, 0u},
        {"org.gnome.desktop.a11y.interface", "high-contrast", true, false},
        {"org.gnome.desktop.interface", "gtk-theme", "HighContrastInverse", "Adwaita"},
    };
    for (const auto &[group, key, on, off] : wishes) {
        portal.change(group, key, on);
        EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.wantsContrast(); })) << key;
        portal.change(group, key, off);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !appearance.wantsContrast(); })) << key;
    }
    portal.change("org.gnome.desktop.interface", "enable-animations", true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !appearance.reducesMotion(); }));
    portal.change("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "0");
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.reducesMotion(); }));
}

#include "portal_appearance_test.moc"
