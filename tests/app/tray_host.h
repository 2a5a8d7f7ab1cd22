#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QTest>
#include <gtest/gtest.h>

// A tray of the kind that draws icons and menus itself, on a connection of its own.
class TrayHost : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isWatching)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(int ProtocolVersion READ version)
public:
    TrayHost()
    {
        m_isWatching =
            m_bus.registerObject("/StatusNotifierWatcher", this, QDBusConnection::ExportAllContents) &&
            m_bus.registerService("org.kde.StatusNotifierWatcher");
    }
    ~TrayHost() override { QDBusConnection::disconnectFromBus("tray"); }

    bool isWatching() const { return m_isWatching; }
    bool hasItem() const { return !m_item.isEmpty(); }
    QStringList items() const { return hasItem() ? QStringList{m_item} : QStringList(); }
    int version() const { return 0; }

    // As they were told last, without a word to the program that the menu is about to show.
    QStringList menuLabels()
    {
        const QDBusMessage reply =
            call("/MenuBar", "com.canonical.dbusmenu", "GetLayout", {0, -1, QStringList{"label"}});
        QStringList labels;
        if (reply.arguments().size() == 2)
            collect(reply.arguments()[1].value<QDBusArgument>(), labels);
        return labels;
    }
    void click(const QString &how)
    {
        call("/StatusNotifierItem", "org.kde.StatusNotifierItem", how, {10, 10});
    }

    // Called by these names.
    // NOLINTBEGIN(readability-identifier-naming)
    Q_SLOT void RegisterStatusNotifierItem(const QString &service) { m_item = service; }
    Q_SLOT void RegisterStatusNotifierHost(const QString &) {}
    // NOLINTEND(readability-identifier-naming)

private:
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(m_item, path, interface, method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher watcher(m_bus.asyncCall(message, 5000));
        EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.isFinished(); }, 6000));
        EXPECT_FALSE(watcher.isError()) << watcher.error().message().toStdString();
        return watcher.reply();
    }
    static void collect(const QDBusArgument &entry, QStringList &labels)
    {
        int id = 0;
        QVariantMap properties;
        QVariantList children;
        entry.beginStructure();
        entry >> id >> properties >> children;
        entry.endStructure();
        if (const QString label = properties.value("label").toString(); !label.isEmpty())
            labels += label;
        for (const QVariant &child : std::as_const(children)) {
            const QVariant inner =
                child.canConvert<QDBusVariant>() ? child.value<QDBusVariant>().variant() : child;
            collect(inner.value<QDBusArgument>(), labels);
        }
    }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "tray");
    QString m_item;
    bool m_isWatching = false;
};
