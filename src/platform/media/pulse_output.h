#pragma once

#include "platform/sound_output.h"

// Sound by a PulseAudio server, or one that speaks its protocol.
class PulseOutput : public SoundOutput {
public:
    Result<std::unique_ptr<SoundPlayback>> play(std::function<void(std::span<float>)> fill) override;
};
