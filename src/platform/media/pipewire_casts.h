#pragma once

#include "platform/screen_casts.h"

class PipeWireCasts : public ScreenCasts {
public:
    Result<std::unique_ptr<ScreenCast>> open(const CastSource &source, int framesPerSecond,
                                             CastReceiver receiver) override;
};
