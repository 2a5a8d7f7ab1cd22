#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QTest>
#include <optional>

// The desktop's accessibility bus, as a screen reader uses it: what is on the screen, and what is told of it.
class AccessibilityBus : public QObject {
    Q_OBJECT
public:
    struct Node {
        QString service;
        QString path;
    };
    // What a reader hears: "state-changed:focused", "announcement" …, whose it is, and what is said with it.
    struct Event {
        QString kind;
        Node source;
        int detail = 0;
        QString words;
    };

    AccessibilityBus()
    {
        QDBusInterface launcher("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus");
        QDBusPendingReply<QString> address = launcher.asyncCall("GetAddress");
        if (QTest::qWaitFor([&] { return address.isFinished(); }))
            m_bus = QDBusConnection::connectToBus(address.value(), "reader");
    }

    bool isConnected() const { return m_bus.isConnected(); }
    Node root() const { return {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}; }

    // From now on events() grows.
    void listen()
    {
        for (const char *kind : {"object:", "focus:", "window:"})
            call({"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"}, "org.a11y.atspi.Registry",
                 "RegisterEvent", {QString::fromLatin1(kind)});
        for (const char *signal :
             {"StateChanged", "PropertyChange", "Announcement", "ChildrenChanged", "ActiveDescendantChanged",
              "SelectionChanged", "TextChanged", "TextCaretMoved", "BoundsChanged"})
            m_bus.connect({}, {}, "org.a11y.atspi.Event.Object", signal, this, SLOT(take(QDBusMessage)));
    }
    QList<Event> events() const { return m_events; } // a copy: asking about them takes in more
    // Once all that is under way has been told.
    void forget()
    {
        qsizetype seen = -1;
        while (std::exchange(seen, m_events.size()) != m_events.size())
            QTest::qWait(150);
        m_events.clear();
    }

    QDBusMessage call(const Node &node, const QString &interface, const QString &method,
                      const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(node.service, node.path, interface, method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher watcher(m_bus.asyncCall(message, 3000));
        if (!QTest::qWaitFor([&] { return watcher.isFinished(); }, 4000))
            qWarning("no answer to %s", qPrintable(method));
        return watcher.reply();
    }
    QVariant property(const Node &node, const QString &name)
    {
        const QDBusMessage reply =
            call(node, "org.freedesktop.DBus.Properties", "Get", {"org.a11y.atspi.Accessible", name});
        return reply.arguments().isEmpty() ? QVariant()
                                           : reply.arguments().first().value<QDBusVariant>().variant();
    }
    QString name(const Node &node) { return property(node, "Name").toString(); }
    QString role(const Node &node)
    {
        const QDBusMessage reply = call(node, "org.a11y.atspi.Accessible", "GetRoleName");
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString() : QString();
    }
    QList<Node> children(const Node &node)
    {
        const QDBusMessage reply = call(node, "org.a11y.atspi.Accessible", "GetChildren");
        QList<Node> result;
        if (reply.arguments().isEmpty())
            return result;
        const auto array = reply.arguments().first().value<QDBusArgument>();
        array.beginArray();
        while (!array.atEnd()) {
            Node child;
            QDBusObjectPath path;
            array.beginStructure();
            array >> child.service >> path;
            array.endStructure();
            child.path = path.path();
            result.append(child);
        }
        array.endArray();
        return result;
    }
    // Depth first, by the beginning of a name.
    std::optional<Node> find(const Node &node, const QString &beginning, int depth)
    {
        if (name(node).startsWith(beginning))
            return node;
        if (depth > 0) {
            for (const Node &child : children(node)) {
                if (const auto found = find(child, beginning, depth - 1))
                    return found;
            }
        }
        return std::nullopt;
    }
    // What a reader would say of what was told so far: who got the focus, what was announced or came up.
    QStringList spoken()
    {
        QStringList lines;
        const QList<Event> told = m_events; // asking for names takes in more
        for (const Event &event : told) {
            if (event.kind == "announcement:")
                lines += event.words;
            else if (event.kind == "state-changed:focused" && event.detail == 1 &&
                     !role(event.source).isEmpty())
                lines += QStringLiteral("%1 [%2]").arg(name(event.source), role(event.source));
            else if (event.kind == "state-changed:showing" && event.detail == 1 &&
                     QStringList{"notification", "alert"}.contains(role(event.source)))
                lines += QStringLiteral("%1 [notification]").arg(name(event.source));
        }
        return lines;
    }

private Q_SLOTS:
    void take(const QDBusMessage &message)
    {
        const QVariantList parts = message.arguments();
        if (parts.size() < 4)
            return;
        QString kind;
        for (const QChar letter : message.member()) {
            if (letter.isUpper() && !kind.isEmpty())
                kind += '-';
            kind += letter.toLower();
        }
        m_events.append({kind + ':' + parts[0].toString(),
                         {message.service(), message.path()},
                         parts[1].toInt(),
                         parts[3].value<QDBusVariant>().variant().toString()});
    }

private:
    QDBusConnection m_bus{QString()};
    QList<Event> m_events;
};
