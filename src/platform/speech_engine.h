#pragma once

#include "base/result.h"
#include "platform/work_progress.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <span>

// A word as it was spoken. Seconds from the beginning of the sound.
struct SpokenWord {
    QString text;
    double start = 0;
    double duration = 0;
    bool operator==(const SpokenWord &) const = default;
};

// Recognises one sound while it is given. For one thread.
class SpeechListener {
public:
    virtual ~SpeechListener() = default;
    // One channel of 16000 samples a second, in pieces of any length.
    virtual Result<void> hear(std::span<const qint16> samples) = 0;
    // The sound is over; what is still unsaid is told. Ends soon, with a cancelled error, when the work is
    // cancelled.
    virtual Result<void> end(WorkProgress &progress) = 0;
};

// Turns speech into words, on this machine.
class SpeechEngine {
public:
    virtual ~SpeechEngine() = default;
    // As "en"; empty when it finds out by itself.
    virtual QStringList languages() const = 0;
    // `heard` is called from hear() and end(), with more words in the order of the sound. Blocks while its
    // model is read. Error::Kind::Unavailable when it isn't installed.
    virtual Result<std::unique_ptr<SpeechListener>>
    listen(std::function<void(const QList<SpokenWord> &)> heard) = 0;
};
