#include "recording/sound_timeline.h"

#include <algorithm>
#include <cmath>

namespace {

// The told times of pieces scatter by some milliseconds; only what is further off is a gap.
constexpr double kGap = 0.04;
// How long the times are averaged before the track is stretched, and between which lags it is, in seconds.
constexpr double kSmoothing = 2;
constexpr double kMostLag = 0.003;
constexpr double kLeastLag = 0.0005;
// At most one sample in so many is added or left out: no ear hears it.
constexpr int kStretch = 400;

} // namespace

SoundTimeline::SoundTimeline(int rate, int channels, std::function<void(std::span<const float>)> write)
    : m_rate(rate), m_channels(channels), m_write(std::move(write))
{}

SoundTimeline::Time SoundTimeline::length() const
{
    return Time(m_written * 1'000'000 / m_rate);
}

void SoundTimeline::add(std::span<const float> samples, Time time)
{
    const auto count = std::int64_t(samples.size()) / m_channels;
    if (count == 0)
        return;
    const std::int64_t lag = std::int64_t(std::llround(double(time.count()) * m_rate / 1e6)) - m_written;
    if (!m_isJoined || std::abs(double(lag)) > kGap * m_rate) {
        m_lag = 0;
        m_isCorrecting = false;
        if (lag > 0)
            fillTo(time);
        // Where silence was written already, sound comes too late.
        const std::int64_t late = std::clamp<std::int64_t>(-lag, 0, count);
        m_isJoined = late < count;
        return give(samples.subspan(std::size_t(late * m_channels)));
    }
    m_lag += (double(lag) - m_lag) * std::min(1.0, double(count) / (kSmoothing * m_rate));
    m_isCorrecting = std::abs(m_lag) > (m_isCorrecting ? kLeastLag : kMostLag) * m_rate;
    if (!m_isCorrecting)
        return give(samples);
    const int most = std::max(1, int(count / kStretch));
    const int change = std::clamp(int(std::lround(m_lag)), -most, most);
    m_lag -= change;
    give(stretched(samples, change));
}

void SoundTimeline::fillTo(Time time)
{
    const std::int64_t missing = std::min(frames(time), m_end) - m_written;
    if (missing <= 0)
        return;
    m_isJoined = false;
    const std::vector<float> silence(std::size_t(std::min<std::int64_t>(missing, m_rate) * m_channels), 0.0F);
    for (std::int64_t left = missing; left > 0; left -= m_rate)
        give(std::span(silence).first(std::size_t(std::min<std::int64_t>(left, m_rate) * m_channels)));
}

void SoundTimeline::endAt(Time time)
{
    m_end = frames(time);
    fillTo(time);
}

void SoundTimeline::give(std::span<const float> samples)
{
    const auto count = std::min(std::int64_t(samples.size()) / m_channels, m_end - m_written);
    if (count <= 0)
        return;
    m_written += count;
    m_write(samples.first(std::size_t(count * m_channels)));
}

// The same sound with some samples more or fewer, read between its samples.
std::vector<float> SoundTimeline::stretched(std::span<const float> samples, int change) const
{
    const auto count = std::int64_t(samples.size()) / m_channels;
    const std::int64_t wanted = std::max<std::int64_t>(count + change, 1);
    std::vector<float> result(std::size_t(wanted * m_channels));
    for (std::int64_t i = 0; i < wanted; ++i) {
        const double place = wanted == 1 ? 0 : double(i) * double(count - 1) / double(wanted - 1);
        const auto before = std::int64_t(place);
        const auto after = std::min(before + 1, count - 1);
        const auto part = float(place - double(before));
        for (int channel = 0; channel < m_channels; ++channel) {
            const float a = samples[std::size_t(before * m_channels + channel)];
            const float b = samples[std::size_t(after * m_channels + channel)];
            result[std::size_t(i * m_channels + channel)] = a + (b - a) * part;
        }
    }
    return result;
}
