#pragma once

#include "base/result.h"
#include "platform/screen_films.h"
#include "platform/sound_sources.h"
#include "platform/work_progress.h"

#include <QImage>
#include <QList>
#include <QRegion>
#include <QSize>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

// What a film is, without its pictures. Seconds count from the film's beginning.
struct MovieInfo {
    double duration = 0;        // seconds, above 0
    QSize size;                 // as it is shown: turned, and with square pixels
    double framesPerSecond = 0; // on average; 0 if unknown
    QString codec;              // of the pictures: "h264"
    int soundTracks = 0;
    bool operator==(const MovieInfo &) const = default;
};

// The pictures of one film. For one thread at a time.
class MovieFrames {
public:
    virtual ~MovieFrames() = default;
    virtual const MovieInfo &info() const = 0;
    // What the film shows at that time: the first picture before its beginning, the last after its end. Going
    // forward in small steps decodes each picture once. Format_RGB32.
    virtual Result<QImage> at(double seconds) = 0;
    // From when on the film shows the picture that was last asked for, and when the next one follows it;
    // infinite for the last.
    virtual std::pair<double, double> shown() const = 0;
};

struct MovieFormat {
    QSize size;                // both even
    QList<SoundSource> sounds; // a track each
};

// Writes a film while it is made. What has been written is a film that plays, whatever happens next.
class MovieWriter {
public:
    struct Counts {
        qint64 frames = 0;  // written
        qint64 leftOut = 0; // because the machine was too slow
    };

    virtual ~MovieWriter() = default;
    // Takes what `frame` changes; the rest is as it was. Doesn't wait: frames are left out evenly when the
    // encoder can't follow. Times of the film, which rise; with none the change is kept for the next frame.
    // Any one thread.
    virtual void write(const FilmFrame &frame, std::optional<std::chrono::microseconds> time) = 0;
    // Shows the present picture again, from `time` on. Any thread.
    virtual void repeat(std::chrono::microseconds time) = 0;
    // Samples that follow those before without a gap, interleaved. Any thread, one a track.
    virtual void writeSound(qsizetype track, std::span<const float> samples) = 0;
    virtual Counts counts() const = 0;
    // Waits until all of it is written. Fails with the reason when some of it couldn't be.
    virtual Result<void> close() = 0;
};

// Films in files. Everything here blocks: for worker threads. Nothing keeps a file open that is not being
// read or written.
class Movies {
public:
    virtual ~Movies() = default;

    // Errors are sentences that say why a film can't be played.
    virtual Result<MovieInfo> info(const QString &path) = 0;
    // Pictures no larger than `bounds`, in the film's proportions; an empty size leaves them as they are.
    virtual Result<std::unique_ptr<MovieFrames>> frames(const QString &path, QSize bounds) = 0;

    // A film (H.264, AAC) that is written as it is made. `failed` is called at most once, on another thread,
    // when writing has become impossible (the disk is full).
    virtual Result<std::unique_ptr<MovieWriter>> record(const QString &path, const MovieFormat &format,
                                                        std::function<void(const Error &)> failed) = 0;
    // Makes an ordinary film that starts quickly at `target` of one that was written by `record`, also when
    // that one broke off, and removes it. Its last picture stays until `end`, where that is known. When
    // there is no room for it, the film becomes `target` as it is. An existing target isn't replaced.
    virtual Result<void> finish(const QString &recorded, const QString &target,
                                std::optional<std::chrono::microseconds> end) = 0;

    // An MP4 of the part between `from` and `to` (seconds), nothing of what lies outside it inside. All sound
    // tracks become one. Writes `target` itself, which may be left half done.
    virtual Result<void> exportMp4(const QString &path, const QString &target, double from, double to,
                                   WorkProgress &progress) = 0;

    // All sound tracks mixed into one channel of 16000 samples a second, in pieces; `receive` may end it with
    // false. Error::Kind::NotFound when there is no sound.
    virtual Result<void> voice(const QString &path,
                               const std::function<bool(std::span<const qint16>)> &receive) = 0;
    static constexpr int kVoiceRate = 16000;
    // The same to be listened to: two channels of 48000 samples a second, interleaved, from a time (seconds)
    // on, without a gap.
    virtual Result<void> sound(const QString &path, double from,
                               const std::function<bool(std::span<const float>)> &receive) = 0;
};
