#pragma once

#include "platform/speech_engine.h"

class Defaults;

// A recogniser of the user's choice as a program of its own: "whisper-cli" with a model file, which knows
// many languages and finds out which is spoken.
class ExternalSpeech : public SpeechEngine {
public:
    struct Choice {
        QString program; // a name in the search path, or a path
        QString model;   // its file
        bool operator==(const Choice &) const = default;
    };
    // As the user has set it: the keys "captionsProgram" and "captionsModel".
    static Choice choiceIn(const Defaults &defaults);

    explicit ExternalSpeech(Choice choice) : m_choice(std::move(choice)) {}
    // Whether there is one.
    bool isChosen() const { return !m_choice.program.isEmpty() && !m_choice.model.isEmpty(); }
    QStringList languages() const override { return {}; }
    Result<std::unique_ptr<SpeechListener>>
    listen(std::function<void(const QList<SpokenWord> &)> heard) override;

private:
    Choice m_choice;
};
