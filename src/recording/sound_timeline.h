#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

// Makes one unbroken track of sound that is heard in pieces, each with the film's time at which it began:
// silence where nothing was heard, and as many samples for a second as the film has, though the sound card's
// clock runs a little faster or slower. One thread at a time.
class SoundTimeline {
public:
    using Time = std::chrono::microseconds;

    // `write` gets interleaved samples that follow each other.
    SoundTimeline(int rate, int channels, std::function<void(std::span<const float>)> write);

    void add(std::span<const float> samples, Time time);
    // Silence up to there, if less was heard.
    void fillTo(Time time);
    // The track ends there: what goes beyond isn't written.
    void endAt(Time time);
    Time length() const;

private:
    std::int64_t frames(Time time) const { return time.count() * m_rate / 1'000'000; }
    void give(std::span<const float> samples);
    std::vector<float> stretched(std::span<const float> samples, int change) const;

    int m_rate;
    int m_channels;
    std::function<void(std::span<const float>)> m_write;
    std::int64_t m_written = 0; // samples of a channel
    std::int64_t m_end = INT64_MAX;
    double m_lag = 0;        // by how many samples the track is short, smoothed
    bool m_isJoined = false; // sound goes on from what was written last
    bool m_isCorrecting = false;
};
