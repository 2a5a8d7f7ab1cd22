#pragma once

#include "platform/speech_engine.h"

// PocketSphinx with its American English model.
class SphinxEngine : public SpeechEngine {
public:
    QStringList languages() const override { return {QStringLiteral("en")}; }
    Result<std::unique_ptr<SpeechListener>>
    listen(std::function<void(const QList<SpokenWord> &)> heard) override;
};
