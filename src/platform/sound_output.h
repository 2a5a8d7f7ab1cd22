#pragma once

#include "base/result.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

// Sound that is being played. Falls silent when it is destroyed; nothing is called after that.
class SoundPlayback {
public:
    virtual ~SoundPlayback() = default;
    // Samples of each channel that have been heard by now; it stands still when the device has gone.
    virtual std::int64_t heard() = 0;
};

// Plays two channels of 48000 samples a second on the device that the user has chosen.
class SoundOutput {
public:
    static constexpr int kRate = 48000;
    static constexpr int kChannels = 2;

    virtual ~SoundOutput() = default;
    // `fill` is called on a thread of the playback's own whenever the device wants more, and must write all
    // of what it is given. Error::Kind::Unavailable when there is no sound server.
    virtual Result<std::unique_ptr<SoundPlayback>> play(std::function<void(std::span<float>)> fill) = 0;
};
