#pragma once

#include "base/result.h"

#include <chrono>
#include <functional>
#include <memory>
#include <span>

enum class SoundSource { System, Microphone };

// A piece of sound as it was heard.
struct SoundBlock {
    std::span<const float> samples;             // interleaved, full scale is ±1; good during the call only
    std::chrono::steady_clock::time_point time; // of the first sample
};

// Stops when it is destroyed; nothing is called after that.
class SoundStream {
public:
    virtual ~SoundStream() = default;
};

// What is played and what a microphone hears, at 48000 samples a second. Both follow the devices that the
// user has chosen when that choice changes, and come back after a device was away; meanwhile nothing comes.
class SoundSources {
public:
    static constexpr int kRate = 48000;
    static constexpr int channels(SoundSource source) { return source == SoundSource::System ? 2 : 1; }

    virtual ~SoundSources() = default;
    // `receive` is called on a thread of the stream's own. Blocks until the stream is set up, a second at
    // most. Error::Kind::Unavailable when there is no sound server.
    virtual Result<std::unique_ptr<SoundStream>> open(SoundSource source,
                                                      std::function<void(const SoundBlock &)> receive) = 0;
};
