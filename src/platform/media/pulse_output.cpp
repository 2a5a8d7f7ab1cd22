#include "platform/media/pulse_output.h"

#include "platform/texts.h"

#include <pulse/pulseaudio.h>

namespace {

constexpr pa_usec_t kPatience = 1'000'000; // for the server's answer, in microseconds
constexpr pa_usec_t kAhead = 60'000;       // of sound that the server holds, in microseconds
constexpr std::size_t kFrame = sizeof(float) * SoundOutput::kChannels;

class PulsePlayback : public SoundPlayback {
public:
    explicit PulsePlayback(std::function<void(std::span<float>)> fill)
        : m_fill(std::move(fill)), m_loop(pa_threaded_mainloop_new())
    {}
    ~PulsePlayback() override
    {
        pa_threaded_mainloop_lock(m_loop);
        if (m_stream) {
            pa_stream_set_write_callback(m_stream, nullptr, nullptr);
            pa_stream_set_state_callback(m_stream, nullptr, nullptr);
            pa_stream_disconnect(m_stream);
            pa_stream_unref(m_stream);
        }
        if (m_context) {
            pa_context_set_state_callback(m_context, nullptr, nullptr);
            pa_context_disconnect(m_context);
            pa_context_unref(m_context);
        }
        pa_threaded_mainloop_unlock(m_loop);
        pa_threaded_mainloop_stop(m_loop);
        pa_threaded_mainloop_free(m_loop);
    }
    PulsePlayback(const PulsePlayback &) = delete;
    PulsePlayback &operator=(const PulsePlayback &) = delete;

    // False without a server or a device.
    bool open()
    {
        m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "Lumenpost");
        pa_context_set_state_callback(m_context, &PulsePlayback::contextChanged, this);
        if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 ||
            pa_threaded_mainloop_start(m_loop) < 0)
            return false;
        pa_threaded_mainloop_lock(m_loop);
        pa_time_event *timer =
            pa_context_rttime_new(m_context, pa_rtclock_now() + kPatience, &PulsePlayback::timeIsUp, this);
        while (!m_isTimeUp && !isSettled())
            pa_threaded_mainloop_wait(m_loop);
        if (timer)
            pa_threaded_mainloop_get_api(m_loop)->time_free(timer);
        const bool isReady = m_stream && pa_stream_get_state(m_stream) == PA_STREAM_READY;
        pa_threaded_mainloop_unlock(m_loop);
        return isReady;
    }

    std::int64_t heard() override
    {
        pa_threaded_mainloop_lock(m_loop);
        pa_usec_t time = 0;
        if (PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream)) && pa_stream_get_time(m_stream, &time) >= 0)
            m_heard = std::int64_t(time) * SoundOutput::kRate / 1'000'000;
        const std::int64_t heard = m_heard;
        pa_threaded_mainloop_unlock(m_loop);
        return heard;
    }

private:
    static PulsePlayback &from(void *self) { return *static_cast<PulsePlayback *>(self); }

    bool isSettled() const
    {
        if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context)))
            return true;
        return m_stream && pa_stream_get_state(m_stream) != PA_STREAM_CREATING;
    }

    static void timeIsUp(pa_mainloop_api *, pa_time_event *, const timeval *, void *self)
    {
        from(self).m_isTimeUp = true;
        pa_threaded_mainloop_signal(from(self).m_loop, 0);
    }

    static void contextChanged(pa_context *context, void *self)
    {
        if (pa_context_get_state(context) == PA_CONTEXT_READY)
            from(self).openStream();
        pa_threaded_mainloop_signal(from(self).m_loop, 0);
    }

    void openStream()
    {
        const pa_sample_spec spec = {PA_SAMPLE_FLOAT32NE, SoundOutput::kRate, SoundOutput::kChannels};
        m_stream = pa_stream_new(m_context, "Playback", &spec, nullptr);
        if (!m_stream)
            return;
        pa_stream_set_write_callback(m_stream, &PulsePlayback::wanted, this);
        pa_stream_set_state_callback(m_stream, &PulsePlayback::streamChanged, this);
        pa_buffer_attr buffer;
        buffer.maxlength = buffer.prebuf = buffer.minreq = buffer.fragsize = std::uint32_t(-1);
        buffer.tlength = std::uint32_t(pa_usec_to_bytes(kAhead, &spec));
        const auto flags = pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_INTERPOLATE_TIMING |
                                             PA_STREAM_AUTO_TIMING_UPDATE);
        pa_stream_connect_playback(m_stream, nullptr, &buffer, flags, nullptr, nullptr);
    }

    static void streamChanged(pa_stream *, void *self) { pa_threaded_mainloop_signal(from(self).m_loop, 0); }

    static void wanted(pa_stream *stream, std::size_t bytes, void *self)
    {
        while (bytes >= kFrame) {
            void *room = nullptr;
            std::size_t size = bytes;
            if (pa_stream_begin_write(stream, &room, &size) < 0 || !room || size < kFrame)
                return;
            size -= size % kFrame;
            from(self).m_fill({static_cast<float *>(room), size / sizeof(float)});
            if (pa_stream_write(stream, room, size, nullptr, 0, PA_SEEK_RELATIVE) < 0)
                return;
            bytes -= std::min(bytes, size);
        }
    }

    std::function<void(std::span<float>)> m_fill;
    pa_threaded_mainloop *m_loop;
    pa_context *m_context = nullptr;
    pa_stream *m_stream = nullptr;
    bool m_isTimeUp = false;
    std::int64_t m_heard = 0;
};

} // namespace

Result<std::unique_ptr<SoundPlayback>> PulseOutput::play(std::function<void(std::span<float>)> fill)
{
    auto playback = std::make_unique<PulsePlayback>(std::move(fill));
    if (!playback->open())
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("There is no sound server in this session."));
    return playback;
}
