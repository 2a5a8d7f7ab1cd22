#include "base/atomic_file.h"
#include "platform/texts.h"
#include "platform/wayland/cast_origin.h"
#include "platform/wayland/portal_pictures.h"
#include "platform/wayland/portal_request.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QUuid>
#include <mutex>

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.ScreenCast");
constexpr uint kScreens = 1;           // what may be chosen
constexpr uint kUntilRevoked = 2;      // how long the choice holds
constexpr qint64 kLongestToken = 4096; // bytes
constexpr int kPatience = 5000;        // milliseconds

// A stream of the portal: its number, and what it tells of it.
struct Stream {
    uint node = 0;
    QVariantMap told;

    QPoint pair(const char *name) const
    {
        QPoint both(-1, -1);
        const auto argument = told.value(QLatin1String(name)).value<QDBusArgument>();
        if (argument.currentType() != QDBusArgument::StructureType)
            return both;
        argument.beginStructure();
        argument >> both.rx() >> both.ry();
        argument.endStructure();
        return both;
    }
    // Whether it is of that screen, as far as it tells.
    bool shows(const Screen &screen) const
    {
        const QPoint place = pair("position");
        const QPoint extent = pair("size");
        const bool isThere = place == QPoint(-1, -1) || place == screen.origin().toPoint();
        const QSize size(extent.x(), extent.y());
        return isThere && (extent == QPoint(-1, -1) || size == screen.native.size() ||
                           size == screen.frame().size().toSize());
    }
};

std::optional<Stream> firstStream(const QVariant &streams)
{
    const auto list = streams.value<QDBusArgument>();
    if (list.currentType() != QDBusArgument::ArrayType)
        return std::nullopt;
    std::optional<Stream> first;
    list.beginArray();
    if (!list.atEnd()) {
        first.emplace();
        list.beginStructure();
        list >> first->node >> first->told;
        list.endStructure();
    }
    list.endArray();
    return first;
}

// Hears on the main thread that the session is over, whichever thread made it or lets it go.
class SessionEnd : public QObject {
    Q_OBJECT
public:
    SessionEnd() { moveToThread(QCoreApplication::instance()->thread()); }
    void setHeard(std::function<void(const Error &)> heard)
    {
        const std::lock_guard lock(m_mutex);
        m_heard = std::move(heard);
        if (m_isOver)
            tell();
    }

public Q_SLOTS:
    void take(const QVariantMap &)
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
        tell();
    }

private:
    void tell()
    {
        if (const auto heard = std::exchange(m_heard, nullptr))
            heard({Error::Kind::Denied,
                   PlatformTexts::tr("The desktop no longer lets Lumenpost film the screen."),
                   {}});
    }

    std::mutex m_mutex; // held while it is told, so that whoever lets go of it knows that nothing follows
    std::function<void(const Error &)> m_heard;
    bool m_isOver = false;
};

