#include "platform/speech/utterances.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kAboveFloor = 12;  // decibels
constexpr double kFloorRise = 0.02; // decibels a frame: a floor that was too low is left in some seconds
constexpr double kLeastLoud = 30;   // decibels above one step of a sample: below it nobody speaks
constexpr int kPause = 45;          // frames of silence that end an utterance
constexpr int kLead = 30;           // frames of silence kept before it
constexpr int kShortest = 8;        // frames of loudness: a click is shorter
constexpr int kLongest = 2000;      // frames: recognisers slow down on long ones

} // namespace

Utterances::Utterances(int rate, std::function<void(std::span<const qint16>, std::int64_t)> utter)
    : m_frame(std::size_t(rate) / 100), m_utter(std::move(utter))
{}

void Utterances::add(std::span<const qint16> samples)
{
    m_samples.insert(m_samples.end(), samples.begin(), samples.end());
    while (m_samples.size() - m_seen >= m_frame)
        takeFrame();
}

void Utterances::takeFrame()
{
    double energy = 0;
    for (std::size_t i = m_seen; i < m_seen + m_frame; ++i)
        energy += double(m_samples[i]) * m_samples[i];
    m_seen += m_frame;
    const double loudness = 10 * std::log10(energy / double(m_frame) + 1);
    m_floor = m_hasFloor ? std::min(m_floor + kFloorRise, loudness) : std::min(loudness, kLeastLoud);
    m_hasFloor = true;
    const bool isLoud = loudness > std::max(m_floor + kAboveFloor, kLeastLoud);
    m_quiet = isLoud ? 0 : m_quiet + 1;
    m_loud += isLoud ? 1 : 0;
    if (isLoud)
        m_isSpeaking = true;
    if (m_isSpeaking) {
        if (m_quiet >= kPause || m_seen >= std::size_t(kLongest) * m_frame)
            utterNow();
        return;
    }
    // Of silence only the lead is kept.
    const std::size_t lead = std::size_t(kLead) * m_frame;
    if (m_seen > 2 * lead) {
        const std::size_t dropped = m_seen - lead;
        m_samples.erase(m_samples.begin(), m_samples.begin() + std::ptrdiff_t(dropped));
        m_start += std::int64_t(dropped);
        m_seen = lead;
    }
}

void Utterances::utterNow()
{
    if (m_loud >= kShortest)
        m_utter(std::span(m_samples).first(m_seen), m_start);
    m_samples.erase(m_samples.begin(), m_samples.begin() + std::ptrdiff_t(m_seen));
    m_start += std::int64_t(m_seen);
    m_seen = 0;
    m_isSpeaking = false;
    m_loud = m_quiet = 0;
}

void Utterances::end()
{
    m_seen = m_samples.size();
    if (m_isSpeaking)
        utterNow();
}
