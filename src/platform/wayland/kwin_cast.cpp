#include "platform/texts.h"
#include "platform/wayland/cast_origin.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

#include <wayland-client.h>
#include <wayland_protocols/zkde-screencast-unstable-v1.h>

namespace {

class KWinCast : public CastOrigin {
public:
    explicit KWinCast(std::unique_ptr<WaylandConnection> connection)
        : m_connection(std::move(connection)), m_outputs(*m_connection)
    {}
    ~KWinCast() override
    {
        if (m_stream)
            zkde_screencast_stream_unstable_v1_close(m_stream);
        if (m_casts)
            zkde_screencast_unstable_v1_destroy(m_casts);
    }
    KWinCast(const KWinCast &) = delete;
    KWinCast &operator=(const KWinCast &) = delete;
    CastSource source() const override { return {m_node, -1}; }

    Result<void> begin(quint32 screen, Pointer pointer)
    {
        const WaylandOutput *output = m_outputs.find(screen);
        if (!output)
            return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
        static const zkde_screencast_stream_unstable_v1_listener listener{
            .closed = [](void *self, zkde_screencast_stream_unstable_v1 *) { from(self).m_isRefused = true; },
            .created = [](void *self, zkde_screencast_stream_unstable_v1 *,
                          uint32_t node) { from(self).m_node = node; },
            .failed =
                [](void *self, zkde_screencast_stream_unstable_v1 *, const char *why) {
                    from(self).m_isRefused = true;
                    from(self).m_why = QString::fromUtf8(why);
                },
        };
        m_casts = m_connection->bind<zkde_screencast_unstable_v1>(zkde_screencast_unstable_v1_interface, 1);
        m_stream = zkde_screencast_unstable_v1_stream_output(
            m_casts, output->output,
            pointer == Pointer::Shown ? ZKDE_SCREENCAST_UNSTABLE_V1_POINTER_EMBEDDED
                                      : ZKDE_SCREENCAST_UNSTABLE_V1_POINTER_HIDDEN);
        zkde_screencast_stream_unstable_v1_add_listener(m_stream, &listener, this);
        if (!m_connection->waitFor([this] { return m_isRefused || m_node != 0; }))
            return noCompositor();
        if (m_isRefused)
            return fail(PlatformTexts::tr("The desktop refused to have the screen filmed."), m_why);
        return {};
    }

private:
    static KWinCast &from(void *self) { return *static_cast<KWinCast *>(self); }

    std::unique_ptr<WaylandConnection> m_connection;
    WaylandOutputs m_outputs;
    zkde_screencast_unstable_v1 *m_casts = nullptr;
    zkde_screencast_stream_unstable_v1 *m_stream = nullptr;
    quint32 m_node = 0;
    bool m_isRefused = false;
    QString m_why;
};

} // namespace

bool CastOrigins::isOfferedByKWin(const WaylandConnection &connection)
{
    return connection.offers(zkde_screencast_unstable_v1_interface);
}

Result<std::unique_ptr<CastOrigin>> CastOrigins::fromKWin(const Screen &screen, Pointer pointer)
{
    auto connection = WaylandConnection::open();
    if (!connection)
        return std::unexpected(connection.error());
    auto cast = std::make_unique<KWinCast>(std::move(*connection));
    if (const auto begun = cast->begin(screen.id, pointer); !begun)
        return std::unexpected(begun.error());
    return cast;
}
