#include "platform/wayland/screencopy.h"

#include "platform/texts.h"
#include "platform/wayland/shared_picture.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

#include <QTransform>
#include <optional>
#include <wayland-client.h>
#include <wayland_protocols/wlr-screencopy-unstable-v1.h>

namespace {

// What the compositor says of one copy.
struct Frame {
    enum class State { Offered, Described, Ready, Failed };

    State state = State::Offered;
    std::optional<SharedPicture::Format> format;
    bool isUpsideDown = false;
    QRegion damage;

    static Frame &of(void *data) { return *static_cast<Frame *>(data); }
};

const zwlr_screencopy_frame_v1_listener kListener{
    .buffer =
        [](void *data, zwlr_screencopy_frame_v1 *, uint32_t format, uint32_t width, uint32_t height,
           uint32_t stride) {
            const SharedPicture::Format offered{format, QSize(int(width), int(height)), int(stride)};
            if (!Frame::of(data).format || SharedPicture::understands(format))
                Frame::of(data).format = offered;
        },
    .flags =
        [](void *data, zwlr_screencopy_frame_v1 *, uint32_t flags) {
            Frame::of(data).isUpsideDown = (flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT) != 0;
        },
    .ready = [](void *data, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t,
                uint32_t) { Frame::of(data).state = Frame::State::Ready; },
    .failed = [](void *data, zwlr_screencopy_frame_v1 *) { Frame::of(data).state = Frame::State::Failed; },
    .damage =
        [](void *data, zwlr_screencopy_frame_v1 *, uint32_t x, uint32_t y, uint32_t width, uint32_t height) {
            Frame::of(data).damage += QRect(int(x), int(y), int(width), int(height));
        },
    .linux_dmabuf = [](void *, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t, uint32_t) {},
    .buffer_done = [](void *data,
                      zwlr_screencopy_frame_v1 *) { Frame::of(data).state = Frame::State::Described; },
};

// An output that is turned or mirrored shows its pixels so; its copy has them as the output's memory does.
QTransform upright(int transform)
{
    QTransform turned;
    if (transform >= WL_OUTPUT_TRANSFORM_FLIPPED)
        turned.scale(-1, 1);
    return turned.rotate(90.0 * (transform % 4));
}

std::unexpected<Error> refused()
{
    return fail(PlatformTexts::tr("The desktop refused a picture of the screen."));
}

} // namespace

Screencopy::Screencopy(WaylandConnection &connection)
    : m_connection(connection),
      m_manager(connection.bind<zwlr_screencopy_manager_v1>(zwlr_screencopy_manager_v1_interface, 3)),
      m_memory(connection.bind<wl_shm>(wl_shm_interface, 1))
{}

Screencopy::~Screencopy()
{
    m_picture.reset();
    if (m_manager)
        zwlr_screencopy_manager_v1_destroy(m_manager);
    if (m_memory)
        wl_shm_destroy(m_memory);
}

bool Screencopy::isOffered(const WaylandConnection &connection)
{
    return connection.offers(zwlr_screencopy_manager_v1_interface);
}

void Screencopy::trim()
{
    m_picture.reset();
}

Result<Screencopy::Copy> Screencopy::copy(const WaylandOutput &output, Pointer pointer, Wait wait, int wake,
                                          std::chrono::milliseconds patience)
{
    if (!m_manager || !m_memory)
        return refused();
    const quint32 version = zwlr_screencopy_manager_v1_get_version(m_manager);
    Frame frame;
    const std::unique_ptr<zwlr_screencopy_frame_v1, decltype(&zwlr_screencopy_frame_v1_destroy)> proxy(
        zwlr_screencopy_manager_v1_capture_output(m_manager, pointer == Pointer::Shown ? 1 : 0,
                                                  output.output),
        &zwlr_screencopy_frame_v1_destroy);
    zwlr_screencopy_frame_v1_add_listener(proxy.get(), &kListener, &frame);
    // Older compositors describe one format and say no more.
    const bool tellsEnd = version >= ZWLR_SCREENCOPY_FRAME_V1_BUFFER_DONE_SINCE_VERSION;
    if (!m_connection.waitFor(
            [&] { return frame.state != Frame::State::Offered || (!tellsEnd && frame.format.has_value()); }))
        return noCompositor();
    if (frame.state == Frame::State::Failed || !frame.format)
        return refused();
    if (!m_picture || m_picture->format() != *frame.format)
        m_picture = SharedPicture::make(m_memory, *frame.format);
    if (!m_picture)
        return fail(PlatformTexts::tr("There is not enough memory for a picture of the screen."));
    const bool waits =
        wait == Wait::ForDamage && version >= ZWLR_SCREENCOPY_FRAME_V1_COPY_WITH_DAMAGE_SINCE_VERSION;
    if (waits)
        zwlr_screencopy_frame_v1_copy_with_damage(proxy.get(), m_picture->buffer());
    else
        zwlr_screencopy_frame_v1_copy(proxy.get(), m_picture->buffer());
    const auto isOver = [&] {
        return frame.state == Frame::State::Ready || frame.state == Frame::State::Failed;
    };
    if (!m_connection.waitFor(isOver, patience, wake))
        return waits && !m_connection.isBroken() ? cancelled() : noCompositor();
    if (frame.state == Frame::State::Failed)
        return refused();

    QImage image = m_picture->image();
    const QRect all(QPoint(), image.size());
    QRegion damage = frame.damage.isEmpty() ? QRegion(all) : frame.damage & all;
    if (frame.isUpsideDown) {
        image = image.mirrored();
        damage = all;
    }
    if (output.transform != WL_OUTPUT_TRANSFORM_NORMAL) {
        image = image.transformed(upright(output.transform));
        damage = QRect(QPoint(), image.size());
    }
    return Copy{image, damage};
}
