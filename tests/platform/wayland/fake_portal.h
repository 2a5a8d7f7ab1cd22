#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QImage>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>
#include <unistd.h>

struct FakeStream {
    uint node = 0;
    QVariantMap told;
};
Q_DECLARE_METATYPE(FakeStream)
inline QDBusArgument &operator<<(QDBusArgument &to, const FakeStream &stream)
{
    to.beginStructure();
    to << stream.node << stream.told;
    to.endStructure();
    return to;
}
inline const QDBusArgument &operator>>(const QDBusArgument &from, FakeStream &stream)
{
    from.beginStructure();
    from >> stream.node >> stream.told;
    from.endStructure();
    return from;
}

// A desktop's portal on a connection of its own, that answers when the test's event loop runs, and as the
// test says. What it gives as a stream's server is a pipe.
class FakePortal : public QDBusVirtualObject {
public:
    enum class Mood { Yes, No, Never, Late, Dies };

    FakePortal()
    {
        EXPECT_TRUE(
            m_bus.registerVirtualObject("/org/freedesktop/portal/desktop", this, QDBusConnection::SubPath));
        EXPECT_TRUE(m_bus.registerService(kName));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus("fake portal"); }

    Mood mood = Mood::Yes; // about the question that matters to the user
    QPoint place;          // of the screen that the user picks
    QSize size{1280, 720}; // its extent
    QString picture;       // the file that is given
    QStringList tokens;    // those that it was given, "" for none
    int grants = 0;        // tokens that it gave
    int closed = 0;        // questions that were taken back

    // The desktop takes back what it granted.
    void withdraw()
    {
        QDBusMessage closing = QDBusMessage::createSignal("/org/freedesktop/portal/desktop/session/1",
                                                          "org.freedesktop.portal.Session", "Closed");
        closing.setArguments({QVariantMap()});
        m_bus.send(closing);
    }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString member = message.member();
        if (member == "Close") {
            ++closed;
            m_bus.send(message.createReply());
        } else if (member == "OpenPipeWireRemote") {
            int ends[2];
            EXPECT_EQ(pipe(ends), 0);
            m_bus.send(message.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[0]))));
            close(ends[0]);
            close(ends[1]);
        } else {
            answer(message);
        }
        return true;
    }

private:
    static constexpr auto kName = "org.freedesktop.portal.Desktop";

    static QVariantMap optionsOf(const QDBusMessage &message)
    {
        return qdbus_cast<QVariantMap>(message.arguments().constLast());
    }
    QVariant streams() const
    {
        qDBusRegisterMetaType<FakeStream>();
        qDBusRegisterMetaType<QList<FakeStream>>();
        return QVariant::fromValue(QList<FakeStream>{
            {7, {{"position", pair(place.x(), place.y())}, {"size", pair(size.width(), size.height())}}}});
    }
    static QVariant pair(int first, int second)
    {
        QDBusArgument both;
        both.beginStructure();
        both << first << second;
        both.endStructure();
        return QVariant::fromValue(both);
    }
    void answer(const QDBusMessage &message)
    {
        const QString member = message.member();
        const bool isAsked = member == "Start" || member == "Screenshot"; // of the user
        const QString request = "/org/freedesktop/portal/desktop/request/" +
                                message.service().mid(1).replace('.', '_') + "/" +
                                optionsOf(message).value("handle_token").toString();
        m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        QVariantMap results;
        if (member == "CreateSession")
            results["session_handle"] = "/org/freedesktop/portal/desktop/session/1";
        else if (member == "SelectSources")
            tokens.append(optionsOf(message).value("restore_token").toString());
        else if (member == "Screenshot")
            results["uri"] = QUrl::fromLocalFile(picture).toString();
        else if (member == "Start" && mood != Mood::No)
            results = {{"streams", streams()}, {"restore_token", QString("grant %1").arg(++grants)}};
        const uint code = isAsked && mood == Mood::No ? 1 : 0;
        QDBusMessage response =
            QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
        response.setArguments({code, results});
        if (isAsked && mood == Mood::Dies)
            m_bus.unregisterService(kName);
        else if (isAsked && mood == Mood::Late)
            QTimer::singleShot(300, this, [this, response] { m_bus.send(response); });
        else if (!isAsked || mood != Mood::Never)
            m_bus.send(response);
    }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "fake portal");
};
