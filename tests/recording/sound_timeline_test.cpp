#include "recording/sound_timeline.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

using namespace std::chrono_literals;

namespace {

constexpr int kRate = 48000;

class SoundTimelineTest : public testing::Test {
protected:
    using Time = SoundTimeline::Time;
    static std::vector<float> loud(std::size_t count) { return std::vector<float>(count, 0.5F); }
    // Where sound begins and ends, in samples.
    std::pair<std::size_t, std::size_t> loudPart() const
    {
        const auto isLoud = [](float sample) { return sample > 0.1F; };
        const auto first = std::ranges::find_if(m_track, isLoud);
        const auto last = std::find_if(m_track.rbegin(), m_track.rend(), isLoud);
        return {std::size_t(first - m_track.begin()), std::size_t(m_track.rend() - last)};
    }

    std::vector<float> m_track;
    SoundTimeline m_timeline{kRate, 1, [this](std::span<const float> samples) {
                                 m_track.insert(m_track.end(), samples.begin(), samples.end());
                             }};
};

} // namespace

TEST_F(SoundTimelineTest, PutsLateSoundAtItsTimeWithSilenceBefore)
{
    m_timeline.add(loud(4800), 700ms);
    m_timeline.endAt(1s);
    EXPECT_EQ(m_track.size(), std::size_t(kRate));
    EXPECT_EQ(loudPart(), std::pair(std::size_t(33600), std::size_t(38400)));
}

TEST_F(SoundTimelineTest, DropsWhatComesAfterItsPlaceWasFilled)
{
    m_timeline.fillTo(2s);
    m_timeline.add(loud(kRate), 1500ms); // half of it too late
    m_timeline.endAt(3s);
    EXPECT_EQ(loudPart(), std::pair(std::size_t(96000), std::size_t(120000)));
    EXPECT_EQ(m_track.size(), 3 * std::size_t(kRate));
}

TEST_F(SoundTimelineTest, BridgesADeviceThatWasAway)
{
    m_timeline.add(loud(kRate), 0ms);
    m_timeline.add(loud(kRate), 4s);
    EXPECT_EQ(m_track.size(), 5 * std::size_t(kRate));
    EXPECT_EQ(m_track[2 * kRate], 0.0F);
    EXPECT_EQ(m_track[4 * kRate + 10], 0.5F);
}

TEST_F(SoundTimelineTest, CutsWhatGoesBeyondTheEnd)
{
    m_timeline.add(loud(kRate), 0ms);
    m_timeline.endAt(500ms);
    m_timeline.add(loud(kRate), 1s);
    EXPECT_EQ(m_timeline.length(), 1s) << "what was written stays";
}

// A card that runs by 300 millionths too fast or too slow, told with some milliseconds of noise, for an hour.
TEST_F(SoundTimelineTest, KeepsAnHourInStepWithACardOfAnotherClock)
{
    for (const double drift : {300e-6, -300e-6}) {
        std::int64_t written = 0;
        double worst = 0;
        SoundTimeline timeline(
            kRate, 1, [&](std::span<const float> samples) { written += std::int64_t(samples.size()); });
        std::minstd_rand random(3);
        std::normal_distribution<double> noise(0, 0.002);
        const auto block = loud(960);
        for (int i = 0; i < 50 * 3600; ++i) {
            const double time = i * 0.02 * (1 + drift);
            if (i > 500)
                worst = std::max(worst, std::abs(double(written) / kRate - time));
            timeline.add(block, Time(std::int64_t((time + noise(random)) * 1e6)));
        }
        EXPECT_LT(worst, 0.008) << "drift " << drift;
    }
}

TEST_F(SoundTimelineTest, StretchesWithoutAClick)
{
    // A sine whose card is too slow: the track's own steps stay those of a sine.
    std::vector<float> block(960);
    double phase = 0;
    for (int i = 0; i < 50 * 20; ++i) {
        for (float &sample : block) {
            sample = float(std::sin(phase));
            phase += 2 * std::numbers::pi * 440 / kRate;
        }
        m_timeline.add(block, Time(std::int64_t(i * 0.02 * 1.0005 * 1e6)));
    }
    float steepest = 0;
    for (std::size_t i = 1; i < m_track.size(); ++i)
        steepest = std::max(steepest, std::abs(m_track[i] - m_track[i - 1]));
    EXPECT_GT(m_track.size(), 960U * 1000U) << "it was stretched";
    EXPECT_LT(steepest, 0.08F) << "440 Hz rises by 0.058 a sample";
}
