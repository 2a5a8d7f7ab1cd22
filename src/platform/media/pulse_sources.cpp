#include "platform/media/pulse_sources.h"

#include "platform/texts.h"

#include <pulse/pulseaudio.h>

using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

constexpr pa_usec_t kPatience = 1'000'000; // for the server's answer, in microseconds
constexpr microseconds kPiece{20'000};

class PulseStream : public SoundStream {
public:
    PulseStream(SoundSource source, std::function<void(const SoundBlock &)> receive)
        : m_source(source), m_receive(std::move(receive)), m_loop(pa_threaded_mainloop_new())
    {}
    ~PulseStream() override
    {
        if (m_context) {
            pa_threaded_mainloop_lock(m_loop);
            dropStream();
            pa_context_set_state_callback(m_context, nullptr, nullptr);
            pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
            pa_context_disconnect(m_context);
            pa_context_unref(m_context);
            pa_threaded_mainloop_unlock(m_loop);
        }
        pa_threaded_mainloop_stop(m_loop);
        pa_threaded_mainloop_free(m_loop);
    }
    PulseStream(const PulseStream &) = delete;
    PulseStream &operator=(const PulseStream &) = delete;

    // False without a server. Returns as soon as it is there; the stream itself may still be on its way.
    bool open()
    {
        m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "Lumenpost");
        pa_context_set_state_callback(m_context, &PulseStream::contextChanged, this);
        pa_context_set_subscribe_callback(m_context, &PulseStream::serverChanged, this);
        if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 ||
            pa_threaded_mainloop_start(m_loop) < 0)
            return false;
        pa_threaded_mainloop_lock(m_loop);
        pa_time_event *timer =
            pa_context_rttime_new(m_context, pa_rtclock_now() + kPatience, &PulseStream::timeIsUp, this);
        while (!m_isTimeUp && !isSettled())
            pa_threaded_mainloop_wait(m_loop);
        if (timer)
            pa_threaded_mainloop_get_api(m_loop)->time_free(timer);
        const bool isReady = pa_context_get_state(m_context) == PA_CONTEXT_READY;
        pa_threaded_mainloop_unlock(m_loop);
        return isReady;
    }

private:
    static PulseStream &from(void *self) { return *static_cast<PulseStream *>(self); }

    // The server is gone, or the first stream delivers, or there is no device for one.
    bool isSettled() const
    {
        const pa_context_state_t state = pa_context_get_state(m_context);
        if (!PA_CONTEXT_IS_GOOD(state))
            return true;
        if (state != PA_CONTEXT_READY || !m_isTold)
            return false;
        return !m_stream || pa_stream_get_state(m_stream) != PA_STREAM_CREATING;
    }

    static void timeIsUp(pa_mainloop_api *, pa_time_event *, const timeval *, void *self)
    {
        from(self).m_isTimeUp = true;
        pa_threaded_mainloop_signal(from(self).m_loop, 0);
    }

    static void contextChanged(pa_context *context, void *self)
    {
        if (pa_context_get_state(context) == PA_CONTEXT_READY) {
            const auto wanted =
                pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SOURCE);
            forget(pa_context_subscribe(context, wanted, nullptr, nullptr));
            from(self).askForDevice();
        }
        pa_threaded_mainloop_signal(from(self).m_loop, 0);
    }

    static void serverChanged(pa_context *, pa_subscription_event_type_t, std::uint32_t, void *self)
    {
        from(self).askForDevice();
    }

    void askForDevice() { forget(pa_context_get_server_info(m_context, &PulseStream::serverTold, this)); }

    static void serverTold(pa_context *, const pa_server_info *info, void *self)
    {
        PulseStream &stream = from(self);
        stream.m_isTold = true;
        if (info)
            stream.follow(*info);
        pa_threaded_mainloop_signal(stream.m_loop, 0);
    }

    void follow(const pa_server_info &info)
    {
        QByteArray device;
        switch (m_source) {
        case SoundSource::System:
            device = info.default_sink_name;
            if (!device.isEmpty())
                device += ".monitor";
            break;
        case SoundSource::Microphone:
            device = info.default_source_name;
            if (device.endsWith(".monitor")) // there is no microphone
                device.clear();
            break;
        }
        const bool isGood = m_stream && PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream));
        if (device == m_device && isGood)
            return;
        dropStream();
        m_device = device;
        if (!device.isEmpty())
            openStream();
    }

    void openStream()
    {
        const int channels = SoundSources::channels(m_source);
        const pa_sample_spec spec = {PA_SAMPLE_FLOAT32NE, SoundSources::kRate, std::uint8_t(channels)};
        m_stream = pa_stream_new(m_context, "Recording", &spec, nullptr);
        if (!m_stream)
            return;
        pa_stream_set_read_callback(m_stream, &PulseStream::heard, this);
        pa_stream_set_state_callback(m_stream, &PulseStream::streamChanged, this);
        pa_buffer_attr buffer;
        buffer.maxlength = buffer.tlength = buffer.prebuf = buffer.minreq = std::uint32_t(-1);
        buffer.fragsize = std::uint32_t(pa_usec_to_bytes(pa_usec_t(kPiece.count()), &spec));
        const auto flags = pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_INTERPOLATE_TIMING |
                                             PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_DONT_MOVE);
        if (pa_stream_connect_record(m_stream, m_device.constData(), &buffer, flags) < 0)
            dropStream();
    }

    void dropStream()
    {
        if (!m_stream)
            return;
        pa_stream_set_read_callback(m_stream, nullptr, nullptr);
        pa_stream_set_state_callback(m_stream, nullptr, nullptr);
        pa_stream_disconnect(m_stream);
        pa_stream_unref(m_stream);
        m_stream = nullptr;
    }

    static void streamChanged(pa_stream *, void *self) { pa_threaded_mainloop_signal(from(self).m_loop, 0); }

    static void heard(pa_stream *stream, std::size_t, void *self)
    {
        const void *data = nullptr;
        std::size_t bytes = 0;
        while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &bytes) >= 0 &&
               bytes > 0) {
            pa_usec_t latency = 0;
            int isNegative = 0;
            const bool isKnown = pa_stream_get_latency(stream, &latency, &isNegative) >= 0;
            const auto ago = microseconds(isKnown ? std::int64_t(latency) : 0) * (isNegative ? -1 : 1);
            if (data) // else a hole
                from(self).m_receive({{static_cast<const float *>(data), bytes / sizeof(float)},
                                      steady_clock::now() - (isKnown ? ago : kPiece)});
            pa_stream_drop(stream);
        }
    }

    static void forget(pa_operation *operation)
    {
        if (operation)
            pa_operation_unref(operation);
    }

    SoundSource m_source;
    std::function<void(const SoundBlock &)> m_receive;
    pa_threaded_mainloop *m_loop;
    pa_context *m_context = nullptr;
    pa_stream *m_stream = nullptr; // none while there is no device
    QByteArray m_device;           // that was chosen
    bool m_isTold = false;         // the server has said which
    bool m_isTimeUp = false;
};

} // namespace

Result<std::unique_ptr<SoundStream>> PulseSources::open(SoundSource source,
                                                        std::function<void(const SoundBlock &)> receive)
{
    auto stream = std::make_unique<PulseStream>(source, std::move(receive));
    if (!stream->open())
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("There is no sound server in this session."));
    return stream;
}
