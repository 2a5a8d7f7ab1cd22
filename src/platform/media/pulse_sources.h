#pragma once

#include "platform/sound_sources.h"

// The sound server of the session, by its own protocol, which others serve too.
class PulseSources : public SoundSources {
public:
    Result<std::unique_ptr<SoundStream>> open(SoundSource source,
                                              std::function<void(const SoundBlock &)> receive) override;
};
