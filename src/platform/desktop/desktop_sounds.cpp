#include "platform/desktop/desktop_sounds.h"

#include <QLibrary>
#include <cmath>
#include <numbers>
#include <pulse/simple.h>
#include <random>
#include <vector>

namespace {

constexpr int kRate = 44100;

using Samples = std::vector<qint16>;

// The library comes with a dozen others; programs that never sound never load it.
struct SoundServer {
    decltype(&pa_simple_new) open = nullptr;
    decltype(&pa_simple_write) write = nullptr;
    decltype(&pa_simple_drain) drain = nullptr;
    decltype(&pa_simple_free) close = nullptr;

    static const SoundServer &loaded()
    {
        static const SoundServer server = load();
        return server;
    }

private:
    static SoundServer load()
    {
        QLibrary library(QStringLiteral("pulse-simple"), 0);
        library.setLoadHints(QLibrary::PreventUnloadHint);
        SoundServer server;
        server.open = reinterpret_cast<decltype(&pa_simple_new)>(library.resolve("pa_simple_new"));
        server.write = reinterpret_cast<decltype(&pa_simple_write)>(library.resolve("pa_simple_write"));
        server.drain = reinterpret_cast<decltype(&pa_simple_drain)>(library.resolve("pa_simple_drain"));
        server.close = reinterpret_cast<decltype(&pa_simple_free)>(library.resolve("pa_simple_free"));
        return server;
    }
};

void play(const Samples &samples)
{
    const SoundServer &server = SoundServer::loaded();
    if (!server.open || !server.write || !server.drain || !server.close)
        return;
    const pa_sample_spec spec = {PA_SAMPLE_S16NE, kRate, 1};
    pa_simple *stream = server.open(nullptr, "Lumenpost", PA_STREAM_PLAYBACK, nullptr, "Capture", &spec,
                                    nullptr, nullptr, nullptr);
    if (!stream)
        return;
    if (server.write(stream, samples.data(), samples.size() * sizeof(qint16), nullptr) == 0)
        server.drain(stream, nullptr);
    server.close(stream);
}

qint16 sample(double value)
{
    return qint16(std::clamp(value, -1.0, 1.0) * 32767);
}

// Two short bursts of noise, the second duller: a curtain that opens and closes.
Samples shutterSound()
{
    struct Burst {
        double start, decay, loudness, brightness;
    };
    constexpr Burst kBursts[] = {{0.000, 0.010, 0.40, 0.85}, {0.065, 0.018, 0.32, 0.45}};
    Samples samples(kRate / 5);
    std::minstd_rand random(7);
    std::uniform_real_distribution<double> noise(-1, 1);
    for (const Burst &burst : kBursts) {
        double low = 0;
        for (std::size_t i = std::size_t(burst.start * kRate); i < samples.size(); ++i) {
            const double time = double(i) / kRate - burst.start;
            low += burst.brightness * (noise(random) - low); // a low-pass of one pole
            samples[i] = sample(samples[i] / 32767.0 + burst.loudness * low * std::exp(-time / burst.decay));
        }
    }
    return samples;
}

Samples beepSound()
{
    constexpr double kPitch = 660;
    Samples samples(kRate / 6);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = double(i) / kRate;
        const double attack = std::min(1.0, time / 0.004);
        samples[i] =
            sample(0.28 * attack * std::exp(-time / 0.05) * std::sin(2 * std::numbers::pi * kPitch * time));
    }
    return samples;
}

// A drop: a short tone whose pitch rises.
Samples popSound()
{
    constexpr double kLowest = 380;
    constexpr double kRise = 5200; // hertz a second
    Samples samples(kRate / 12);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = double(i) / kRate;
        const double attack = std::min(1.0, time / 0.002);
        const double phase = 2 * std::numbers::pi * (kLowest * time + kRise * time * time / 2);
        samples[i] = sample(0.3 * attack * std::exp(-time / 0.018) * std::sin(phase));
    }
    return samples;
}

} // namespace

DesktopSounds::DesktopSounds()
{
    m_player.setMaxThreadCount(1);
}

DesktopSounds::~DesktopSounds()
{
    m_player.clear();
    m_player.waitForDone();
}

void DesktopSounds::shutter()
{
    m_player.clear(); // what still waits would come too late
    m_player.start([] { play(shutterSound()); });
}

void DesktopSounds::beep()
{
    m_player.clear();
    m_player.start([] { play(beepSound()); });
}

void DesktopSounds::pop()
{
    m_player.clear();
    m_player.start([] { play(popSound()); });
}
