#pragma once

#include "platform/movies.h"
#include "platform/speech_engine.h"

#include <QList>
#include <QString>

// One subtitle. Seconds from the film's beginning.
struct CaptionCue {
    double start = 0;
    double end = 0;
    QString text;
    bool operator==(const CaptionCue &) const = default;
};

enum class CaptionError { NoAudio, NoSpeech };
Error captionError(CaptionError error);

// Subtitles of what is spoken in a film, in the SubRip format.
namespace Captions {

// A cue grows word by word while it stays within these limits: characters, seconds of the cue, seconds of
// silence between two words.
QList<CaptionCue> cues(const QList<SpokenWord> &words, int maxChars = 42, double maxDuration = 4.0,
                       double pause = 0.8);
// "00:01:02,345"
QString timestamp(double seconds);
// The file's text. A cue is shown for half a second at least.
QString srt(const QList<CaptionCue> &cues);
// Those that are heard between both moments, their times counted from the first.
QList<CaptionCue> within(const QList<CaptionCue> &cues, double from, double to);
// The words alone.
QString transcript(const QList<CaptionCue> &cues);

// Blocks: for a worker thread. `soFar` gets the cues as they become known, on that thread; the last one may
// still grow.
Result<QList<CaptionCue>> captions(Movies &movies, SpeechEngine &speech, const QString &movie,
                                   WorkProgress &progress,
                                   const std::function<void(const QList<CaptionCue> &)> &soFar = {});

} // namespace Captions