class PortalCast : public CastOrigin {
public:
    PortalCast()
        : m_name(QUuid::createUuid().toString(QUuid::WithoutBraces)),
          m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name))
    {}
    // The portal ends what it began for a connection that leaves.
    ~PortalCast() override
    {
        m_end->setHeard(nullptr);
        m_end.release()->deleteLater();
        QDBusConnection::disconnectFromBus(m_name);
    }
    PortalCast(const PortalCast &) = delete;
    PortalCast &operator=(const PortalCast &) = delete;
    CastSource source() const override { return {m_stream.node, m_remote.fileDescriptor()}; }
    void setEnded(std::function<void(const Error &)> ended) override { m_end->setHeard(std::move(ended)); }
    bool shows(const Screen &screen) const { return m_stream.shows(screen); }
    const QString &token() const { return m_token; }

    Result<void> begin(Pointer pointer, const QString &token, std::chrono::milliseconds patience)
    {
        const auto begun =
            PortalRequest::ask(m_bus, kInterface, QStringLiteral("CreateSession"), {},
                               {{QStringLiteral("session_handle_token"),
                                 QStringLiteral("lumenpost") + QUuid::createUuid().toString(QUuid::Id128)}},
                               patience);
        if (!begun)
            return std::unexpected(begun.error());
        const QString handle = begun->value(QStringLiteral("session_handle")).toString();
        const QVariant session = QVariant::fromValue(QDBusObjectPath(handle));
        m_bus.connect(kService, handle, QStringLiteral("org.freedesktop.portal.Session"),
                      QStringLiteral("Closed"), m_end.get(), SLOT(take(QVariantMap)));
        QVariantMap wish{{QStringLiteral("types"), kScreens},
                         {QStringLiteral("multiple"), false},
                         {QStringLiteral("cursor_mode"), pointer == Pointer::Shown ? 2U : 1U},
                         {QStringLiteral("persist_mode"), kUntilRevoked}};
        if (!token.isEmpty())
            wish[QStringLiteral("restore_token")] = token;
        if (const auto chosen = PortalRequest::ask(m_bus, kInterface, QStringLiteral("SelectSources"),
                                                   {session}, wish, patience);
            !chosen)
            return std::unexpected(chosen.error());
        const auto started = PortalRequest::ask(m_bus, kInterface, QStringLiteral("Start"),
                                                {session, QString()}, {}, patience);
        if (!started)
            return std::unexpected(started.error());
        m_token = started->value(QStringLiteral("restore_token")).toString();
        const auto stream = firstStream(started->value(QStringLiteral("streams")));
        if (!stream)
            return refused({});
        m_stream = *stream;
        return openRemote(session);
    }

private:
    static std::unexpected<Error> refused(const QString &why)
    {
        return fail(PlatformTexts::tr("The desktop refused to have the screen filmed."), why);
    }

    Result<void> openRemote(const QVariant &session)
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("OpenPipeWireRemote"));
        call.setArguments({session, QVariantMap()});
        const QDBusMessage reply = m_bus.call(call, QDBus::Block, kPatience);
        m_remote = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
        return m_remote.isValid() ? Result<void>() : refused(reply.errorMessage());
    }

    QString m_name;
    QDBusConnection m_bus;
    std::unique_ptr<SessionEnd> m_end = std::make_unique<SessionEnd>();
    Stream m_stream;
    QString m_token;
    QDBusUnixFileDescriptor m_remote;
};

QString tokenPath(const Screen &screen, const QString &folder)
{
    const QByteArray name = QCryptographicHash::hash(screen.name.toUtf8(), QCryptographicHash::Sha256);
    return folder + QStringLiteral("/film-grant-") + QString::fromLatin1(name.toHex().left(16));
}

} // namespace

bool CastOrigins::isOfferedByPortal()
{
    return PortalPictures::isOffered();
}

Result<std::unique_ptr<CastOrigin>> CastOrigins::fromPortal(const Screen &screen, Pointer pointer,
                                                            const QString &folder,
                                                            std::chrono::milliseconds patience)
{
    const QString path = tokenPath(screen, folder);
    QFile kept(path);
    const QString token =
        kept.open(QFile::ReadOnly) ? QString::fromUtf8(kept.read(kLongestToken)) : QString();
    auto cast = std::make_unique<PortalCast>();
    if (const auto begun = cast->begin(pointer, token, patience); !begun)
        return std::unexpected(begun.error());
    if (!cast->shows(screen)) {
        kept.remove();
        return fail(Error::Kind::Denied,
                    PlatformTexts::tr("Another display was chosen: choose “%1”, which shall be filmed.")
                        .arg(screen.name));
    }
    // Each use makes a new one. Without it the desktop asks again, which is no reason to have no film.
    if (!cast->token().isEmpty())
        (void)AtomicFile::writePrivately(path, cast->token().toUtf8());
    return cast;
}

#include "portal_cast.moc"
