#include "platform/media/pipewire_casts.h"

#include "platform/texts.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <mutex>
#include <pipewire/pipewire.h>
#include <spa/param/video/format-utils.h>

// The library's macros are made of an extension that all compilers have.
#pragma clang diagnostic ignored "-Wgnu-statement-expression-from-macro-expansion"

namespace {

// Both sides hold one while a third is on its way.
constexpr int kBuffers = 4;
// More changed parts than this come as one.
constexpr int kMostParts = 16;

QImage::Format imageFormat(spa_video_format format)
{
    const bool isSwapped = format == SPA_VIDEO_FORMAT_RGBx || format == SPA_VIDEO_FORMAT_RGBA;
    return isSwapped ? QImage::Format_RGBX8888 : QImage::Format_RGB32;
}

class PipeWireCast : public ScreenCast {
public:
    explicit PipeWireCast(CastReceiver receiver) : m_receiver(std::move(receiver))
    {
        static std::once_flag isBegun;
        std::call_once(isBegun, [] { pw_init(nullptr, nullptr); });
        m_loop = pw_thread_loop_new("screen cast", nullptr);
        m_context = m_loop ? pw_context_new(pw_thread_loop_get_loop(m_loop), nullptr, 0) : nullptr;
    }
    ~PipeWireCast() override
    {
        if (m_loop)
            pw_thread_loop_stop(m_loop);
        m_isOver = true; // what the stream tells of its own end is no news
        if (m_stream)
            pw_stream_destroy(m_stream);
        if (m_core)
            pw_core_disconnect(m_core);
        if (m_context)
            pw_context_destroy(m_context);
        if (m_loop)
            pw_thread_loop_destroy(m_loop);
    }
    PipeWireCast(const PipeWireCast &) = delete;
    PipeWireCast &operator=(const PipeWireCast &) = delete;

    bool open(const CastSource &source, int framesPerSecond)
    {
        if (!m_context)
            return false;
        // The library closes the file that it is given.
        m_core = source.remote >= 0
                     ? pw_context_connect_fd(m_context, fcntl(source.remote, F_DUPFD_CLOEXEC, 0), nullptr, 0)
                     : pw_context_connect(m_context, nullptr, 0);
        if (!m_core)
            return false;
        m_stream = pw_stream_new(m_core, "Lumenpost",
                                 pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY,
                                                   "Capture", PW_KEY_MEDIA_ROLE, "Screen", nullptr));
        if (!m_stream)
            return false;
        pw_stream_add_listener(m_stream, &m_hook, &kEvents, this);
        std::array<std::uint8_t, 1024> room{};
        spa_pod_builder builder{};
        spa_pod_builder_init(&builder, room.data(), room.size());
        const spa_pod *format = offer(builder, framesPerSecond);
        const auto flags = pw_stream_flags(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS);
        return pw_stream_connect(m_stream, PW_DIRECTION_INPUT, source.node, flags, &format, 1) >= 0 &&
               pw_thread_loop_start(m_loop) >= 0;
    }

private:
    static PipeWireCast &from(void *self) { return *static_cast<PipeWireCast *>(self); }

