#include "recording/captions.h"

#include "recording/texts.h"

#include <cmath>

Error captionError(CaptionError error)
{
    switch (error) {
    case CaptionError::NoAudio:
        return {Error::Kind::Failed,
                RecordingTexts::tr(
                    "This recording has no audio. Turn on Microphone (for your voice) or System Audio "
                    "in Video mode before recording."),
                {}};
    case CaptionError::NoSpeech:
        return {Error::Kind::NotFound,
                RecordingTexts::tr(
                    "No speech was found. Captions come from spoken words — turn on Microphone in Video "
                    "mode before recording to caption your narration."),
                {}};
    }
    return {};
}

QList<CaptionCue> Captions::cues(const QList<SpokenWord> &words, int maxChars, double maxDuration,
                                 double pause)
{
    QList<CaptionCue> result;
    for (const SpokenWord &word : words) {
        if (word.text.isEmpty())
            continue;
        const double end = word.start + word.duration;
        if (!result.isEmpty()) {
            CaptionCue &cue = result.last();
            const QString candidate = cue.text + QLatin1Char(' ') + word.text;
            if (candidate.size() <= maxChars && end - cue.start <= maxDuration &&
                word.start - cue.end <= pause) {
                cue.end = end;
                cue.text = candidate;
                continue;
            }
        }
        result.append({word.start, end, word.text});
    }
    return result;
}

QString Captions::timestamp(double seconds)
{
    const auto total = qint64(std::llround(std::max(seconds, 0.0) * 1000));
    return QString::asprintf("%02lld:%02lld:%02lld,%03lld", total / 3600000, total / 60000 % 60,
                             total / 1000 % 60, total % 1000);
}

QString Captions::srt(const QList<CaptionCue> &cues)
{
    constexpr double kShortest = 0.5;
    QStringList entries;
    for (qsizetype i = 0; i < cues.size(); ++i) {
        const CaptionCue &cue = cues[i];
        entries.append(QStringLiteral("%1\n%2 --> %3\n%4\n")
                           .arg(QString::number(i + 1), timestamp(cue.start),
                                timestamp(std::max(cue.end, cue.start + kShortest)), cue.text));
    }
    return entries.join(QLatin1Char('\n'));
}

QList<CaptionCue> Captions::within(const QList<CaptionCue> &cues, double from, double to)
{
    QList<CaptionCue> result;
    for (const CaptionCue &cue : cues) {
        if (cue.end > from && cue.start < to)
            result.append({std::max(cue.start, from) - from, std::min(cue.end, to) - from, cue.text});
    }
    return result;
}

QString Captions::transcript(const QList<CaptionCue> &cues)
{
    QStringList texts;
    for (const CaptionCue &cue : cues)
        texts.append(cue.text);
    return texts.join(QLatin1Char(' '));
}

Result<QList<CaptionCue>> Captions::captions(Movies &movies, SpeechEngine &speech, const QString &movie,
                                             WorkProgress &progress,
                                             const std::function<void(const QList<CaptionCue> &)> &soFar)
{
    QList<SpokenWord> words;
    auto listener = speech.listen([&](const QList<SpokenWord> &more) {
        words += more;
        if (soFar)
            soFar(cues(words));
    });
    if (!listener)
        return std::unexpected(listener.error());
    const auto info = movies.info(movie);
    const double duration = info ? info->duration : 0;
    qint64 heard = 0;
    Result<void> recognized;
    const auto spoken = movies.voice(movie, [&](std::span<const qint16> samples) {
        recognized = (*listener)->hear(samples);
        heard += qint64(samples.size());
        if (duration > 0)
            progress.done = std::min(double(heard) / Movies::kVoiceRate / duration, 0.99);
        return recognized.has_value() && !progress.isCancelled;
    });
    if (progress.isCancelled)
        return cancelled();
    if (!recognized)
        return std::unexpected(recognized.error());
    if (!spoken && spoken.error().kind == Error::Kind::NotFound && info)
        return std::unexpected(captionError(CaptionError::NoAudio));
    if (!spoken)
        return std::unexpected(spoken.error());
    if (const auto ended = (*listener)->end(progress); !ended)
        return std::unexpected(ended.error());
    progress.done = 1;
    QList<CaptionCue> result = cues(words);
    if (result.isEmpty())
        return std::unexpected(captionError(CaptionError::NoSpeech));
    return result;
}
