#include "platform/media/sound_mixer.h"

#include <algorithm>
#include <cmath>

namespace {

// A track that brings nothing for so long has a hole: the others don't wait.
constexpr int kLongestWait = 5; // seconds
// Frames are joined without a seam unless their times say that they are further apart.
constexpr double kSeam = 0.02; // seconds
constexpr float kKnee = 0.9F;

// Two loud tracks stay below full scale without a crack.
float limited(float sample)
{
    const float size = std::abs(sample);
    if (size <= kKnee)
        return sample;
    const float over = (size - kKnee) / (1 - kKnee);
    return std::copysign(kKnee + (1 - kKnee) * std::tanh(over), sample);
}

} // namespace

SoundMixer::SoundMixer(int rate, int channels, std::function<bool(std::span<const float>)> receive)
    : m_rate(rate), m_channels(channels), m_receive(std::move(receive)), m_converted(av_frame_alloc())
{}

AVFrame *SoundMixer::resampled(Track &track, const AVFrame &frame)
{
    const bool isNew = !track.resampler || track.rate != frame.sample_rate || track.format != frame.format ||
                       track.channels != frame.ch_layout.nb_channels;
    if (isNew) {
        track.rate = frame.sample_rate;
        track.format = frame.format;
        track.channels = frame.ch_layout.nb_channels;
        AVChannelLayout from{}, to{};
        if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
            av_channel_layout_default(&from, frame.ch_layout.nb_channels);
        else
            av_channel_layout_copy(&from, &frame.ch_layout);
        av_channel_layout_default(&to, m_channels);
        SwrContext *resampler = nullptr;
        swr_alloc_set_opts2(&resampler, &to, AV_SAMPLE_FMT_FLT, m_rate, &from, AVSampleFormat(frame.format),
                            frame.sample_rate, 0, nullptr);
        track.resampler.reset(resampler);
        av_channel_layout_uninit(&from);
        if (!track.resampler || swr_init(track.resampler.get()) < 0) {
            track.resampler.reset();
            return nullptr;
        }
    }
    const int room = swr_get_out_samples(track.resampler.get(), frame.nb_samples);
    if (room <= 0)
        return nullptr;
    av_frame_unref(m_converted.get());
    m_converted->format = AV_SAMPLE_FMT_FLT;
    m_converted->sample_rate = m_rate;
    m_converted->nb_samples = room;
    av_channel_layout_default(&m_converted->ch_layout, m_channels);
    if (av_frame_get_buffer(m_converted.get(), 0) < 0)
        return nullptr;
    const int count = swr_convert(track.resampler.get(), m_converted->extended_data, room,
                                  const_cast<const std::uint8_t **>(frame.extended_data), frame.nb_samples);
    m_converted->nb_samples = std::max(count, 0);
    return m_converted.get();
}

bool SoundMixer::add(int index, const AVFrame &frame, double time, double end)
{
    Track &track = m_tracks[index];
    if (frame.sample_rate <= 0 || frame.ch_layout.nb_channels <= 0)
        return true;
    const AVFrame *sound = resampled(track, frame);
    if (!sound)
        return true;
    std::int64_t place = std::llround(time * m_rate);
    if (std::abs(double(place - track.next)) < kSeam * m_rate)
        place = track.next;
    track.next = place + sound->nb_samples;
    const auto *samples = reinterpret_cast<const float *>(sound->extended_data[0]);
    const std::int64_t first = std::max({place, m_given, std::int64_t(0)});
    const std::int64_t last = std::min(track.next, std::int64_t(std::llround(end * m_rate)));
    if (first < last) {
        const auto wanted = std::size_t((last - m_given) * m_channels);
        if (m_mix.size() < wanted)
            m_mix.resize(wanted);
        float *onto = m_mix.data() + (first - m_given) * m_channels;
        const float *from = samples + (first - place) * m_channels;
        for (std::int64_t i = 0; i < (last - first) * m_channels; ++i)
            onto[i] += from[i];
    }
    std::int64_t ready = track.next;
    for (const auto &[number, other] : m_tracks) {
        if (!other.isDone)
            ready = std::min(ready, other.next);
    }
    ready = std::max(ready, track.next - std::int64_t(kLongestWait) * m_rate);
    return give(std::min(ready, m_given + std::int64_t(m_mix.size()) / m_channels));
}

void SoundMixer::finish(int track)
{
    m_tracks[track].isDone = true;
}

bool SoundMixer::give(std::int64_t until)
{
    if (until <= m_given)
        return true;
    const auto count = std::size_t((until - m_given) * m_channels);
    for (std::size_t i = 0; i < count; ++i)
        m_mix[i] = limited(m_mix[i]);
    const bool goesOn = m_receive({m_mix.data(), count});
    m_mix.erase(m_mix.begin(), m_mix.begin() + std::ptrdiff_t(count));
    m_given = until;
    return goesOn;
}

bool SoundMixer::end(double end)
{
    const std::int64_t last = std::llround(end * m_rate);
    if (last > m_given)
        m_mix.resize(std::size_t((last - m_given) * m_channels));
    return give(last);
}