    static const spa_pod *offer(spa_pod_builder &builder, int framesPerSecond)
    {
        const spa_rectangle usual{1920, 1080};
        const spa_rectangle least{1, 1};
        const spa_rectangle most{32768, 32768};
        const spa_fraction any{0, 1}; // frames come when something has changed
        const spa_fraction rate{std::uint32_t(framesPerSecond), 1};
        return static_cast<const spa_pod *>(spa_pod_builder_add_object(
            &builder, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType,
            SPA_POD_Id(SPA_MEDIA_TYPE_video), SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw),
            SPA_FORMAT_VIDEO_format,
            SPA_POD_CHOICE_ENUM_Id(5, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA,
                                   SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA),
            SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&usual, &least, &most),
            SPA_FORMAT_VIDEO_framerate, SPA_POD_Fraction(&any), SPA_FORMAT_VIDEO_maxFramerate,
            SPA_POD_CHOICE_RANGE_Fraction(&rate, &any, &rate)));
    }

    static void stateChanged(void *self, pw_stream_state before, pw_stream_state now, const char *error)
    {
        const bool isOver = now == PW_STREAM_STATE_ERROR ||
                            (now == PW_STREAM_STATE_UNCONNECTED && before > PW_STREAM_STATE_CONNECTING);
        if (!isOver || std::exchange(from(self).m_isOver, true))
            return;
        from(self).m_receiver.ended({Error::Kind::Failed,
                                     PlatformTexts::tr("The desktop has stopped showing the screen."),
                                     QString::fromUtf8(error ? error : "")});
    }

    static void formatChosen(void *self, std::uint32_t id, const spa_pod *chosen)
    {
        if (!chosen || id != SPA_PARAM_Format || spa_format_video_raw_parse(chosen, &from(self).m_format) < 0)
            return;
        std::array<std::uint8_t, 1024> room{};
        spa_pod_builder builder{};
        spa_pod_builder_init(&builder, room.data(), room.size());
        const std::array<const spa_pod *, 2> wanted{
            static_cast<const spa_pod *>(spa_pod_builder_add_object(
                &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
                SPA_POD_CHOICE_RANGE_Int(kBuffers, 2, 2 * kBuffers), SPA_PARAM_BUFFERS_dataType,
                SPA_POD_CHOICE_FLAGS_Int((1 << SPA_DATA_MemPtr) | (1 << SPA_DATA_MemFd)))),
            static_cast<const spa_pod *>(spa_pod_builder_add_object(
                &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type,
                SPA_POD_Id(SPA_META_VideoDamage), SPA_PARAM_META_size,
                SPA_POD_CHOICE_RANGE_Int(int(sizeof(spa_meta_region)) * kMostParts,
                                         int(sizeof(spa_meta_region)),
                                         int(sizeof(spa_meta_region)) * kMostParts))),
        };
        auto params = wanted;
        pw_stream_update_params(from(self).m_stream, params.data(), std::uint32_t(params.size()));
    }

    static void picturesArrived(void *self)
    {
        PipeWireCast &cast = from(self);
        pw_buffer *newest = nullptr;
        while (pw_buffer *each = pw_stream_dequeue_buffer(cast.m_stream)) {
            if (newest) {
                cast.m_missed += cast.changeOf(*newest->buffer);
                pw_stream_queue_buffer(cast.m_stream, newest);
            }
            newest = each;
        }
        if (!newest)
            return;
        cast.take(*newest->buffer);
        pw_stream_queue_buffer(cast.m_stream, newest);
    }

    QSize size() const { return {int(m_format.size.width), int(m_format.size.height)}; }

    QRegion changeOf(const spa_buffer &buffer) const
    {
        const QRect all(QPoint(), size());
        spa_meta *parts = spa_buffer_find_meta(&buffer, SPA_META_VideoDamage);
        if (!parts)
            return all;
        QRegion changed;
        spa_meta_region *part = nullptr;
        spa_meta_for_each(part, parts)
        {
            if (!spa_meta_region_is_valid(part))
                break;
            changed += QRect(part->region.position.x, part->region.position.y, int(part->region.size.width),
                             int(part->region.size.height));
        }
        return changed.isEmpty() ? QRegion(all) : changed & all;
    }

    void take(const spa_buffer &buffer)
    {
        const spa_data &data = buffer.datas[0];
        const QSize pixels = size();
        const qsizetype stride = data.chunk->stride;
        // A buffer without a picture tells only that the pointer has moved.
        const bool isPicture =
            data.data && data.chunk->size > 0 && (data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) == 0 &&
            !pixels.isEmpty() && stride >= pixels.width() * 4 &&
            qsizetype(data.chunk->offset) + stride * pixels.height() <= qsizetype(data.maxsize);
        if (!isPicture)
            return;
        const QImage given(static_cast<const uchar *>(data.data) + data.chunk->offset, pixels.width(),
                           pixels.height(), stride, imageFormat(m_format.format));
        const QRegion changed = std::exchange(m_missed, {}) + changeOf(buffer);
        if (given.format() == QImage::Format_RGB32)
            m_receiver.picture(given, changed);
        else
            m_receiver.picture(given.convertToFormat(QImage::Format_RGB32), changed);
    }

    static const pw_stream_events kEvents;

    CastReceiver m_receiver;
    pw_thread_loop *m_loop = nullptr;
    pw_context *m_context = nullptr;
    pw_core *m_core = nullptr;
    pw_stream *m_stream = nullptr;
    spa_hook m_hook{};
    spa_video_info_raw m_format{};
    QRegion m_missed; // by pictures that a newer one overtook
    bool m_isOver = false;
};

const pw_stream_events PipeWireCast::kEvents = [] {
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.state_changed = &PipeWireCast::stateChanged;
    events.param_changed = &PipeWireCast::formatChosen;
    events.process = &PipeWireCast::picturesArrived;
    return events;
}();

} // namespace

Result<std::unique_ptr<ScreenCast>> PipeWireCasts::open(const CastSource &source, int framesPerSecond,
                                                        CastReceiver receiver)
{
    auto cast = std::make_unique<PipeWireCast>(std::move(receiver));
    if (!cast->open(source, framesPerSecond))
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("The screen can't be filmed: PipeWire isn't running."));
    return cast;
}
